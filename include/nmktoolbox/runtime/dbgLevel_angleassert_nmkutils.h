// dbgLevel_angleassert_nmkutils.h: the debug level that switches on the check of angle solutions.
//
// It is a plain debug level, so it is registered with the manager of dbgLevel and not among the
// version levels.
#pragma once

#include <debugncam/dbgLevel.h>
#include <nmktoolbox/export.h>

/// Named "nmkutils:angleassert"; at 0 nothing is checked.
NMKTOOLBOX_EXPORT extern dbgLevel dbgLevel_angleassert_nmkutils;

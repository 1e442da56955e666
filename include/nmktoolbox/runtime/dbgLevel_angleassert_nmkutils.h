// dbgLevel_angleassert_nmkutils.h: the debug level that has angle solutions checked.
//
// It is a plain debug level, so it is found through dbgLevel's manager and not among the version
// levels.
#pragma once

#include <debugncam/dbgLevel.h>
#include <nmktoolbox/export.h>

/// Named "nmkutils:angleassert"; 0 checks nothing.
NMKTOOLBOX_EXPORT extern dbgLevel dbgLevel_angleassert_nmkutils;

// dbgLevel_angleassert_nmkutils: the level "nmkutils:angleassert".
//
// Registered with the manager of plain levels when the library is loaded. The solvers do not ask
// it: it is there for callers who check solutions of their own.
#pragma once

#include <debugncam/dbgLevel.h>
#include <nmktoolbox/export.h>

extern NMKTOOLBOX_EXPORT dbgLevel dbgLevel_angleassert_nmkutils;

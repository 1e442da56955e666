// runtime.h: run-time control, all of it.
#pragma once

#include <nmktoolbox/runtime/dbgLevel_angleassert_nmkutils.h>  // whether angle solutions are checked
#include <nmktoolbox/runtime/nmkVersion.h>                     // the named feature switches

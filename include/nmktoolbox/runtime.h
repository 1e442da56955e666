// runtime.h: the subsystem runtime, all of its headers.
#pragma once

#include <nmktoolbox/runtime/dbgLevel_angleassert_nmkutils.h>  // whether angle solutions are checked
#include <nmktoolbox/runtime/nmkVersion.h>                     // the named feature switches

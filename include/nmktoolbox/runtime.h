// runtime.h: the subsystem runtime, all of its headers.
#pragma once

#include <nmktoolbox/runtime/dbgLevel_angleassert_nmkutils.h>  // whether angle solutions are checked
#include <nmktoolbox/runtime/ncmTimer.h>                       // a stopwatch
#include <nmktoolbox/runtime/nmkStackBasedTimer.h>             // a printed tree of timed scopes
#include <nmktoolbox/runtime/nmkStackTimer.h>                  // timed sections of all threads
#include <nmktoolbox/runtime/nmkStackTimerEvent.h>
#include <nmktoolbox/runtime/nmkStackTimerEventLogger.h>
#include <nmktoolbox/runtime/nmkStackTimerSection.h>  // records one section
#include <nmktoolbox/runtime/nmkVersion.h>            // the named feature switches

// runtime.h: the subsystem runtime, all of its headers.
#pragma once

#include <nmktoolbox/runtime/dbgLevel_angleassert_nmkutils.h>  // whether angle solutions are checked
#include <nmktoolbox/runtime/ncmTimer.h>                       // a stopwatch
#include <nmktoolbox/runtime/nmkCExceptTrans.h>                // faults as exceptions
#include <nmktoolbox/runtime/nmkClipboardAbs.h>                // services of the host
#include <nmktoolbox/runtime/nmkCtrlBreakTask.h>               // the progress dialog as a task
#include <nmktoolbox/runtime/nmkDialogIndir.h>
#include <nmktoolbox/runtime/nmkIterTools.h>
#include <nmktoolbox/runtime/nmkProductInfoAbs.h>
#include <nmktoolbox/runtime/nmkRegistry.h>         // a session on the registry
#include <nmktoolbox/runtime/nmkStackBasedTimer.h>  // a printed tree of timed scopes
#include <nmktoolbox/runtime/nmkStackTimer.h>       // timed sections of all threads
#include <nmktoolbox/runtime/nmkStackTimerEvent.h>
#include <nmktoolbox/runtime/nmkStackTimerEventLogger.h>
#include <nmktoolbox/runtime/nmkStackTimerSection.h>
#include <nmktoolbox/runtime/nmkTrustAbs.h>
#include <nmktoolbox/runtime/nmkTrustAbsMock.h>
#include <nmktoolbox/runtime/nmkUtestUnitSwitcher.h>  // units for tests
#include <nmktoolbox/runtime/nmkVersion.h>            // the named feature switches

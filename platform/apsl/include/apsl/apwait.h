// apwait.h: waiting.
#pragma once

#include <utils/utExport.h>

/// Waits at least that many milliseconds on this thread; does not wait for 0 or less.
UT_EXPORT void apwait(int milliseconds);

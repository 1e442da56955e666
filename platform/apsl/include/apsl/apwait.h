// apwait.h: waiting.
#pragma once

#include <utils/utExport.h>

/// Lets at least that many milliseconds pass on this thread; none for 0 or less.
UT_EXPORT void apwait(int milliseconds);

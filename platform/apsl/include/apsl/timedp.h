// timedp.h: the time of apHighResTime through a pointer.
#pragma once

#include <utils/utExport.h>

/// Stores apHighResTime::time(), in seconds, in `*seconds`; null is ignored.
UT_EXPORT void timedp(double* seconds);

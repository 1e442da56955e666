// times.h: seconds since 1970 and the calendar.
//
// As on Windows, the calendar record belongs to the runtime: one for each thread, which both
// conversions write. Threads do not disturb each other; copy the record before the next call.
#pragma once

#include <cstdint>
#include <ctime>

using __time64_t = std::int64_t;

/// Seconds since the start of 1970, universal time; also stored through `seconds` if not null.
__time64_t _time64(__time64_t* seconds);

/// The calendar record of the moment by local time, by the present value of TZ. Null,
/// with errno EINVAL, for a null argument or a year that the record cannot hold.
std::tm* _localtime64(const __time64_t* seconds);

/// The same by universal time.
std::tm* _gmtime64(const __time64_t* seconds);

/// "Wed Jan 02 02:03:55 1980\n" by local time, English in every locale, the day in two digits.
/// In a text of the thread's own, which the next call overwrites. Null as _localtime64, and for
/// years outside 0 to 9999.
char* _ctime64(const __time64_t* seconds);

// ut_date.h: dates as arrays of numbers.
//
// A date is the first of these, in local time: year (2026), month (1 to 12), day (1 to 31), hour
// (0 to 23), minute, second.
#pragma once

#include <utils/utExport.h>
#include <utils/utString.h>

/// Numbers of a whole date.
constexpr int ut_date_size = 6;

/// Stores the current date: the first `count` of its numbers, at most ut_date_size.
///
///   returns   0; or the errno of a clock that fails, with `date` unchanged
UT_EXPORT int ut_date_current(int count, int* const date);

/// Stores the local date, ut_date_size numbers, of a time in seconds since 1970.
///
///   returns   0; or the errno for a time whose year has no place, with `date` unchanged
UT_EXPORT int ut_date_local(long long seconds, int* const date);

/// Stores the date, ut_date_size numbers, when the file was last changed.
///
///   returns   0; or the errno, ENOENT where there is no such file, with `date` unchanged
UT_EXPORT int fcdate(const utString& file, int* const date);

// apstrcasecmp.h: comparison of narrow texts without regard to case.
#pragma once

#include <utils/utExport.h>

/// Negative, 0 or positive as `left` sorts before, equals or sorts after `right`, byte by byte
/// (unsigned) with A to Z taken for a to z. Other bytes have no case, whatever the locale. Null
/// equals null and sorts before every text.
UT_EXPORT int apstrcasecmp(const char* left, const char* right) noexcept;

// nmkformat_double: numbers as decimal text, for people and for reading back.
//
// The point is always ".", whatever the locale of the process or thread. Infinities and NaN come
// out as "inf", "-inf", "nan" and "-nan".
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// `value` with at most `places` digits after the point, at least one, and no needless zeros.
///
///   places   digits to round to; below 0 the text has up to six
///   returns  1.5 with 3 places is "1.5", 2 is "2.0", 0.0004 and -0.0004 are "0.0"
///
/// There is never a negative zero. Where `places` is below 0, a magnitude under half of ten to the
/// power of -`places` still counts as 0.
NMKTOOLBOX_EXPORT utString nmkformat_double(double value, int places);

/// Text that reads back as the very same double: the first of 15, 16 and 17 significant digits
/// that does, in the layout of "%g".
///
/// This isn't always the shortest text possible: the smallest double has 15 digits, not one.
NMKTOOLBOX_EXPORT utString nmkformat_double_exact(double value);

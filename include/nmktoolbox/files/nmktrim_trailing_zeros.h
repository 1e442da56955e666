// nmktrim_trailing_zeros: the needless zeros at the end of a formatted decimal.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// Takes off the "0" bytes at the end, and a "." or "," that is then the last byte.
///
/// For texts with a point only: nothing checks that there is one, so "100" becomes "10". Bytes 0
/// and 1 are never taken as zeros. The null string and the empty text stay as they are.
NMKTOOLBOX_EXPORT void nmktrim_trailing_zeros(utString& text);

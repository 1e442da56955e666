// nmk_strip_end_substring: what a text ends in, taken away in place.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// Removes `suffix` from the end of the text and returns true; compared as wide text.
///
/// Returns false where the text ends in something else or either is null. A text that equals the
/// suffix stays as it is: the suffix must be strictly shorter. The empty suffix is found at the end
/// of every text that isn't empty itself.
NMKTOOLBOX_EXPORT bool nmk_strip_end_substring(utString& text, const utString& suffix);

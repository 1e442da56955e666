// nmk_all_lowercase: whether a text is in one case. Characters other than letters are skipped.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// 1 if every letter is in lower case, 0 if not. 1 for the empty text and the null string.
NMKTOOLBOX_EXPORT int nmk_all_lowercase(const utString& text);

/// 1 if every letter is in upper case, 0 if not. 1 for the empty text and the null string.
///
/// Other than the lower-case form, this walks as many places as the text has bytes. Those past the
/// end of the wide text count as no letters.
NMKTOOLBOX_EXPORT int nmk_all_uppercase(const utString& text);

// nmksubstring: a stretch of a text, counted in UTF-16 code units.
//
// `length` is cut to what remains; a negative one takes all that remains. A `start` past the end,
// or a negative one, throws std::out_of_range. A stretch that cuts a surrogate pair apart has
// U+FFFD in the place of the half.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// The bytes of that stretch, ill-formed parts as they are. The null string counts as empty.
NMKTOOLBOX_EXPORT utString nmksubstring(const utString& text, int start, int length);

/// The stretch of a wide text ended by a nul, in the code page. Null counts as empty.
NMKTOOLBOX_EXPORT utString nmksubstring(const wchar_t* text, int start, int length);

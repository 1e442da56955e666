// nmkindex: where something occurs in a text.
//
// The form for a byte counts bytes, the forms for a text count UTF-16 code units. A `start` outside
// the text finds nothing; the end of the text is inside for the empty `sub` only.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// Byte index of the first `c` at or after byte `start`; -1 if there is none.
NMKTOOLBOX_EXPORT int nmkindex(const utString& text, char c, int start);

/// Index of the first `sub` at or after code unit `start`; -1 if there is none or either string is
/// null. The empty `sub` is found at `start`.
NMKTOOLBOX_EXPORT int nmkindex(const utString& text, const utString& sub, int start);

/// The same as the form above.
NMKTOOLBOX_EXPORT int nmkpos(const utString& text, const utString& sub, int start);

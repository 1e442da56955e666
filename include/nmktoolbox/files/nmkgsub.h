// nmkgsub: replacement in the bytes of a text, in place.
//
// Left to right, without overlap; what was put in is not searched again. All forms return how many
// replacements were made. They take time in proportion to the text before and after.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// Replaces a byte by a byte; nothing, and 0, where they are equal.
NMKTOOLBOX_EXPORT int nmkgsub(utString& text, char from, char to);

/// Replaces a byte by a text; nothing where the byte is 0.
NMKTOOLBOX_EXPORT int nmkgsub(utString& text, char from, const utString& to);

/// Replaces a text by a text. `from` must not be empty: nothing is replaced then, nor where it is
/// null. A null `to` counts as the empty text.
NMKTOOLBOX_EXPORT int nmkgsub(utString& text, const utString& from, const utString& to);

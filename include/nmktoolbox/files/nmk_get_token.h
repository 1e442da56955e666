// nmk_get_token: the token or word at a place of a text, in bytes.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// The token around byte `position`, which counts from 1 and is cut to the length.
///
///   delimiters  each of its bytes separates
///   token       the text between the delimiters; one blank where there is none
///   returns     index of the delimiter before the token, or -1 where there is none, the text is
///               empty or `position` is below 1
///
/// Byte 0 isn't taken for the delimiter before a token.
NMKTOOLBOX_EXPORT int nmk_get_token(const utString& text, const utString& delimiters, int position,
                                    utString& token);

/// The word that ends at byte `position`, which counts from 1 and is cut to the length: letters and
/// digits of any script, "," and ".".
///
///   token   the word; the empty text where the text is empty, `position` is below 1, or something
///           else ends there
///   returns 1 if there is a word, else 0
///
/// Byte 0 isn't tested: it belongs to the word that reaches it.
NMKTOOLBOX_EXPORT int nmk_alphanumeric_token(const utString& text, int position, utString& token);

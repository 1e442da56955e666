// nmkreplace_all_strings: replacement in the wide form of a text, in place.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// Replaces every `from` by `to` and returns how many there were.
///
/// Left to right, without overlap, compared as wide text; what was put in is not searched again.
/// An ill-formed part counts as U+FFFD when compared, and otherwise comes through as it is. Nothing
/// is replaced where `from` is null or empty; a null `to` counts as the empty text.
NMKTOOLBOX_EXPORT int nmkreplace_all_strings(utString& text, const utString& from,
                                             const utString& to);

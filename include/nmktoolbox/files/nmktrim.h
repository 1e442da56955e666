// nmktrim: the white space at the ends of a text, taken away in place.
//
// White space is Unicode's, less the no-break spaces. A text of nothing else becomes the empty
// text; the null string stays null.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// From the beginning.
NMKTOOLBOX_EXPORT void nmkltrim(utString& text);
/// From the end.
NMKTOOLBOX_EXPORT void nmkrtrim(utString& text);
/// From both ends.
NMKTOOLBOX_EXPORT void nmktrim(utString& text);

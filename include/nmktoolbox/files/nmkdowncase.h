// nmkdowncase: the case of the letters of a text, in place.
//
// By Unicode's simple mappings of one UTF-16 code unit to one, whatever the locale. Letters of two
// code units have no case here; a letter whose other case the code page lacks stays as it is, and
// so does whatever is ill-formed. The null string and the empty text stay as they are.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

NMKTOOLBOX_EXPORT void nmkdowncase(utString& text);
NMKTOOLBOX_EXPORT void nmkupcase(utString& text);

/// Lower case, but for the first character.
NMKTOOLBOX_EXPORT void nmkcapitalize(utString& text);

/// Lower case, but for the first character and those after white space.
NMKTOOLBOX_EXPORT void nmkcapitalize_words(utString& text);

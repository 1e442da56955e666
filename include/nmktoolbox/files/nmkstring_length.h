// nmkstring_length: how long a text is, in UTF-16 code units.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// Code units of the wide form of `text`; 0 for the null string.
NMKTOOLBOX_EXPORT int nmkstring_length(const utString& text);

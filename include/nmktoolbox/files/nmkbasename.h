// nmkbasename: the two parts of a path, with any text for a separator, compared as wide text.
//
// A separator at the very end of the path is left out first. Then the last one is looked for that
// lies wholly in what is left and is not at its beginning, so that in "/a" there is none.
// An empty or null separator is nowhere. The null string counts as the empty text.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// What follows that separator; where there is none, all but a separator at the end.
NMKTOOLBOX_EXPORT utString nmkbasename(const utString& path, const utString& separator);

/// The text before that separator; the empty text where there is none.
NMKTOOLBOX_EXPORT utString nmkpathname(const utString& path, const utString& separator);

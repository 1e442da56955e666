// nmkfreq: how often something occurs in a text.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// How many bytes of the text are `c`; 0 for the null string.
NMKTOOLBOX_EXPORT int nmkfreq(const utString& text, char c);

/// How many times `sub` occurs in the text, left to right without overlap, compared as wide text.
/// 0 if either is null or `sub` is empty.
NMKTOOLBOX_EXPORT int nmkfreq(const utString& text, const utString& sub);

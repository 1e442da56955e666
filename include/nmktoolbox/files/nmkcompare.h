// nmkcompare: which of two texts sorts first.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// -1, 0 or 1 as `left` sorts before, equals or sorts after `right`: by the first UTF-16 code unit
/// that differs, unsigned; a text sorts before what it begins. No locale, no case folding. The null
/// string counts as the empty text.
NMKTOOLBOX_EXPORT int nmkcompare(const utString& left, const utString& right);

// nmkdelete_all: a byte removed from a text wherever it occurs.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// Removes every byte `c` and returns how many there were. The null string and texts of one byte
/// are left alone and return 0, even if that byte is `c`.
NMKTOOLBOX_EXPORT int nmkdelete_all(utString& text, char c);

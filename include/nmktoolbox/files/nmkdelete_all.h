// nmkdelete_all: a byte taken out of a text wherever it stands.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// Takes every byte `c` out, and answers how many there were. The null string and texts of one byte
/// are left alone with the answer 0, even if that byte is `c`.
NMKTOOLBOX_EXPORT int nmkdelete_all(utString& text, char c);

#include <nmktoolbox/files/nmkstring_length.h>

#include "files/wide_text.h"

int nmkstring_length(const utString& text) { return static_cast<int>(wide_of(text).size()); }

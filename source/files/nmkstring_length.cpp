#include <nmktoolbox/files/nmkstring_length.h>

#include "files/wide_text.h"

using nmk_files::wide_of;

int nmkstring_length(const utString& text) { return static_cast<int>(wide_of(text).size()); }

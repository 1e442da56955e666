// write_bytes.h: writes bytes to an open file.
#pragma once

#include <string_view>

namespace nmk_files {

/// Writes all bytes to the open file of this descriptor; false, with errno set, if that fails.
bool write_bytes(int descriptor, std::string_view bytes);

}  // namespace nmk_files

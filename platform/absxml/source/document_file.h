// document_file.h: the bytes of a file.
#pragma once

#include <cstddef>
#include <string>

namespace nmk_absxml {

/// Reads a regular file of at most `max_size` bytes. Throws Malformed with the reason.
std::string read_file(const std::string& file_name, std::size_t max_size);

}  // namespace nmk_absxml

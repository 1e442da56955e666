// header_text.h: the header of an archive file as the text of its entry.
//
//     nmk archive file 1
//     byte order 2
//     text 11 TestArchive
//     text 11 Version 1.0
//     end
//
// The number before a text is its length in bytes, so that a text may hold line ends.
#pragma once

#include <pers/psArchiveFileHeader.h>

#include <optional>
#include <string>
#include <string_view>

namespace nmk_pers {

constexpr const char* header_entry = "archive-file-header";

/// Bytes of the longest header.
constexpr int max_header_size = 65536;

/// A null text is written as an empty one.
std::string header_text(const psArchiveFileHeader& header);

/// Empty where the text is not a header.
std::optional<psArchiveFileHeader> read_header(std::string_view text);

}  // namespace nmk_pers

// wildcard.h: "*" and "?" in the name of a search.
#pragma once

#include <string_view>

namespace winapi {

/// Whether the text has a wildcard.
bool has_wildcard(std::string_view text);

/// Whether the name fits the pattern. "*" is any run of bytes, "?" one character of UTF-8, or one
/// byte where the name is not UTF-8; other bytes match themselves. Linear in the length of the name
/// times that of the pattern, whatever they are.
bool fits_wildcards(std::string_view name, std::string_view pattern);

}  // namespace winapi

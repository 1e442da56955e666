// base64.h: bytes as text of letters, digits, "+", "/" and "=".
#pragma once

#include <string>
#include <string_view>

namespace nmk_text {

/// The bytes in base64 without line breaks (RFC 4648, section 4).
std::string base64_text(std::string_view bytes);

}  // namespace nmk_text

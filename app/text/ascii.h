// ascii.h: blanks and letter case of ASCII text; other bytes are left alone.
#pragma once

#include <string>
#include <string_view>

namespace nmk_text {

/// The text without blanks and tabs at either end.
std::string_view trimmed(std::string_view text);

/// The text with ASCII letters in lower case.
std::string lower_case(std::string_view text);

}  // namespace nmk_text

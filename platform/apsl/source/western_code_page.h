// western_code_page.h: the single-byte Western code page 1252 to wide text, and back.
#pragma once

#include <string>
#include <string_view>

namespace nmk_apsl {

/// Every byte has a character, so this is always exact.
std::wstring western_to_wide(std::string_view bytes);

/// A character that the code page lacks becomes '?'; `exact` is set to false then.
std::string wide_to_western(std::wstring_view text, bool& exact);

}  // namespace nmk_apsl

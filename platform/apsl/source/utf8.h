// utf8.h: UTF-8 to UTF-16 code units in wchar_t, and back.
//
// Results are put together in blocks on the stack, so that the memory of a long text is written
// once and no character pays for a growing string.
#pragma once

#include <string>
#include <string_view>

namespace nmk_apsl {

/// Ill-formed parts become U+FFFD as ap_decode says; `exact` is set to false then, else unchanged.
std::wstring utf8_to_wide(std::string_view bytes, bool& exact);

/// Surrogates on their own become U+FFFD; `exact` is set to false then, else unchanged.
std::string wide_to_utf8(std::wstring_view text, bool& exact);

}  // namespace nmk_apsl

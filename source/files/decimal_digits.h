// decimal_digits.h: doubles as the fewest of 15, 16 and 17 digits that read back.
#pragma once

#include <array>
#include <string_view>

namespace nmk_files {

constexpr std::size_t exact_text_room = 40;

/// The text of `value` as "%.*g" gives it with 15, 16 or 17 digits, the first that reads back; 17
/// digits where none does. It is kept in `buffer`.
std::string_view exact_text(double value, std::array<char, exact_text_room>& buffer);

}  // namespace nmk_files

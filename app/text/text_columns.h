// text_columns.h: rows of cells as columns of text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace nmk_text {

/// The number of characters of a UTF-8 text.
std::size_t character_count(std::string_view text);

/// The rows as lines, all cells of a column with the same width, two blanks between columns: the
/// first column to the left, the others to the right. All rows have the same number of cells.
std::vector<std::string> column_lines(const std::vector<std::vector<std::string>>& rows);

}  // namespace nmk_text

// text_columns: rows of cells as columns of text.

#include "text/text_columns.h"

#include <algorithm>

namespace nmk_text {

std::size_t character_count(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    }));
}

std::vector<std::string> column_lines(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::size_t> widths(rows.empty() ? 0 : rows[0].size(), 0);
    for (const std::vector<std::string>& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], character_count(row[i]));
        }
    }
    std::vector<std::string> lines;
    for (const std::vector<std::string>& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string padding(widths[i] - character_count(row[i]), ' ');
            line += i == 0 ? row[i] + padding : "  " + padding + row[i];
        }
        line.erase(line.find_last_not_of(' ') + 1);
        lines.push_back(std::move(line));
    }
    return lines;
}

}  // namespace nmk_text

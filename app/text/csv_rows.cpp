// csv_rows.cpp: see csv_rows.h.

#include "text/csv_rows.h"

#include <algorithm>

#include "text/ascii.h"
#include "text/number_reader.h"

namespace nmk_text {

namespace {

char separator_of(std::string_view line) {
    for (const char separator : {';', '\t'}) {
        if (line.find(separator) != std::string_view::npos) {
            return separator;
        }
    }
    return ',';
}

}  // namespace

std::string_view CsvRow::bare(std::size_t index) const {
    const std::string_view cell = cells[index];
    if (cell.size() >= 2 && cell.front() == '"' && cell.back() == '"') {
        return trimmed(cell.substr(1, cell.size() - 2));
    }
    return cell;
}

bool CsvRow::is_header() const {
    for (std::size_t i = 0; i < std::min(count, max_csv_columns); ++i) {
        const std::string_view cell = bare(i);
        if (read_number(cell) || cell.find_first_of("0123456789+-.") == 0) {
            return false;
        }
    }
    return true;
}

bool CsvRows::next(CsvRow& row) {
    TextLine line;
    while (m_lines.next(line)) {
        const std::string_view text = trimmed(line.text);
        if (text.empty() || text.front() == '#') {
            continue;
        }
        if (m_separator == '\0') {
            m_separator = separator_of(text);
        }
        row.line = line.text;
        row.number = line.number;
        split_row(row, m_separator);
        return true;
    }
    return false;
}

void split_row(CsvRow& row, char separator) {
    row.count = 0;
    row.cells = {};
    for (std::size_t at = 0; at <= row.line.size();) {
        const std::size_t stop = std::min(row.line.find(separator, at), row.line.size());
        if (row.count < max_csv_columns) {
            row.cells[row.count] = trimmed(row.line.substr(at, stop - at));
        }
        ++row.count;
        at = stop + 1;
    }
}

}  // namespace nmk_text

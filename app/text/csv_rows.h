// csv_rows.h: walks the rows of a table and splits them into cells.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "text/text_lines.h"

namespace nmk_text {

constexpr std::size_t max_csv_columns = 12;  // of any table of the tool

/// One row of a table.
struct CsvRow {
    std::string_view line;
    std::size_t number = 0;  // of the line, from 1
    std::size_t count = 0;   // of the cells; those past max_csv_columns are counted, not kept
    std::array<std::string_view, max_csv_columns> cells;

    /// The cell without quotation marks around it.
    std::string_view bare(std::size_t index) const;

    /// True if no cell is a number or begins like one.
    bool is_header() const;
};

/// Splits the row's line into its cells.
void split_row(CsvRow& row, char separator);

/// Returns the rows that are neither empty nor remarks, one by one.
class CsvRows {
  public:
    explicit CsvRows(std::string_view text) : m_lines(text) {}

    /// False after the last row.
    bool next(CsvRow& row);

    /// The separator of the cells, which the first row decides.
    char separator() const { return m_separator == '\0' ? ',' : m_separator; }

  private:
    TextLines m_lines;
    char m_separator = '\0';
};

}  // namespace nmk_text

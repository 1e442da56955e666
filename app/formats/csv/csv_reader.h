// csv_reader.h: reads a table of points (x,y or x,y,z) or lines (x,y,z,x2,y2,z2).
//
// Columns stand between commas, semicolons or tabs, whichever the first row has (semicolons before
// tabs before commas). Numbers have a decimal point whatever the locale, and may stand in quotation
// marks. A first row without a number is a header. Empty rows and rows that begin with # are
// passed over. In a table of lines a row whose last three columns are empty is a point.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "formats/job/machining_job.h"
#include "text/result.h"

namespace nmk_csv {

/// The job of the table: one tool "all", or none where the table is empty. Lengths are in the
/// given unit; millimetres where none is given.
nmk_text::Result<nmk_job::MachiningJob> read_csv(const std::string& file_name, std::string text,
                                                 std::optional<nmk_job::JobUnits> units);

/// The table as text again: its rows as they stand in the file, in the order of their items.
struct CsvTable {
    char separator = ',';
    std::string_view header;             // empty where there is none
    std::vector<std::string_view> rows;  // without what ends the line
};

/// Splits a table that read_csv has accepted.
CsvTable split_csv(std::string_view text);

}  // namespace nmk_csv

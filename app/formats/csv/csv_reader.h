// csv_reader.h: reads a table of points (x,y or x,y,z) or lines (x,y,z,x2,y2,z2), and their tools.
//
// Columns are separated by semicolons, tabs or commas: the first of these that the first row has.
// Numbers have a decimal point in every locale, and may be in quotation marks. A first row without
// a number is a header. Empty rows and rows that begin with # are skipped. In a table of lines a
// row with its last three cells empty is a point. Behind the coordinates there may be a column with
// the heading "tool", the name of the tool of each row, and then one with the heading "diameter",
// empty where it is unknown; all rows of a tool have the same diameter.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "formats/job/machining_job.h"
#include "text/result.h"

namespace nmk_csv {

/// The job of the table, with the tools in the order of their first rows; without a column of tools
/// one tool "all", or none if the table is empty. Lengths are in `units`, by default millimetres.
nmk_text::Result<nmk_job::MachiningJob> read_csv(const std::string& file_name, std::string text,
                                                 std::optional<nmk_job::JobUnits> units);

/// The rows of a table as text, in the order of their items.
struct CsvTable {
    char separator = ',';
    std::string_view header;             // empty if there is none
    std::vector<std::string_view> rows;  // without their line endings
    std::size_t tool_columns = 0;        // columns behind the coordinates
};

/// Splits a table that read_csv has accepted.
CsvTable split_csv(std::string_view text);

}  // namespace nmk_csv

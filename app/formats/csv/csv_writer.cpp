// csv_writer.cpp: see csv_writer.h.

#include "formats/csv/csv_writer.h"

#include <algorithm>

#include "formats/csv/csv_reader.h"
#include "text/csv_rows.h"
#include "text/number_format.h"
#include "text/text_lines.h"

namespace nmk_csv {

namespace {

std::string point_cells(const giPoint3& point) {
    return nmk_text::exact_number(point.x) + "," + nmk_text::exact_number(point.y) + "," +
           nmk_text::exact_number(point.z);
}

/// The cells of the row as the file has them, without blanks and quotation marks: what else stands
/// in a row could be taken for a separator once the row is the first. A turned row has its last
/// three cells in front.
std::string row_text(std::string_view line, char separator, bool is_turned) {
    nmk_text::CsvRow row;
    row.line = line;
    nmk_text::split_row(row, separator);
    std::string text;
    for (std::size_t i = 0; i < row.count; ++i) {
        if (i > 0) {
            text += separator;
        }
        text += row.bare(is_turned ? (i + 3) % row.count : i);
    }
    return text;
}

std::string same_table(const nmk_job::MachiningJob& ordered) {
    const CsvTable table = split_csv(ordered.text);
    const std::string_view ending = nmk_text::line_ending(ordered.text);
    std::string text;
    if (!table.header.empty()) {
        text.append(table.header).append(ending);
    }
    for (const nmk_job::JobTool& tool : ordered.tools) {
        for (const nmk_job::JobItem& item : tool.items) {
            const std::string_view row = table.rows.at(item.source_index);
            text += row_text(row, table.separator, item.reversed);
            text.append(ending);
        }
    }
    return text;
}

bool has_lines(const nmk_job::MachiningJob& job) {
    return std::any_of(job.tools.begin(), job.tools.end(), [](const nmk_job::JobTool& tool) {
        return std::any_of(tool.items.begin(), tool.items.end(),
                           [](const nmk_job::JobItem& item) { return item.end.has_value(); });
    });
}

std::string tool_remark(const nmk_job::JobTool& tool) {
    return "# " + tool.name +
           (tool.diameter ? ", diameter " + nmk_text::exact_number(*tool.diameter) + " mm" : "") +
           "\n";
}

std::string new_table(const nmk_job::MachiningJob& ordered) {
    const bool with_ends = has_lines(ordered);
    std::string text = with_ends ? "x,y,z,x2,y2,z2\n" : "x,y,z\n";
    for (const nmk_job::JobTool& tool : ordered.tools) {
        if (ordered.format == nmk_job::JobFormat::excellon) {
            text += tool_remark(tool);
        }
        for (const nmk_job::JobItem& item : tool.items) {
            text += point_cells(item.entry());
            if (with_ends) {
                text += item.end ? "," + point_cells(item.exit()) : ",,,";
            }
            text += "\n";
        }
    }
    return text;
}

}  // namespace

std::string write_csv(const nmk_job::MachiningJob& ordered) {
    return ordered.format == nmk_job::JobFormat::csv ? same_table(ordered) : new_table(ordered);
}

}  // namespace nmk_csv

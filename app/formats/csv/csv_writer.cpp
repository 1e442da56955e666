// csv_writer.cpp: see csv_writer.h.

#include "formats/csv/csv_writer.h"

#include <algorithm>
#include <span>

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

/// The cells of the row as in the file, without blanks and quotation marks: once the row is the
/// first of the table, a reader could take other characters in it for the separator. A reversed row
/// has the three cells of its end first. The cell of the tool has `tool`, which differs from that
/// of the file where tools were merged.
std::string row_text(std::string_view line, const CsvTable& table, bool reversed,
                     const std::string& tool) {
    nmk_text::CsvRow row;
    row.line = line;
    nmk_text::split_row(row, table.separator);
    const std::size_t coordinates = row.count - table.tool_columns;
    std::string text;
    for (std::size_t i = 0; i < row.count; ++i) {
        if (i > 0) {
            text += table.separator;
        }
        text += i == coordinates
                    ? std::string_view(tool)
                    : row.bare(reversed && i < coordinates ? (i + 3) % coordinates : i);
    }
    return text;
}

std::string same_table(const nmk_job::MachiningJob& job, std::span<const nmk_job::JobCut> order) {
    const CsvTable table = split_csv(job.text);
    const std::string_view ending = nmk_text::line_ending(job.text);
    std::string text;
    if (!table.header.empty()) {
        text.append(table.header).append(ending);
    }
    for (const nmk_job::JobCut& cut : order) {
        text += row_text(table.rows.at(cut.item), table, cut.reversed,
                         job.tools[job.items[cut.item].tool].name);
        text.append(ending);
    }
    return text;
}

bool has_lines(const nmk_job::MachiningJob& job) {
    return std::any_of(job.items.begin(), job.items.end(),
                       [](const nmk_job::JobItem& item) { return item.end.has_value(); });
}

std::string tool_cells(const nmk_job::JobTool& tool) {
    return "," + tool.name + "," +
           (tool.diameter ? nmk_text::exact_number(*tool.diameter) : std::string());
}

std::string cut_cells(const nmk_job::JobItem& item, bool reversed, bool with_ends) {
    std::string text = point_cells(nmk_job::entry_of(item, reversed));
    if (with_ends) {
        text += item.end ? "," + point_cells(nmk_job::exit_of(item, reversed)) : ",,,";
    }
    return text;
}

std::string new_table(const nmk_job::MachiningJob& job, std::span<const nmk_job::JobCut> order) {
    const bool with_ends = has_lines(job);
    const bool with_tools = job.format == nmk_job::JobFormat::excellon;
    std::string text = with_ends ? "x,y,z,x2,y2,z2" : "x,y,z";
    text += with_tools ? ",tool,diameter\n" : "\n";
    const auto add_run = [&](std::size_t tool, std::span<const nmk_job::JobCut> cuts) {
        const std::string end = (with_tools ? tool_cells(job.tools[tool]) : "") + "\n";
        for (const nmk_job::JobCut& cut : cuts) {
            text += cut_cells(job.items[cut.item], cut.reversed, with_ends) + end;
        }
    };
    nmk_job::each_tool_run(job, order, add_run);
    return text;
}

}  // namespace

std::string write_csv(const nmk_job::MachiningJob& job, std::span<const nmk_job::JobCut> order) {
    return job.format == nmk_job::JobFormat::csv ? same_table(job, order) : new_table(job, order);
}

}  // namespace nmk_csv

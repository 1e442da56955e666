// csv_reader.cpp: see csv_reader.h.

#include "formats/csv/csv_reader.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>

#include "formats/job/job_length.h"
#include "formats/job/read_job_of.h"
#include "text/ascii.h"
#include "text/csv_rows.h"
#include "text/escaped_text.h"
#include "text/number_reader.h"

namespace nmk_csv {

namespace {

constexpr std::size_t point_columns = 3;
constexpr std::size_t line_columns = 6;

std::string columns(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " column" : " columns");
}

/// The number of columns for tools that a header has behind the coordinates: 0, 1 or 2.
std::size_t tool_columns_of(const nmk_text::CsvRow& header) {
    const auto is = [&](std::size_t from_end, std::string_view name) {
        const std::size_t count = header.count;
        return count >= from_end && count <= nmk_text::max_csv_columns &&
               nmk_text::lower_case(header.bare(count - from_end)) == name;
    };
    return is(1, "tool") ? 1 : is(2, "tool") && is(1, "diameter") ? 2 : 0;
}

/// Reads row after row; throws an Error without a file name.
class TableReader {
  public:
    explicit TableReader(nmk_job::JobUnits units) : m_units(units) {}

    void add_header(const nmk_text::CsvRow& row) {
        m_tool_columns = tool_columns_of(row);
        check_columns(row);
    }

    void add(const nmk_text::CsvRow& row) {
        check_columns(row);
        if (m_items.size() == nmk_job::max_items) {
            refuse(row, "more than " + std::to_string(nmk_job::max_items) + " items");
        }
        nmk_job::JobItem item;
        item.start = point(row, 0);
        if (row.count - m_tool_columns == line_columns && !has_empty_end(row)) {
            item.end = point(row, point_columns);
        }
        item.tool = tool(row);
        m_items.push_back(item);
    }

    void move_to(nmk_job::MachiningJob& job) {
        job.items = std::move(m_items);
        job.tools = std::move(m_tools);
    }

  private:
    [[noreturn]] static void refuse(const nmk_text::CsvRow& row, std::string message) {
        throw nmk_text::Error{{}, row.number, std::move(message)};
    }

    void check_columns(const nmk_text::CsvRow& row) {
        if (m_columns != 0 && row.count != m_columns) {
            refuse(row, columns(row.count) + "; expected " + std::to_string(m_columns) +
                            " as in the rows above");
        }
        const std::size_t count = row.count - std::min(m_tool_columns, row.count);
        if (count != 2 && count != 3 && count != 6) {
            refuse(row, columns(row.count) + "; expected x,y or x,y,z or x,y,z,x2,y2,z2");
        }
        m_columns = row.count;
    }

    static bool has_empty_end(const nmk_text::CsvRow& row) {
        return row.bare(3).empty() && row.bare(4).empty() && row.bare(5).empty();
    }

    double coordinate(const nmk_text::CsvRow& row, std::size_t index) const {
        const std::string_view cell = row.bare(index);
        const std::optional<double> value = nmk_text::read_coordinate(cell);
        if (!value) {
            refuse(row, "cannot read " + nmk_text::quoted(cell) + " in column " +
                            std::to_string(index + 1) +
                            "; expected a number from -1e9 to 1e9 with a decimal point");
        }
        return nmk_job::millimetres_of(*value, m_units);
    }

    giPoint3 point(const nmk_text::CsvRow& row, std::size_t first) const {
        const double x = coordinate(row, first);
        const double y = coordinate(row, first + 1);
        const bool has_z = row.count - m_tool_columns > 2;
        return giPoint3(x, y, has_z ? coordinate(row, first + 2) : 0.0);
    }

    /// The position of the tool of the row; a new tool is added.
    std::uint32_t tool(const nmk_text::CsvRow& row) {
        const std::string name(m_tool_columns == 0 ? "all" : row.bare(m_columns - m_tool_columns));
        if (name.empty()) {
            refuse(row, "the tool is empty; expected the name of a tool");
        }
        const std::optional<double> its_diameter = diameter(row);
        const auto [found, is_new] =
            m_positions.try_emplace(name, static_cast<std::uint32_t>(m_tools.size()));
        if (is_new) {
            m_tools.push_back({name, its_diameter});
        } else if (m_tools[found->second].diameter != its_diameter) {
            refuse(row, "another diameter of the tool " + nmk_text::quoted(name) +
                            "; expected that of the rows above");
        }
        return found->second;
    }

    std::optional<double> diameter(const nmk_text::CsvRow& row) const {
        if (m_tool_columns < 2 || row.bare(m_columns - 1).empty()) {
            return std::nullopt;
        }
        const double value = coordinate(row, m_columns - 1);
        if (value < 0.0) {
            refuse(row, "the diameter is negative; expected a number from 0 up");
        }
        return value;
    }

    nmk_job::JobUnits m_units;
    std::size_t m_columns = 0;
    std::size_t m_tool_columns = 0;
    std::vector<nmk_job::JobItem> m_items;
    std::vector<nmk_job::JobTool> m_tools;
    std::map<std::string, std::uint32_t, std::less<>> m_positions;
};

void read_table(nmk_job::MachiningJob& job) {
    TableReader table(job.units);
    nmk_text::CsvRows rows(job.text);
    nmk_text::CsvRow row;
    for (bool is_first = true; rows.next(row); is_first = false) {
        if (is_first && row.is_header()) {
            table.add_header(row);
        } else {
            table.add(row);
        }
    }
    table.move_to(job);
}

}  // namespace

nmk_text::Result<nmk_job::MachiningJob> read_csv(const std::string& file_name, std::string text,
                                                 std::optional<nmk_job::JobUnits> units) {
    return nmk_job::read_job_of(nmk_job::JobFormat::csv, file_name, std::move(text), units,
                                read_table);
}

CsvTable split_csv(std::string_view text) {
    CsvTable table;
    nmk_text::CsvRows rows(text);
    nmk_text::CsvRow row;
    for (bool is_first = true; rows.next(row); is_first = false) {
        if (is_first && row.is_header()) {
            table.header = row.line;
            table.tool_columns = tool_columns_of(row);
        } else {
            table.rows.push_back(row.line);
        }
    }
    table.separator = rows.separator();
    return table;
}

}  // namespace nmk_csv

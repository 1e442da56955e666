// csv_reader.cpp: see csv_reader.h.

#include "formats/csv/csv_reader.h"

#include "formats/job/job_length.h"
#include "formats/job/toolless_job.h"
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

/// Reads row after row; throws an Error without a file name.
class TableReader {
  public:
    explicit TableReader(nmk_job::JobUnits units) : m_units(units) {}

    void add_header(const nmk_text::CsvRow& row) { check_columns(row); }

    void add(const nmk_text::CsvRow& row) {
        check_columns(row);
        if (m_items.size() == nmk_job::max_items) {
            refuse(row, "more than " + std::to_string(nmk_job::max_items) + " items");
        }
        nmk_job::JobItem item;
        item.start = point(row, 0);
        if (row.count == line_columns && !has_empty_end(row)) {
            item.end = point(row, point_columns);
        }
        m_items.push_back(item);
    }

    std::vector<nmk_job::JobItem> take() { return std::move(m_items); }

  private:
    [[noreturn]] static void refuse(const nmk_text::CsvRow& row, std::string message) {
        throw nmk_text::Error{{}, row.number, std::move(message)};
    }

    void check_columns(const nmk_text::CsvRow& row) {
        if (m_columns != 0 && row.count != m_columns) {
            refuse(row, columns(row.count) + "; expected " + std::to_string(m_columns) +
                            " as in the rows above");
        }
        if (row.count != 2 && row.count != 3 && row.count != 6) {
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
        return giPoint3(x, y, row.count > 2 ? coordinate(row, first + 2) : 0.0);
    }

    nmk_job::JobUnits m_units;
    std::size_t m_columns = 0;
    std::vector<nmk_job::JobItem> m_items;
};

std::vector<nmk_job::JobItem> read_table(std::string_view text, nmk_job::JobUnits units) {
    TableReader table(units);
    nmk_text::CsvRows rows(text);
    nmk_text::CsvRow row;
    for (bool is_first = true; rows.next(row); is_first = false) {
        if (is_first && row.is_header()) {
            table.add_header(row);
        } else {
            table.add(row);
        }
    }
    return table.take();
}

}  // namespace

nmk_text::Result<nmk_job::MachiningJob> read_csv(const std::string& file_name, std::string text,
                                                 std::optional<nmk_job::JobUnits> units) {
    return nmk_job::read_toolless_job(nmk_job::JobFormat::csv, file_name, std::move(text), units,
                                      read_table);
}

CsvTable split_csv(std::string_view text) {
    CsvTable table;
    nmk_text::CsvRows rows(text);
    nmk_text::CsvRow row;
    for (bool is_first = true; rows.next(row); is_first = false) {
        if (is_first && row.is_header()) {
            table.header = row.line;
        } else {
            table.rows.push_back(row.line);
        }
    }
    table.separator = rows.separator();
    return table;
}

}  // namespace nmk_csv

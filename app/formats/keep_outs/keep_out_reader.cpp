// keep_out_reader: reads a table of keep-outs.

#include "formats/keep_outs/keep_out_reader.h"

#include <nmktoolbox/ordering/nmkTravelWays.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "formats/job/job_length.h"
#include "text/csv_rows.h"
#include "text/escaped_text.h"
#include "text/number_reader.h"

namespace nmk_keep_outs {

namespace {

using Corners = std::vector<giPoint2>;

std::string columns(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " column" : " columns");
}

std::size_t corner_count(const nmkTravelKeepOut& keep_out) {
    std::size_t count = 0;
    for (const Corners& part : keep_out.parts) {
        count += part.size();
    }
    return count;
}

bool can_be_travelled_around(const nmkTravelKeepOut& keep_out) {
    nmkTravelProblem alone;
    alone.keep_outs = {keep_out};
    return nmkTravelWays(alone).error().empty();
}

/// Reads row after row; throws an Error without a file name.
class KeepOutReader {
  public:
    void add(const nmk_text::CsvRow& row) {
        const std::string_view word = row.bare(0);
        if (word == "corner") {
            add_corner(row);
            return;
        }
        finish_polygon();
        if (word == "circle") {
            add_circle(row);
        } else if (word == "rectangle") {
            add_rectangle(row);
        } else if (word == "polygon") {
            begin_polygon(row);
        } else if (word == "clearance") {
            set_clearance(row);
        } else if (word == "units") {
            set_units(row);
        } else {
            refuse(row.number,
                   "unknown row " + nmk_text::quoted(word) +
                       "; expected circle, rectangle, polygon, corner, clearance or units");
        }
    }

    std::vector<KeepOut> take() {
        finish_polygon();
        return std::move(m_keep_outs);
    }

  private:
    [[noreturn]] static void refuse(std::size_t line, std::string message) {
        throw nmk_text::Error{{}, line, std::move(message)};
    }

    /// The numbers after the first cell, in mm; `form` is the row as it is expected.
    std::vector<double> numbers(const nmk_text::CsvRow& row, std::size_t count,
                                const char* form) const {
        if (row.count != count + 1) {
            refuse(row.number, columns(row.count) + "; expected " + form);
        }
        std::vector<double> result;
        for (std::size_t i = 1; i <= count; ++i) {
            const std::optional<double> value = nmk_text::read_coordinate(row.bare(i));
            if (!value || std::abs(*value) > max_number) {
                refuse(row.number, "cannot read " + nmk_text::quoted(row.bare(i)) + " in column " +
                                       std::to_string(i + 1) +
                                       "; expected a number from -1e6 to 1e6 with a decimal point");
            }
            result.push_back(nmk_job::millimetres_of(*value, m_units));
        }
        return result;
    }

    void add_circle(const nmk_text::CsvRow& row) {
        const std::vector<double> n = numbers(row, 3, "circle,X,Y,RADIUS");
        if (!(n[2] > 0.0)) {
            refuse(row.number, "expected a radius above 0");
        }
        const giPoint2 centre(n[0], n[1]);
        add_shape(row.number, nmkTravelKeepOut::circle(centre, n[2], 0.0, chord_error),
                  nmkTravelKeepOut::circle(centre, n[2], clearance(), chord_error));
    }

    void add_rectangle(const nmk_text::CsvRow& row) {
        const std::vector<double> n = numbers(row, 4, "rectangle,X0,Y0,X1,Y1");
        if (n[0] == n[2] || n[1] == n[3]) {
            refuse(row.number, "expected two opposite corners that differ in x and y");
        }
        const giPoint2 corner(n[0], n[1]);
        const giPoint2 opposite(n[2], n[3]);
        add_shape(row.number, nmkTravelKeepOut::rectangle(corner, opposite, 0.0, chord_error),
                  nmkTravelKeepOut::rectangle(corner, opposite, clearance(), chord_error));
    }

    void begin_polygon(const nmk_text::CsvRow& row) {
        if (row.count != 1) {
            refuse(row.number, columns(row.count) +
                                   "; expected polygon alone, and its corners in rows corner,X,Y");
        }
        m_polygon_line = row.number;
    }

    void add_corner(const nmk_text::CsvRow& row) {
        if (m_polygon_line == 0) {
            refuse(row.number, "a corner without a polygon; expected a row polygon above it");
        }
        const std::vector<double> n = numbers(row, 2, "corner,X,Y");
        m_corners.emplace_back(n[0], n[1]);
        check_count(row.number, m_corners.size());
    }

    void finish_polygon() {
        if (m_polygon_line == 0) {
            return;
        }
        const std::size_t line = std::exchange(m_polygon_line, 0);
        const Corners corners = std::exchange(m_corners, {});
        if (!can_be_travelled_around({{corners}})) {
            refuse(line, fault_of_polygon(corners.size()));
        }
        add_shape(line, {{corners}}, nmkTravelKeepOut::polygon(corners, clearance(), chord_error));
    }

    static std::string fault_of_polygon(std::size_t corners) {
        if (corners < 3) {
            return "a polygon of " + std::to_string(corners) +
                   (corners == 1 ? " corner" : " corners") + "; expected at least 3";
        }
        return "the edges of the polygon cross or touch; expected them to meet in their common "
               "corners only";
    }

    void set_clearance(const nmk_text::CsvRow& row) {
        m_clearance = numbers(row, 1, "clearance,C").front();
        if (!(m_clearance >= 0.0)) {
            refuse(row.number, "expected a clearance from 0");
        }
    }

    void set_units(const nmk_text::CsvRow& row) {
        if (row.count != 2 || (row.bare(1) != "mm" && row.bare(1) != "inch")) {
            refuse(row.number, "expected units,mm or units,inch");
        }
        if (!m_keep_outs.empty() || m_clearance > 0.0) {
            refuse(row.number, "expected the units above all keep-outs and clearances");
        }
        m_units =
            row.bare(1) == "inch" ? nmk_job::JobUnits::inches : nmk_job::JobUnits::millimetres;
    }

    double clearance() const { return m_clearance + rounding_margin; }

    void check_count(std::size_t line, std::size_t more) const {
        if (m_count + more > std::size_t{nmkTravelKeepOut::max_corners}) {
            refuse(line, "more than " + std::to_string(nmkTravelKeepOut::max_corners) +
                             " corners, with those of circles and clearances; expected fewer "
                             "keep-outs");
        }
    }

    void add_shape(std::size_t line, nmkTravelKeepOut bare, nmkTravelKeepOut shape) {
        check_count(line, corner_count(shape));
        if (!can_be_travelled_around(shape)) {
            refuse(line, "the corners are too near to each other; expected a larger shape");
        }
        m_count += corner_count(shape);
        m_keep_outs.push_back({line, std::move(bare), std::move(shape)});
    }

    std::vector<KeepOut> m_keep_outs;
    std::size_t m_count = 0;  // corners of all shapes
    double m_clearance = 0.0;
    nmk_job::JobUnits m_units = nmk_job::JobUnits::millimetres;
    std::size_t m_polygon_line = 0;  // of the polygon whose corners follow; 0 for none
    Corners m_corners;
};

}  // namespace

nmk_text::Result<std::vector<KeepOut>> read_keep_outs(const std::string& file_name,
                                                      std::string_view text) {
    return nmk_text::value_or_error(file_name, [&] {
        KeepOutReader reader;
        nmk_text::CsvRows rows(text);
        nmk_text::CsvRow row;
        while (rows.next(row)) {
            reader.add(row);
        }
        return reader.take();
    });
}

}  // namespace nmk_keep_outs

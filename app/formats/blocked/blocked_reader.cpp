// blocked_reader: reads a table of blocked points.

#include "formats/blocked/blocked_reader.h"

#include <cmath>

#include "text/csv_rows.h"
#include "text/escaped_text.h"
#include "text/number_format.h"
#include "text/number_reader.h"

namespace nmk_blocked {

namespace {

bool in_range(const std::vector<double>& numbers) {
    for (const double number : numbers) {
        if (!(std::abs(number) <= nmk_lattice::max_route_coordinate)) {
            return false;
        }
    }
    return true;
}

/// Reads row after row; throws an Error without a file name.
class ListReader {
  public:
    void add(const nmk_text::CsvRow& row) {
        const std::string_view word = row.bare(0);
        if (word == "box") {
            set(m_list.box, "box", checked_box(numbers(row, 1)), row);
        } else if (word == "steps") {
            set(m_list.steps, "steps", checked_steps(numbers(row, 1)), row);
        } else {
            add_point(row);
        }
    }

    BlockedList take() { return std::move(m_list); }

  private:
    [[noreturn]] static void refuse(const nmk_text::CsvRow& row, std::string message) {
        throw nmk_text::Error{{}, row.number, std::move(message)};
    }

    static std::vector<double> numbers(const nmk_text::CsvRow& row, std::size_t first) {
        std::vector<double> result;
        for (std::size_t i = first; i < std::min(row.count, nmk_text::max_csv_columns); ++i) {
            const std::optional<double> value = nmk_text::read_coordinate(row.bare(i));
            if (!value || std::abs(*value) > nmk_lattice::max_route_coordinate) {
                refuse(row, "cannot read " + nmk_text::quoted(row.bare(i)) + " in column " +
                                std::to_string(i + 1) +
                                "; expected a number from -1e6 to 1e6 with a decimal point");
            }
            result.push_back(*value);
        }
        return result;
    }

    template <class Value>
    static void set(std::optional<Value>& kept, const char* name,
                    const nmk_text::Result<Value>& checked, const nmk_text::CsvRow& row) {
        if (kept) {
            refuse(row, std::string("a second row ") + name + "; expected one");
        }
        if (!checked) {
            refuse(row, checked.error().message);
        }
        kept = *checked;
    }

    void add_point(const nmk_text::CsvRow& row) {
        if (row.count != 2) {
            refuse(row, std::to_string(row.count) + (row.count == 1 ? " column" : " columns") +
                            "; expected a blocked point x,y or box,X0,Y0,X1,Y1 or steps,SX,SY");
        }
        if (m_list.points.size() == nmk_lattice::max_cells) {
            refuse(row, "more than " + std::to_string(nmk_lattice::max_cells) + " points");
        }
        const std::vector<double> point = numbers(row, 0);
        m_list.points.emplace_back(point[0], point[1]);
    }

    BlockedList m_list;
};

/// The number of steps that fit between the start and an edge; a cell on the edge is in the box.
double steps_to(double distance, double step) {
    return std::floor((distance + nmk_lattice::min_step) / step);
}

}  // namespace

nmk_text::Result<PlaneBox> checked_box(const std::vector<double>& numbers) {
    if (numbers.size() != 4 || !in_range(numbers)) {
        return nmk_text::Error{
            {}, 0, "expected a box of four numbers from -1e6 to 1e6: X0,Y0,X1,Y1"};
    }
    const PlaneBox box{{numbers[0], numbers[1]}, {numbers[2], numbers[3]}};
    for (const bool is_x : {true, false}) {
        const double from = is_x ? box.lower.x : box.lower.y;
        const double to = is_x ? box.upper.x : box.upper.y;
        if (!(from <= to)) {
            return nmk_text::Error{{},
                                   0,
                                   std::string("the box goes from ") + (is_x ? "x " : "y ") +
                                       nmk_text::short_number(from, 9) + " to " +
                                       nmk_text::short_number(to, 9) +
                                       "; expected the lower left corner before the upper right"};
        }
    }
    return box;
}

nmk_text::Result<giPoint2> checked_steps(const std::vector<double>& numbers) {
    const nmk_text::Error problem{
        {}, 0, "expected steps of one or two numbers above 0.00001 and at most 1e6: SX,SY"};
    if (numbers.empty() || numbers.size() > 2 || !in_range(numbers)) {
        return problem;
    }
    const giPoint2 steps(numbers[0], numbers[numbers.size() - 1]);
    if (!(steps.x > nmk_lattice::min_step && steps.y > nmk_lattice::min_step)) {
        return problem;
    }
    return steps;
}

nmk_text::Result<BlockedList> read_blocked_list(const std::string& file_name,
                                                std::string_view text) {
    return nmk_text::value_or_error(file_name, [&] {
        ListReader reader;
        nmk_text::CsvRows rows(text);
        nmk_text::CsvRow row;
        for (bool is_first = true; rows.next(row); is_first = false) {
            const bool is_named = row.bare(0) == "box" || row.bare(0) == "steps";
            if (!is_first || is_named || !row.is_header()) {
                reader.add(row);
            }
        }
        return reader.take();
    });
}

nmk_text::Result<ListPlane> plane_of_list(const BlockedList& list, giPoint2 start) {
    const PlaneBox& box = *list.box;
    const giPoint2& steps = *list.steps;
    const double left = steps_to(start.x - box.lower.x, steps.x);
    const double right = steps_to(box.upper.x - start.x, steps.x);
    const double below = steps_to(start.y - box.lower.y, steps.y);
    const double above = steps_to(box.upper.y - start.y, steps.y);
    if (left < 0.0 || right < 0.0 || below < 0.0 || above < 0.0) {
        return nmk_text::Error{{},
                               0,
                               "the start (" + nmk_text::short_number(start.x, 9) + ", " +
                                   nmk_text::short_number(start.y, 9) + ") is outside the box"};
    }
    const double columns = left + right + 1.0;
    const double rows = below + above + 1.0;
    if (!(columns * rows <= static_cast<double>(nmk_lattice::max_cells))) {
        return nmk_text::Error{{},
                               0,
                               "the box has " + nmk_text::fixed_number(columns, 0) + " by " +
                                   nmk_text::fixed_number(rows, 0) + " cells; at most " +
                                   std::to_string(nmk_lattice::max_cells) +
                                   " can be searched; expected larger steps or a smaller box"};
    }
    ListPlane result{
        nmk_lattice::RoutePlane(start, {static_cast<int>(left), static_cast<int>(below)}, steps,
                                static_cast<int>(columns), static_cast<int>(rows))};
    for (const giPoint2& point : list.points) {
        if (const std::optional<nmk_lattice::GridCell> cell = result.plane.cell_at(point)) {
            result.plane.block(*cell);
        } else {
            ++result.off_lattice;
        }
    }
    return result;
}

}  // namespace nmk_blocked

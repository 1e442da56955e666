// plain_assignment.h: the least cost of an assignment, in the plain way.
//
// Each row gets a column of its own. Shortest augmenting paths over the whole table (Kuhn 1955,
// Munkres 1957, in the form of Jonker and Volgenant 1987), n cubed in time.
#pragma once

#include <cstddef>
#include <limits>
#include <vector>

namespace plain {

class Assignment {
  public:
    /// `costs` has n rows of n columns.
    explicit Assignment(std::vector<double> costs, std::size_t n)
        : m_costs(std::move(costs)), m_size(n), m_rows(n + 1), m_columns(n + 1), m_row_of(n + 1) {
        for (std::size_t row = 1; row <= n; ++row) add(row);
    }

    double cost() const {
        double sum = 0.0;
        for (std::size_t column = 1; column <= m_size; ++column) {
            sum += m_costs[(m_row_of[column] - 1) * m_size + column - 1];
        }
        return sum;
    }

  private:
    double reduced(std::size_t row, std::size_t column) const {
        return m_costs[(row - 1) * m_size + column - 1] - m_rows[row] - m_columns[column];
    }

    // Column 0 has the row that is added until the path is found.
    void add(std::size_t row) {
        std::vector<double> least(m_size + 1, std::numeric_limits<double>::infinity());
        std::vector<std::size_t> from(m_size + 1, 0);
        std::vector<bool> is_done(m_size + 1, false);
        m_row_of[0] = row;
        std::size_t column = 0;
        do {
            is_done[column] = true;
            column = next(column, least, from, is_done);
        } while (m_row_of[column] != 0);
        for (; column != 0; column = from[column]) m_row_of[column] = m_row_of[from[column]];
    }

    std::size_t next(std::size_t column, std::vector<double>& least, std::vector<std::size_t>& from,
                     const std::vector<bool>& is_done) {
        std::size_t nearest = 0;
        for (std::size_t other = 1; other <= m_size; ++other) {
            if (is_done[other]) continue;
            const double cost = reduced(m_row_of[column], other);
            if (cost < least[other]) {
                least[other] = cost;
                from[other] = column;
            }
            if (nearest == 0 || least[other] < least[nearest]) nearest = other;
        }
        const double step = least[nearest];
        for (std::size_t other = 0; other <= m_size; ++other) {
            if (is_done[other]) {
                m_rows[m_row_of[other]] += step;
                m_columns[other] -= step;
            } else {
                least[other] -= step;
            }
        }
        return nearest;
    }

    std::vector<double> m_costs;
    std::size_t m_size;
    std::vector<double> m_rows;     // what is taken off the costs of each row, from 1 on
    std::vector<double> m_columns;  // likewise; that of column 0 is of no use
    std::vector<std::size_t> m_row_of;
};

}  // namespace plain

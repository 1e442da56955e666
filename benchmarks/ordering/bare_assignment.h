// bare_assignment.h: the shortest assignment of the ends of lines to the starts of other lines.
// Each closed order of one-way lines is such an assignment, so that none has a shorter travel.
//
// The Hungarian method in n^3 steps, by shortest augmenting paths with potentials (Jonker and
// Volgenant, "A shortest augmenting path algorithm for dense and sparse linear assignment
// problems", Computing 38, 1987), without their start.
#pragma once

#include <geometry/giPoint3.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

namespace bare {

class Assignment {
  public:
    Assignment(const std::vector<giPoint3>& starts, const std::vector<giPoint3>& ends)
        : m_starts(starts),
          m_ends(ends),
          m_price_of_end(ends.size() + 1),
          m_price_of_start(ends.size() + 1),
          m_end_at(ends.size() + 1) {}

    /// The sum of its legs.
    double length() {
        for (std::size_t end = 1; end <= m_ends.size(); ++end) assign(end);
        double sum = 0.0;
        for (std::size_t start = 1; start <= m_starts.size(); ++start) {
            sum += cost(m_end_at[start], start);
        }
        return sum;
    }

  private:
    static constexpr double unreachable = std::numeric_limits<double>::infinity();

    // Ends and starts count from 1; 0 is none. No line follows itself.
    double cost(std::size_t end, std::size_t start) const {
        if (end == start) return 1e12;
        return m_ends[end - 1].distance(m_starts[start - 1]);
    }

    void assign(std::size_t end) {
        std::vector<double> least(m_starts.size() + 1, unreachable);
        std::vector<std::size_t> before(m_starts.size() + 1, 0);
        std::vector<bool> is_done(m_starts.size() + 1, false);
        m_end_at[0] = end;
        std::size_t at = 0;
        while (m_end_at[at] != 0) at = step(at, least, before, is_done);
        for (; at != 0; at = before[at]) m_end_at[at] = m_end_at[before[at]];
    }

    /// Lengthens the tree by its nearest start, and returns that.
    std::size_t step(std::size_t at, std::vector<double>& least, std::vector<std::size_t>& before,
                     std::vector<bool>& is_done) {
        is_done[at] = true;
        const std::size_t end = m_end_at[at];
        std::size_t nearest = 0;
        double gap = unreachable;
        for (std::size_t start = 1; start <= m_starts.size(); ++start) {
            if (is_done[start]) continue;
            const double reduced = cost(end, start) - m_price_of_end[end] - m_price_of_start[start];
            if (reduced < least[start]) {
                least[start] = reduced;
                before[start] = at;
            }
            if (least[start] < gap) {
                gap = least[start];
                nearest = start;
            }
        }
        for (std::size_t start = 0; start <= m_starts.size(); ++start) {
            if (is_done[start]) {
                m_price_of_end[m_end_at[start]] += gap;
                m_price_of_start[start] -= gap;
            } else {
                least[start] -= gap;
            }
        }
        return nearest;
    }

    const std::vector<giPoint3>& m_starts;
    const std::vector<giPoint3>& m_ends;
    std::vector<double> m_price_of_end;
    std::vector<double> m_price_of_start;
    std::vector<std::size_t> m_end_at;  // a start; 0: none yet
};

}  // namespace bare

// flat_tour.h: lines in the order of a tour, in flat arrays.
//
// Each position holds its line in the direction in which it is cut now, with the length of the edge
// to the next line. The last position leads to the first, for open paths too, since the moves treat
// them as rings. What a move is, and what it costs, is in flat_lines.cpp and flat_one_way.cpp.
#pragma once

#include <cstddef>
#include <vector>

#include "ordering/flat_access.h"
#include "ordering/flat_arithmetic.h"

namespace nmk_ordering {

/// The part of a Problem of flat_anneal.h that is the same for all lines.
template <int dimensions, class State>
class FlatTour {
  public:
    double length;

    void step_done(int) {}

    void save_best() {
        for (std::size_t k = 0; k < m_visits.size(); ++k) m_best[k] = m_visits[k].code;
    }

    void restore_best(double best_length) {
        set_order(m_best);
        length = best_length;
    }

    void store_best(State& state, double best_length, bool is_current) const {
        for (int k = 0; k < n; ++k) {
            store_code(state, k, is_current ? at(k).code : m_best[static_cast<std::size_t>(k)]);
        }
        FlatAccess::length(state) = best_length;
    }

  protected:
    using Point = FlatPoint<dimensions>;

    // A line as it is cut now; its code is twice the item, and one more if it is reversed.
    struct Visit {
        Point entry;
        Point exit;
        unsigned code;
    };

    FlatTour(State& state, State& best_state)
        : length(FlatAccess::length(state)),
          n(state.num_items()),
          random(FlatAccess::random(state)),
          remainder(n),
          m_starts(&FlatAccess::starts(state)),
          m_ends(&FlatAccess::ends(state)),
          m_visits(static_cast<std::size_t>(n)),
          m_edges(static_cast<std::size_t>(n)),
          m_best(codes_of(best_state)) {
        set_order(codes_of(state));
    }

    // The order, the length and the generator; the pending move is that of the derived class.
    void store_order(State& state) const {
        for (int k = 0; k < n; ++k) store_code(state, k, at(k).code);
        FlatAccess::random(state) = random;
        FlatAccess::length(state) = length;
    }

    int after(int position) const { return position + 1 < n ? position + 1 : 0; }
    int before(int position) const { return position > 0 ? position - 1 : n - 1; }
    Visit& at(int position) { return m_visits[static_cast<std::size_t>(position)]; }
    const Visit& at(int position) const { return m_visits[static_cast<std::size_t>(position)]; }
    double& edge(int position) { return m_edges[static_cast<std::size_t>(position)]; }
    double edge(int position) const { return m_edges[static_cast<std::size_t>(position)]; }

    // The length of the edge that would lead from one position to another.
    double edge_between(int from, int to) const {
        return length_between<dimensions>(at(from).exit, at(to).entry);
    }
    void update_edge(int position) { edge(position) = edge_between(position, after(position)); }

    int n;
    mlRandom random;
    DrawRemainder remainder;

  private:
    static std::vector<unsigned> codes_of(State& state) {
        std::vector<unsigned> codes;
        for (const int item : FlatAccess::items(state)) {
            const unsigned direction = FlatAccess::is_reversed(state, item) ? 1U : 0U;
            codes.push_back(static_cast<unsigned>(item) * 2U + direction);
        }
        return codes;
    }

    static void store_code(State& state, int position, unsigned code) {
        const int item = static_cast<int>(code >> 1);
        FlatAccess::items(state)[position] = item;
        FlatAccess::set_reversed(state, item, (code & 1U) != 0);
    }

    void set_order(const std::vector<unsigned>& codes) {
        for (int k = 0; k < n; ++k) at(k) = visit_of(codes[static_cast<std::size_t>(k)]);
        for (int k = 0; k < n; ++k) update_edge(k);
    }

    Visit visit_of(unsigned code) const {
        const int item = static_cast<int>(code >> 1);
        const Point start = flat<dimensions>((*m_starts)[item]);
        const Point end = flat<dimensions>((*m_ends)[item]);
        return (code & 1U) != 0 ? Visit{end, start, code} : Visit{start, end, code};
    }

    const giPoint3coPageArr* m_starts;
    const giPoint3coPageArr* m_ends;
    std::vector<Visit> m_visits;
    std::vector<double> m_edges;  // by position, to the next
    std::vector<unsigned> m_best;
};

}  // namespace nmk_ordering

// flat_points.cpp: points on an open path, annealed on flat arrays.
//
// While most moves are accepted only the order itself is reversed, and points are looked up by
// item. Once moves become rare the points are copied into the order instead, with the lengths of
// the edges between them, so that a rejected move reads two positions and takes no square root.
//
// The orders are those of the two states themselves, and only one copy of the points exists at a
// time: with a hundred thousand points memory counts.

#include "ordering/flat_access.h"
#include "ordering/flat_arithmetic.h"
#include "ordering/flat_problems.h"

#include <cstring>
#include <utility>
#include <vector>

namespace nmk_ordering {
namespace {

// Points are copied into the order from the start for orders this short, else once the accepted
// moves of a step reverse fewer positions than this for each move tried.
constexpr int short_order = 150;
constexpr long long few_positions_for_a_move = 40;

using FourInts = int __attribute__((vector_size(16)));

FourInts load_reversed(const int* from) {
    FourInts four;
    std::memcpy(&four, from, sizeof four);
    return __builtin_shufflevector(four, four, 3, 2, 1, 0);
}

void reverse_ints(int* low, int* high) {
    for (; high - low >= 8; low += 4, high -= 4) {
        const FourInts front = load_reversed(low);
        const FourInts back = load_reversed(high - 4);
        std::memcpy(low, &back, sizeof back);
        std::memcpy(high - 4, &front, sizeof front);
    }
    std::reverse(low, high);
}

template <int dimensions>
class FlatPoints {
  public:
    struct Move {
        int first = -1;
        int second = -1;
    };

    double length;

    FlatPoints(nmkAnnealStatePoints& state, nmkAnnealStatePoints& best_state)
        : length(FlatAccess::length(state)),
          m_n(state.num_items()),
          m_random(FlatAccess::random(state)),
          m_first_remainder(m_n),
          m_second_remainder(m_n - max_items_not_annealed),
          m_items(FlatAccess::items(state)),
          m_best(FlatAccess::items(best_state)),
          m_given(FlatAccess::points(state)) {
        if (m_n <= short_order) {
            copy_points_into_order();
            return;
        }
        m_by_item.reserve(static_cast<std::size_t>(m_n));
        for (int k = 0; k < m_n; ++k) m_by_item.push_back(flat<dimensions>(m_given[k]));
    }

    Move draw() {
        const std::uint32_t next = one_step.from(m_random.word);
        m_random.word = two_steps.from(m_random.word);
        const int first = m_first_remainder.of(mlRandom::drawn_from(next));
        int second = m_second_remainder.of(mlRandom::drawn_from(m_random.word));
        if (static_cast<unsigned>(second - first + 1) <= 2U) second = first + 2;
        return {std::min(first, second), std::max(first, second)};
    }

    bool surely_rises(const Move& move, double by) const {
        if (!m_is_in_order) return false;
        const auto [i, j] = move;
        const double a_to_c = square_between<dimensions>(at(i), at(j));
        const double b_to_d = square_between<dimensions>(at(i + 1), at(j + 1));
        const double least = (stored_edge(j) + stored_edge(i)) + by;
        const double farther = j + 1 < m_n ? std::max(a_to_c, b_to_d) : a_to_c;
        return farther > least * least * (1.0 + 1e-12);
    }

    double length_after(const Move& move) const {
        const auto [i, j] = move;
        const double a_to_c = length_between<dimensions>(point(i), point(j));
        if (j == m_n - 1) return (a_to_c - edge(i)) + length;
        const double b_to_d = length_between<dimensions>(point(i + 1), point(j + 1));
        return ((b_to_d + a_to_c) - (edge(j) + edge(i))) + length;
    }

    void accept(const Move& move, double new_length) {
        const auto [i, j] = move;
        reverse_ints(m_items.begin() + i + 1, m_items.begin() + j + 1);
        if (m_is_in_order) {
            std::reverse(m_in_order.begin() + i + 1, m_in_order.begin() + j + 1);
            std::reverse(m_edges.begin() + i + 1, m_edges.begin() + j);
            update_edge(i);
            update_edge(j);
        }
        m_positions_reversed += j - i;
        length = new_length;
    }

    double rounding() const { return 1e-14 * length; }

    void step_done(int moves) {
        const bool is_calm = m_positions_reversed < few_positions_for_a_move * moves;
        if (!m_is_in_order && moves > 1 && is_calm) copy_points_into_order();
        m_positions_reversed = 0;
    }

    void save_best() { m_best.become(utCopy(), m_items); }

    void restore_best(double best_length) {
        m_items.become(utCopy(), m_best);
        length = best_length;
        copy_points_into_order();
    }

    void store(nmkAnnealStatePoints& state, const Move& last, bool accepted) const {
        FlatAccess::random(state) = m_random;
        FlatAccess::length(state) = length;
        if (accepted) {
            FlatAccess::clear_pending(state);
        } else {
            FlatAccess::set_pending(state, last.first, last.second, length_after(last));
        }
    }

    void store_best(nmkAnnealStatePoints& state, double best_length, bool is_current) {
        if (is_current) save_best();
        FlatAccess::length(state) = best_length;
    }

  private:
    using Point = FlatPoint<dimensions>;

    const Point& by_item(int position) const {
        return m_by_item[static_cast<std::size_t>(m_items[position])];
    }
    const Point& at(int position) const { return m_in_order[static_cast<std::size_t>(position)]; }
    double stored_edge(int position) const { return m_edges[static_cast<std::size_t>(position)]; }

    const Point& point(int position) const {
        return m_is_in_order ? at(position) : by_item(position);
    }

    // The length of the edge from a position to the next.
    double edge(int position) const {
        if (m_is_in_order) return stored_edge(position);
        return length_between<dimensions>(by_item(position), by_item(position + 1));
    }

    void update_edge(int position) {
        if (position + 1 >= m_n) return;
        m_edges[static_cast<std::size_t>(position)] =
            length_between<dimensions>(at(position), at(position + 1));
    }

    // One element more than there are points, so that the one after the last may be read.
    void copy_points_into_order() {
        m_is_in_order = true;
        m_by_item = std::vector<Point>();
        m_in_order.assign(static_cast<std::size_t>(m_n) + 1, Point{});
        m_edges.assign(static_cast<std::size_t>(m_n) + 1, 0.0);
        for (int k = 0; k < m_n; ++k) {
            m_in_order[static_cast<std::size_t>(k)] = flat<dimensions>(m_given[m_items[k]]);
        }
        for (int k = 0; k < m_n; ++k) update_edge(k);
    }

    int m_n;
    mlRandom m_random;
    DrawRemainder m_first_remainder;
    DrawRemainder m_second_remainder;
    intcoFixedArr& m_items;
    intcoFixedArr& m_best;
    const giPoint3coPageArr& m_given;
    std::vector<Point> m_by_item;  // empty once they are in order
    bool m_is_in_order = false;
    std::vector<Point> m_in_order;  // by position
    std::vector<double> m_edges;    // by position, to the next; 0.0 at the last
    long long m_positions_reversed = 0;
};

}  // namespace

bool anneal_points_flat(const FlatEngine& engine, nmkAnnealState& state, nmkAnnealState& best_state,
                        int moves) {
    using State = nmkAnnealStatePoints;
    return with_exact_states<State>(state, best_state, [&](State& working, State& best) {
        const giPoint3coPageArr& points = FlatAccess::points(working);
        const bool is_flat = are_at_height(points, working.num_items(), points[0].z);
        is_flat ? run_flat<FlatPoints<2>>(engine, working, best, moves)
                : run_flat<FlatPoints<3>>(engine, working, best, moves);
    });
}

}  // namespace nmk_ordering

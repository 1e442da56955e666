// flat_one_way.cpp: lines that may be cut in one direction only, annealed on flat arrays.
//
// The sums are those of anneal_block_exchange.h, in its order.

#include "ordering/anneal_block_exchange.h"
#include "ordering/flat_problems.h"
#include "ordering/flat_tour.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace nmk_ordering {
namespace {

using State = nmkAnnealStateNonReversible;

class FlatOneWay : public FlatTour<2, State> {
  public:
    struct Move {
        int first = -1;
        int second = -1;
        int length = -1;
    };

    FlatOneWay(State& state, State& best_state)
        : FlatTour(state, best_state), m_closed(FlatAccess::closed(state)) {
        for (int room = 1; room <= std::min(n / 2, draws); ++room) {
            m_reciprocals.push_back(DrawRemainder::reciprocal_of(static_cast<std::uint32_t>(room)));
        }
    }

    Move draw() {
        const std::uint32_t next = one_step.from(random.word);
        const std::uint32_t after_it = two_steps.from(random.word);
        random.word = three_steps.from(random.word);
        int first = remainder.of(mlRandom::drawn_from(next));
        int second = remainder.of(mlRandom::drawn_from(after_it));
        if (first == second) second = after(second);
        if (first > second) std::swap(first, second);
        const int room = std::min(longest_block(first, second, n), draws);
        const int block =
            DrawRemainder::of(mlRandom::drawn_from(random.word), static_cast<std::uint32_t>(room),
                              m_reciprocals[static_cast<std::size_t>(room - 1)]);
        return {first, second, block + 1};
    }

    // Decides on moves of blocks that do not touch, which leave both ends of an open path alone.
    bool surely_rises(const Move& move, double by) const {
        const auto [i, j, block] = move;
        if (i == 0 || i + block == j || j + block >= n) return false;
        const double farther = std::max(square_between<2>(at(j - 1).exit, at(i).entry),
                                        square_between<2>(at(i - 1).exit, at(j).entry));
        const double least =
            ((edge(i + block - 1) + edge(j - 1)) + (edge(i - 1) + edge(j + block - 1))) + by;
        return farther > least * least * (1.0 + 1e-12);
    }

    double length_after(const Move& move) const {
        const auto [i, j, block] = move;
        const int a_prev = before(i);
        const int a_last = i + block - 1;
        const int b_last = on_ring(j + block - 1);
        double removed1 = edge(a_last);
        double added1;
        if (i + block == j) {
            added1 = edge_between(b_last, i);
        } else {
            removed1 += edge(j - 1);
            added1 = edge_between(b_last, i + block) + edge_between(j - 1, i);
        }
        double removed2 = edge(a_prev);
        double added2;
        if (a_prev == b_last) {
            added2 = edge_between(a_last, j);
        } else {
            removed2 += edge(b_last);
            added2 = edge_between(a_prev, j) + edge_between(a_last, after(b_last));
        }
        double result = m_closed ? length : length + edge(n - 1);
        result += (added1 + added2) - (removed1 + removed2);
        if (m_closed) return result;
        const auto [last, first] = ends_after_exchange({i, j, block}, n);
        return result - (last == n - 1 && first == 0 ? edge(n - 1) : edge_between(last, first));
    }

    void accept(const Move& move, double new_length) {
        const auto [i, j, block] = move;
        for (int m = 0, p = i, q = j; m < block; ++m, ++p, q = after(q)) {
            std::swap(at(p), at(q));
            std::swap(edge(p), edge(q));
        }
        update_edge(before(i));
        update_edge(i + block - 1);
        update_edge(j - 1);
        update_edge(on_ring(j + block - 1));
        length = new_length;
    }

    double rounding() const { return 1e-14 * (length + edge(n - 1)); }

    // The pending move of this state outlives its acceptance.
    void store(State& state, const Move& last, bool accepted) const {
        store_order(state);
        FlatAccess::set_pending(state, last.first, last.second,
                                accepted ? length : length_after(last));
        FlatAccess::swap_length(state) = last.length;
    }

  private:
    int on_ring(int position) const { return position < n ? position : position - n; }

    bool m_closed;
    std::vector<std::uint32_t> m_reciprocals;  // for the remainder by each length of a block
};

}  // namespace

bool anneal_one_way_flat(const FlatEngine& engine, nmkAnnealState& state,
                         nmkAnnealState& best_state, int moves) {
    return with_exact_states<State>(state, best_state, [&](State& working, State& best) {
        run_flat<FlatOneWay>(engine, working, best, moves);
    });
}

}  // namespace nmk_ordering

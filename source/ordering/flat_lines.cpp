// flat_lines.cpp: lines that may be cut in either direction, annealed on flat arrays.

#include "ordering/flat_problems.h"
#include "ordering/flat_tour.h"

#include <algorithm>
#include <utility>

namespace nmk_ordering {
namespace {

template <int dimensions>
class FlatLines : public FlatTour<dimensions, nmkAnnealStateReversibleLines> {
    using Tour = FlatTour<dimensions, nmkAnnealStateReversibleLines>;
    using Tour::after;
    using Tour::at;
    using Tour::before;
    using Tour::edge;
    using Tour::n;
    using Tour::random;
    using Tour::remainder;
    using Tour::update_edge;
    using typename Tour::Visit;

  public:
    using Tour::length;

    struct Move {
        int first = -1;
        int second = -1;
    };

    FlatLines(nmkAnnealStateReversibleLines& state, nmkAnnealStateReversibleLines& best_state)
        : Tour(state, best_state) {}

    Move draw() {
        const std::uint32_t next = one_step.from(random.word);
        random.word = two_steps.from(random.word);
        const int first = remainder.of(mlRandom::drawn_from(next));
        int second = remainder.of(mlRandom::drawn_from(random.word));
        if (first == second) second = after(second);
        return {first, second};
    }

    bool surely_rises(const Move& move, double by) const {
        const auto [i, j] = move;
        const Visit& a = at(i);
        const Visit& b = at(after(i));
        const Visit& c = at(j);
        const Visit& d = at(after(j));
        const double farther = std::max(square_between<dimensions>(b.entry, d.entry),
                                        square_between<dimensions>(a.exit, c.exit));
        const double least = (edge(j) + edge(i)) + by;
        return farther > least * least * (1.0 + 1e-12);
    }

    double length_after(const Move& move) const {
        const auto [i, j] = move;
        const double b_to_d = length_between<dimensions>(at(after(i)).entry, at(after(j)).entry);
        const double a_to_c = length_between<dimensions>(at(i).exit, at(j).exit);
        const double result = ((b_to_d + a_to_c) - (edge(j) + edge(i))) + length;
        return result <= 0.0 ? 0.0 : result;
    }

    void accept(const Move& move, double new_length) {
        const int lines = move.second - move.first + (move.second > move.first ? 0 : n);
        reverse_edges(after(move.first), move.second, lines - 1);
        reverse_visits(after(move.first), move.second, lines);
        update_edge(move.first);
        update_edge(move.second);
        length = new_length;
    }

    double rounding() const { return 1e-14 * length; }

    void store(nmkAnnealStateReversibleLines& state, const Move& last, bool accepted) const {
        this->store_order(state);
        if (accepted) {
            FlatAccess::clear_pending(state);
        } else {
            FlatAccess::set_pending(state, last.first, last.second, length_after(last));
        }
    }

  private:
    // Number by number: a copy of a whole visit would be read in wider pieces than it was written,
    // which waits for the writes to reach the cache.
    static void exchange_turned(Visit& a, Visit& b) {
        std::swap(a.entry, b.exit);
        std::swap(a.exit, b.entry);
        const unsigned code = a.code ^ 1U;
        a.code = b.code ^ 1U;
        b.code = code;
    }

    void reverse_edges(int low, int high, int count) {
        high = before(high);
        for (; count > 1; count -= 2, low = after(low), high = before(high)) {
            std::swap(edge(low), edge(high));
        }
    }

    void reverse_visits(int low, int high, int count) {
        for (; count > 1; count -= 2, low = after(low), high = before(high)) {
            exchange_turned(at(low), at(high));
        }
        if (count == 1) {
            Visit& middle = at(low);
            std::swap(middle.entry, middle.exit);
            middle.code ^= 1U;
        }
    }
};

}  // namespace

bool anneal_reversible_flat(const FlatEngine& engine, nmkAnnealState& state,
                            nmkAnnealState& best_state, int moves) {
    using State = nmkAnnealStateReversibleLines;
    return with_exact_states<State>(state, best_state, [&](State& working, State& best) {
        const giPoint3coPageArr& starts = FlatAccess::starts(working);
        const giPoint3coPageArr& ends = FlatAccess::ends(working);
        const int n = working.num_items();
        const double z = starts[0].z;
        const bool is_flat = are_at_height(starts, n, z) && are_at_height(ends, n, z);
        is_flat ? run_flat<FlatLines<2>>(engine, working, best, moves)
                : run_flat<FlatLines<3>>(engine, working, best, moves);
    });
}

}  // namespace nmk_ordering

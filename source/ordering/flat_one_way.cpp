// flat_one_way.cpp: lines that may be cut one way only, annealed on flat arrays.
//
// Each position holds its line, with the length of the way to the next; the way from the last to
// the first is kept for open paths too, since the moves treat them as rings. The sums are those of
// anneal_block_exchange.h, in its order.

#include "ordering/anneal_block_exchange.h"
#include "ordering/flat_access.h"
#include "ordering/flat_arithmetic.h"
#include "ordering/flat_problems.h"

#include <utility>
#include <vector>

namespace nmk_ordering {
namespace {

class One_way {
  public:
    using Point = Flat_point<2>;
    using State = nmkAnnealStateNonReversible;
    struct Move {
        int first = -1;
        int second = -1;
        int length = -1;
    };

    double length;

    One_way(State& state, State& best_state)
        : length(Flat_access::length(state)),
          n(state.num_items()),
          closed(Flat_access::closed(state)),
          random(Flat_access::random(state)),
          remainder(n),
          starts(&Flat_access::starts(state)),
          ends(&Flat_access::ends(state)),
          path(static_cast<std::size_t>(n)),
          links(static_cast<std::size_t>(n)),
          best(Flat_access::items(best_state).begin(), Flat_access::items(best_state).end()) {
        for (int room = 1; room <= std::min(n / 2, 32768); ++room) {
            magic_of_room.push_back(0xFFFFFFFFU / static_cast<std::uint32_t>(room) + 1U);
        }
        for (int k = 0; k < n; ++k) place(k, Flat_access::items(state)[k]);
        for (int k = 0; k < n; ++k) set_link(k);
    }

    Move draw() {
        const std::uint32_t next = one_step.from(random.word);
        const std::uint32_t after_it = two_steps.from(random.word);
        random.word = three_steps.from(random.word);
        int first = remainder.of(drawn(next));
        int second = remainder.of(drawn(after_it));
        if (first == second) second = after(second);
        if (first > second) std::swap(first, second);
        const int room = std::min(longest_block(first, second, n), 32768);
        const int block = Draw_remainder::of(drawn(random.word), static_cast<std::uint32_t>(room),
                                             magic_of_room[static_cast<std::size_t>(room - 1)]);
        return {first, second, block + 1};
    }

    // Looks at moves of blocks that do not touch, which leave both ends of an open path alone.
    bool surely_rises(const Move& move, double by) const {
        const auto [i, j, block] = move;
        if (i == 0 || i + block == j || j + block >= n) return false;
        const double farther = std::max(square_between<2>(at(j - 1).out, at(i).in),
                                        square_between<2>(at(i - 1).out, at(j).in));
        const double least =
            ((link(i + block - 1) + link(j - 1)) + (link(i - 1) + link(j + block - 1))) + by;
        return farther > least * least * (1.0 + 1e-12);
    }

    double length_after(const Move& move) const {
        const auto [i, j, block] = move;
        const int a_prev = i > 0 ? i - 1 : n - 1;
        const int a_last = i + block - 1;
        const int b_last = on_ring(j + block - 1);
        double removed1 = link(a_last);
        double added1;
        if (i + block == j) {
            added1 = way(b_last, i);
        } else {
            removed1 += link(j - 1);
            added1 = way(b_last, i + block) + way(j - 1, i);
        }
        double removed2 = link(a_prev);
        double added2;
        if (a_prev == b_last) {
            added2 = way(a_last, j);
        } else {
            removed2 += link(b_last);
            added2 = way(a_prev, j) + way(a_last, after(b_last));
        }
        double result = closed ? length : length + link(n - 1);
        result += (added1 + added2) - (removed1 + removed2);
        if (closed) return result;
        const auto [last, first] = ends_after_exchange({i, j, block}, n);
        return result - (last == n - 1 && first == 0 ? link(n - 1) : way(last, first));
    }

    void accept(const Move& move, double new_length) {
        const auto [i, j, block] = move;
        for (int m = 0, p = i, q = j; m < block; ++m, ++p, q = after(q)) {
            std::swap(at(p), at(q));
            std::swap(link(p), link(q));
        }
        set_link(i > 0 ? i - 1 : n - 1);
        set_link(i + block - 1);
        set_link(j - 1);
        set_link(on_ring(j + block - 1));
        length = new_length;
    }

    double rounding() const { return 1e-14 * (length + link(n - 1)); }
    void step_done(int) {}

    void save_best() {
        for (std::size_t k = 0; k < path.size(); ++k) best[k] = path[k].item;
    }

    void restore_best(double best_length) {
        for (int k = 0; k < n; ++k) place(k, best[static_cast<std::size_t>(k)]);
        for (int k = 0; k < n; ++k) set_link(k);
        length = best_length;
    }

    // The pending move of this state outlives its acceptance.
    void store(State& state, const Move& last, bool accepted) const {
        for (int k = 0; k < n; ++k) Flat_access::items(state)[k] = at(k).item;
        Flat_access::random(state) = random;
        Flat_access::length(state) = length;
        Flat_access::set_pending(state, last.first, last.second,
                                 accepted ? length : length_after(last));
        Flat_access::swap_length(state) = last.length;
    }

    void store_best(State& state, double best_length, bool is_current) const {
        for (int k = 0; k < n; ++k) {
            Flat_access::items(state)[k] =
                is_current ? at(k).item : best[static_cast<std::size_t>(k)];
        }
        Flat_access::length(state) = best_length;
    }

  private:
    static constexpr Generator_leap one_step{1};
    static constexpr Generator_leap two_steps{2};
    static constexpr Generator_leap three_steps{3};

    struct Stop {
        Point in;
        Point out;
        int item;
    };

    int after(int position) const { return position + 1 < n ? position + 1 : 0; }
    int on_ring(int position) const { return position < n ? position : position - n; }
    Stop& at(int position) { return path[static_cast<std::size_t>(position)]; }
    const Stop& at(int position) const { return path[static_cast<std::size_t>(position)]; }
    double& link(int position) { return links[static_cast<std::size_t>(position)]; }
    double link(int position) const { return links[static_cast<std::size_t>(position)]; }

    double way(int from, int to) const { return length_between<2>(at(from).out, at(to).in); }

    void place(int position, int item) {
        at(position) = {flat<2>((*starts)[item]), flat<2>((*ends)[item]), item};
    }

    void set_link(int position) { link(position) = way(position, after(position)); }

    int n;
    bool closed;
    mlRandom random;
    Draw_remainder remainder;
    std::vector<std::uint32_t> magic_of_room;  // for the remainder by each length of a block
    const giPoint3coPageArr* starts;
    const giPoint3coPageArr* ends;
    std::vector<Stop> path;
    std::vector<double> links;  // by position, to the next
    std::vector<int> best;
};

}  // namespace

bool anneal_one_way_flat(const Flat_engine& engine, nmkAnnealState& state, nmkAnnealState& best,
                         int moves) {
    using State = nmkAnnealStateNonReversible;
    State* working = Flat_access::exactly<State>(state);
    State* result = Flat_access::exactly<State>(best);
    if (working == nullptr || result == nullptr || working->num_items() <= 3) return false;
    One_way problem(*working, *result);
    Flat_anneal<One_way, State>(engine, problem, *working, *result).run(moves);
    return true;
}

}  // namespace nmk_ordering

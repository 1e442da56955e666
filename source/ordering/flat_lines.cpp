// flat_lines.cpp: lines that may be cut either way on a closed tour, annealed on flat arrays.
//
// Each position holds its line as it is turned now, with the length of the way to the next.

#include "ordering/flat_access.h"
#include "ordering/flat_arithmetic.h"
#include "ordering/flat_problems.h"

#include <utility>
#include <vector>

namespace nmk_ordering {
namespace {

template <int dimensions>
class Lines {
  public:
    using Point = Flat_point<dimensions>;
    struct Move {
        int first = -1;
        int second = -1;
    };

    double length;

    Lines(nmkAnnealStateReversibleLines& state, nmkAnnealStateReversibleLines& best_state)
        : length(Flat_access::length(state)),
          n(state.num_items()),
          random(Flat_access::random(state)),
          remainder(n),
          starts(&Flat_access::starts(state)),
          ends(&Flat_access::ends(state)),
          tour(static_cast<std::size_t>(n)),
          links(static_cast<std::size_t>(n)),
          best(static_cast<std::size_t>(n)) {
        for (int k = 0; k < n; ++k) place(k, code_at(state, k));
        for (int k = 0; k < n; ++k) set_link(k);
        for (int k = 0; k < n; ++k) best[static_cast<std::size_t>(k)] = code_at(best_state, k);
    }

    Move draw() {
        const std::uint32_t next = one_step.from(random.word);
        random.word = two_steps.from(random.word);
        const int first = remainder.of(drawn(next));
        int second = remainder.of(drawn(random.word));
        if (first == second) second = after(second);
        return {first, second};
    }

    bool surely_rises(const Move& move, double by) const {
        const auto [i, j] = move;
        const Stop& a = at(i);
        const Stop& b = at(after(i));
        const Stop& c = at(j);
        const Stop& d = at(after(j));
        const double farther = std::max(square_between<dimensions>(b.in, d.in),
                                        square_between<dimensions>(a.out, c.out));
        const double least = (link(j) + link(i)) + by;
        return farther > least * least * (1.0 + 1e-12);
    }

    double length_after(const Move& move) const {
        const auto [i, j] = move;
        const double b_to_d = length_between<dimensions>(at(after(i)).in, at(after(j)).in);
        const double a_to_c = length_between<dimensions>(at(i).out, at(j).out);
        const double result = ((b_to_d + a_to_c) - (link(j) + link(i))) + length;
        return result <= 0.0 ? 0.0 : result;
    }

    void accept(const Move& move, double new_length) {
        const int lines = move.second - move.first + (move.second > move.first ? 0 : n);
        reverse_links(after(move.first), move.second, lines - 1);
        reverse_stops(after(move.first), move.second, lines);
        set_link(move.first);
        set_link(move.second);
        length = new_length;
    }

    double rounding() const { return 1e-14 * length; }
    void step_done(int) {}

    void save_best() {
        for (std::size_t k = 0; k < tour.size(); ++k) best[k] = tour[k].code;
    }

    void restore_best(double best_length) {
        for (int k = 0; k < n; ++k) place(k, best[static_cast<std::size_t>(k)]);
        for (int k = 0; k < n; ++k) set_link(k);
        length = best_length;
    }

    void store(nmkAnnealStateReversibleLines& state, const Move& last, bool accepted) const {
        for (int k = 0; k < n; ++k) store_code(state, k, at(k).code);
        Flat_access::random(state) = random;
        Flat_access::length(state) = length;
        if (accepted) {
            Flat_access::set_pending(state, -1, -1, -1.0);
        } else {
            Flat_access::set_pending(state, last.first, last.second, length_after(last));
        }
    }

    void store_best(nmkAnnealStateReversibleLines& state, double best_length,
                    bool is_current) const {
        for (int k = 0; k < n; ++k) {
            store_code(state, k, is_current ? at(k).code : best[static_cast<std::size_t>(k)]);
        }
        Flat_access::length(state) = best_length;
    }

  private:
    static constexpr Generator_leap one_step{1};
    static constexpr Generator_leap two_steps{2};

    // A line as it is turned now; its code is twice the item, and one more if it is turned.
    struct Stop {
        Point in;
        Point out;
        unsigned code;
    };

    int after(int position) const { return position + 1 < n ? position + 1 : 0; }
    int before(int position) const { return position > 0 ? position - 1 : n - 1; }
    Stop& at(int position) { return tour[static_cast<std::size_t>(position)]; }
    const Stop& at(int position) const { return tour[static_cast<std::size_t>(position)]; }
    double& link(int position) { return links[static_cast<std::size_t>(position)]; }
    double link(int position) const { return links[static_cast<std::size_t>(position)]; }

    static unsigned code_at(nmkAnnealStateReversibleLines& state, int position) {
        const int item = Flat_access::items(state)[position];
        const bool turned = Flat_access::reverse_flags(state)[item] != 0;
        return static_cast<unsigned>(item) * 2U + (turned ? 1U : 0U);
    }

    static void store_code(nmkAnnealStateReversibleLines& state, int position, unsigned code) {
        const int item = static_cast<int>(code >> 1);
        Flat_access::items(state)[position] = item;
        Flat_access::reverse_flags(state)[item] = static_cast<int>(code & 1U);
    }

    void place(int position, unsigned code) {
        const int item = static_cast<int>(code >> 1);
        const Point start = flat<dimensions>((*starts)[item]);
        const Point end = flat<dimensions>((*ends)[item]);
        at(position) = (code & 1U) != 0 ? Stop{end, start, code} : Stop{start, end, code};
    }

    void set_link(int position) {
        link(position) = length_between<dimensions>(at(position).out, at(after(position)).in);
    }

    void turn(int position) {
        Stop& stop = at(position);
        std::swap(stop.in, stop.out);
        stop.code ^= 1U;
    }

    void reverse_links(int low, int high, int count) {
        high = before(high);
        for (; count > 1; count -= 2, low = after(low), high = before(high)) {
            std::swap(link(low), link(high));
        }
    }

    void reverse_stops(int low, int high, int count) {
        for (; count > 1; count -= 2, low = after(low), high = before(high)) {
            std::swap(at(low), at(high));
            turn(low);
            turn(high);
        }
        if (count == 1) turn(low);
    }

    int n;
    mlRandom random;
    Draw_remainder remainder;
    const giPoint3coPageArr* starts;
    const giPoint3coPageArr* ends;
    std::vector<Stop> tour;
    std::vector<double> links;  // by position, to the next
    std::vector<unsigned> best;
};

template <int dimensions>
void run(const Flat_engine& engine, nmkAnnealStateReversibleLines& state,
         nmkAnnealStateReversibleLines& best, int moves) {
    using Problem = Lines<dimensions>;
    Problem problem(state, best);
    Flat_anneal<Problem, nmkAnnealStateReversibleLines>(engine, problem, state, best).run(moves);
}

}  // namespace

bool anneal_reversible_flat(const Flat_engine& engine, nmkAnnealState& state, nmkAnnealState& best,
                            int moves) {
    auto* working = Flat_access::exactly<nmkAnnealStateReversibleLines>(state);
    auto* result = Flat_access::exactly<nmkAnnealStateReversibleLines>(best);
    if (working == nullptr || result == nullptr || working->num_items() <= 3) return false;
    const giPoint3coPageArr& starts = Flat_access::starts(*working);
    const giPoint3coPageArr& ends = Flat_access::ends(*working);
    const int n = working->num_items();
    const double z = starts[0].z;
    if (lie_at_height(starts, n, z) && lie_at_height(ends, n, z)) {
        run<2>(engine, *working, *result, moves);
    } else {
        run<3>(engine, *working, *result, moves);
    }
    return true;
}

}  // namespace nmk_ordering

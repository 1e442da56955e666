// flat_points.cpp: points on an open path, annealed on flat arrays.
//
// While most moves are accepted only the order itself is reversed and points are looked up by item.
// Once moves become rare the points are placed in the order instead, with the lengths of the edges
// between them, so that a rejected move reads two places and takes no square root.
//
// The orders are those of the two states themselves, and only one copy of the points is held at a
// time: with a hundred thousand points memory counts.

#include "ordering/flat_access.h"
#include "ordering/flat_arithmetic.h"
#include "ordering/flat_problems.h"

#include <cstring>
#include <utility>
#include <vector>

namespace nmk_ordering {
namespace {

// Points are placed from the start for orders this short, else once the accepted moves of a step
// reverse fewer positions than this for each move tried.
constexpr int short_order = 150;
constexpr long long few_positions_for_a_move = 40;

using Four_ints = int __attribute__((vector_size(16)));

Four_ints load_reversed(const int* from) {
    Four_ints four;
    std::memcpy(&four, from, sizeof four);
    return __builtin_shufflevector(four, four, 3, 2, 1, 0);
}

void reverse_ints(int* low, int* high) {
    for (; high - low >= 8; low += 4, high -= 4) {
        const Four_ints front = load_reversed(low);
        const Four_ints back = load_reversed(high - 4);
        std::memcpy(low, &back, sizeof back);
        std::memcpy(high - 4, &front, sizeof front);
    }
    std::reverse(low, high);
}

template <int dimensions>
class Points {
  public:
    using Point = Flat_point<dimensions>;
    struct Move {
        int first = -1;
        int second = -1;
    };

    double length;

    Points(nmkAnnealStatePoints& state, nmkAnnealStatePoints& best_state)
        : length(Flat_access::length(state)),
          n(state.num_items()),
          random(Flat_access::random(state)),
          first_remainder(n),
          second_remainder(n - 3),
          items(Flat_access::items(state)),
          best(Flat_access::items(best_state)),
          given(Flat_access::points(state)) {
        if (n <= short_order) {
            place();
            return;
        }
        points.reserve(static_cast<std::size_t>(n));
        for (int k = 0; k < n; ++k) points.push_back(flat<dimensions>(given[k]));
    }

    Move draw() {
        const std::uint32_t next = one_step.from(random.word);
        random.word = two_steps.from(random.word);
        const int first = first_remainder.of(drawn(next));
        int second = second_remainder.of(drawn(random.word));
        if (static_cast<unsigned>(second - first + 1) <= 2U) second = first + 2;
        return {std::min(first, second), std::max(first, second)};
    }

    bool surely_rises(const Move& move, double by) const {
        if (!is_placed) return false;
        const auto [i, j] = move;
        const double a_to_c = square_between<dimensions>(at(i), at(j));
        const double b_to_d = square_between<dimensions>(at(i + 1), at(j + 1));
        const double least = (link(j) + link(i)) + by;
        const double farther = j + 1 < n ? std::max(a_to_c, b_to_d) : a_to_c;
        return farther > least * least * (1.0 + 1e-12);
    }

    double length_after(const Move& move) const {
        const auto [i, j] = move;
        const double a_to_c = length_between<dimensions>(point(i), point(j));
        if (j == n - 1) return (a_to_c - edge(i)) + length;
        const double b_to_d = length_between<dimensions>(point(i + 1), point(j + 1));
        return ((b_to_d + a_to_c) - (edge(j) + edge(i))) + length;
    }

    void accept(const Move& move, double new_length) {
        const auto [i, j] = move;
        reverse_ints(items.begin() + i + 1, items.begin() + j + 1);
        if (is_placed) {
            std::reverse(placed.begin() + i + 1, placed.begin() + j + 1);
            std::reverse(links.begin() + i + 1, links.begin() + j);
            set_link(i);
            set_link(j);
        }
        positions_reversed += j - i;
        length = new_length;
    }

    double rounding() const { return 1e-14 * length; }

    void step_done(int moves) {
        if (!is_placed && moves > 1 && positions_reversed < few_positions_for_a_move * moves) {
            place();
        }
        positions_reversed = 0;
    }

    void save_best() { best.become(utCopy(), items); }

    void restore_best(double best_length) {
        items.become(utCopy(), best);
        length = best_length;
        place();
    }

    void store(nmkAnnealStatePoints& state, const Move& last, bool accepted) const {
        Flat_access::random(state) = random;
        Flat_access::length(state) = length;
        if (accepted) {
            Flat_access::set_pending(state, -1, -1, -1.0);
        } else {
            Flat_access::set_pending(state, last.first, last.second, length_after(last));
        }
    }

    void store_best(nmkAnnealStatePoints& state, double best_length, bool is_current) {
        if (is_current) save_best();
        Flat_access::length(state) = best_length;
    }

  private:
    static constexpr Generator_leap one_step{1};
    static constexpr Generator_leap two_steps{2};

    const Point& by_item(int position) const {
        return points[static_cast<std::size_t>(items[position])];
    }
    const Point& at(int position) const { return placed[static_cast<std::size_t>(position)]; }
    double link(int position) const { return links[static_cast<std::size_t>(position)]; }

    const Point& point(int position) const { return is_placed ? at(position) : by_item(position); }

    // The length of the edge from a position to the next.
    double edge(int position) const {
        if (is_placed) return link(position);
        return length_between<dimensions>(by_item(position), by_item(position + 1));
    }

    void set_link(int position) {
        if (position + 1 >= n) return;
        links[static_cast<std::size_t>(position)] =
            length_between<dimensions>(at(position), at(position + 1));
    }

    // One place more than there are points, so that the place after the last may be read.
    void place() {
        is_placed = true;
        points = std::vector<Point>();
        placed.assign(static_cast<std::size_t>(n) + 1, Point{});
        links.assign(static_cast<std::size_t>(n) + 1, 0.0);
        for (int k = 0; k < n; ++k) {
            placed[static_cast<std::size_t>(k)] = flat<dimensions>(given[items[k]]);
        }
        for (int k = 0; k < n; ++k) set_link(k);
    }

    int n;
    mlRandom random;
    Draw_remainder first_remainder;
    Draw_remainder second_remainder;
    intcoFixedArr& items;
    intcoFixedArr& best;
    const giPoint3coPageArr& given;
    std::vector<Point> points;  // by item, until they are placed
    bool is_placed = false;
    std::vector<Point> placed;  // by position
    std::vector<double> links;  // by position, to the next; 0.0 at the last
    long long positions_reversed = 0;
};

template <int dimensions>
void run(const Flat_engine& engine, nmkAnnealStatePoints& state, nmkAnnealStatePoints& best,
         int moves) {
    Points<dimensions> problem(state, best);
    Flat_anneal<Points<dimensions>, nmkAnnealStatePoints>(engine, problem, state, best).run(moves);
}

}  // namespace

bool anneal_points_flat(const Flat_engine& engine, nmkAnnealState& state, nmkAnnealState& best,
                        int moves) {
    nmkAnnealStatePoints* working = Flat_access::exactly<nmkAnnealStatePoints>(state);
    nmkAnnealStatePoints* result = Flat_access::exactly<nmkAnnealStatePoints>(best);
    if (working == nullptr || result == nullptr || working->num_items() <= 3) return false;
    const giPoint3coPageArr& points = Flat_access::points(*working);
    if (lie_at_height(points, working->num_items(), points[0].z)) {
        run<2>(engine, *working, *result, moves);
    } else {
        run<3>(engine, *working, *result, moves);
    }
    return true;
}

}  // namespace nmk_ordering

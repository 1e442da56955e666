#include <nmktoolbox/ordering/nmkAnnealStateNonReversible.h>

#include <geometry/giPoint2.h>
#include <nmkarcline/nmkDebugGeometry.h>
#include <nmkarcline/nmkDebugGeometryUtils.h>

#include "ordering/anneal_block_exchange.h"
#include "ordering/anneal_draw.h"
#include "ordering/run_time_type.h"
#include "ordering/whole_assignment.h"

#include <utility>

using nmk_ordering::cast_to_kind;
using nmk_ordering::draw_index;

namespace {

// The numbers of lines that are solved exactly. The time grows as the factorial.
constexpr int min_solved_exactly = 2;
constexpr int max_solved_exactly = 9;

constexpr int debug_level = 1;

}  // namespace

nmkAnnealStateNonReversible::nmkAnnealStateNonReversible(const giPoint3coPageArr& starts,
                                                         const giPoint3coPageArr& ends,
                                                         int is_closed)
    : nmkAnnealOrderState(starts.size()),
      start_points(&starts),
      end_points(&ends),
      closed(is_closed) {}

const utTypeID& nmkAnnealStateNonReversible::ut_dynamic_type() const { return ut_static_type(); }

int nmkAnnealStateNonReversible::ut_is_kind_of(const utTypeID& type) const {
    return nmk_ordering::is_kind(*this, type);
}

double nmkAnnealStateNonReversible::initialise() {
    draw_lines_before_ordering();
    const double energy = nmkAnnealOrderState::initialise();
    const int n = items.size();
    if (n < min_solved_exactly || n > max_solved_exactly) return energy;
    solve_exactly();
    return -1.0;
}

// Deliberate: the pending move stays as it is, unlike that of the other states.
void nmkAnnealStateNonReversible::accept_new_state() {
    nmk_ordering::exchange_blocks(items, {candidate_1, candidate_2, swap_length});
    distance_value = candidate_distance;
}

nmkAnnealState& nmkAnnealStateNonReversible::operator=(const nmkAnnealState& other) {
    const nmkAnnealStateNonReversible* source = ut_dynamic_cast(&other);
    if (source == nullptr) return *this;
    start_points = source->start_points;
    end_points = source->end_points;
    // Deliberate: neither `closed` nor `swap_length` is copied.
    nmkAnnealOrderState::operator=(other);
    return *this;
}

nmkAnnealStateNonReversible& nmkAnnealStateNonReversible::operator=(
    const nmkAnnealStateNonReversible& other) {
    return nmk_ordering::assign_whole(*this, other);
}

nmkAnnealStateNonReversible::~nmkAnnealStateNonReversible() = default;

// Deliberate: z is ignored here, though the other states measure in three dimensions.
double nmkAnnealStateNonReversible::distance(int item_a, int item_b) {
    const giPoint3& from = (*end_points)[item_a];
    const giPoint3& to = (*start_points)[item_b];
    return giPoint2(from.x, from.y).distance(giPoint2(to.x, to.y));
}

double nmkAnnealStateNonReversible::total_distance() {
    const double open = nmkAnnealOrderState::total_distance();
    const int n = items.size();
    return closed != 0 && n > 0 ? open + distance(items[n - 1], items[0]) : open;
}

const utTypeID& nmkAnnealStateNonReversible::ut_static_type() {
    static const utTypeID type("nmkAnnealStateNonReversible",
                               &nmkAnnealOrderState::ut_static_type());
    return type;
}

nmkAnnealStateNonReversible* nmkAnnealStateNonReversible::ut_dynamic_cast(nmkAnnealState* state) {
    return cast_to_kind<nmkAnnealStateNonReversible>(state);
}

const nmkAnnealStateNonReversible* nmkAnnealStateNonReversible::ut_dynamic_cast(
    const nmkAnnealState* state) {
    return cast_to_kind<const nmkAnnealStateNonReversible>(state);
}

void nmkAnnealStateNonReversible::get_candidates(int& first, int& second) {
    const int n = items.size();
    first = draw_index(random, n);
    second = draw_index(random, n);
    if (first == second) second = (second + 1) % n;
    if (first > second) std::swap(first, second);
}

// The third draw of the move is made here.
void nmkAnnealStateNonReversible::update_candidate_distance() {
    const int room = nmk_ordering::longest_block(candidate_1, candidate_2, items.size());
    swap_length = draw_index(random, room) + 1;
    candidate_distance = nmk_ordering::length_after_exchange(
        items, {candidate_1, candidate_2, swap_length}, distance_value, closed != 0,
        [this](int a, int b) { return distance(a, b); });
}

void nmkAnnealStateNonReversible::draw_lines_before_ordering() const {
    nmkDebugGeometry& channel = nmkDebugGeometry::get_from_manager("nmkAnnealStateNonReversible");
    if (channel.on(debug_level) == 0) return;
    nmkAbsPolyArcLineVecListIter lines;
    for (int k = 0; k < items.size(); ++k) {
        lines.insert_last(
            nmkDebugGeometryUtils::line_drawing((*start_points)[k], (*end_points)[k]));
    }
    channel.copy_iter(lines, "Before ordering", debug_level);
}

void nmkAnnealStateNonReversible::solve_exactly() {
    const int n = items.size();
    distance_value = total_distance();
    doublecoDynArr table(n * n);
    for (int a = 0; a < n; ++a) {
        for (int b = 0; b < n; ++b) table[a * n + b] = distance(a, b);
    }
    intcoFixedArr work(items);
    if (closed == 0) {
        permute(n, 0.0, items, work, table);
        return;
    }
    // A ring has no start, so the item in the last position can stay there.
    if (!(distance_value >= 0.0)) return;
    for (int m = 0; m <= n - 2; ++m) {
        std::swap(work[m], work[n - 2]);
        permute(n - 2, table[work[n - 2] * n + work[n - 1]], items, work, table);
        std::swap(work[m], work[n - 2]);
    }
}

// Builds the order from its end backwards: positions k and up of `work` are fixed, and `length` is
// that of the path through them. Deliberate: a branch is pruned only when it is longer than the
// best order, not when it is equal.
void nmkAnnealStateNonReversible::permute(int k, double length, intcoFixedArr& best,
                                          intcoFixedArr& work, const doublecoDynArr& table) {
    const int n = work.size();
    if (k == 0) {
        if (closed != 0) length += table[work[n - 1] * n + work[0]];
        if (length < distance_value) {
            best.become(utCopy(), work);
            distance_value = length;
        }
        return;
    }
    if (length > distance_value) return;
    for (int m = 0; m < k; ++m) {
        std::swap(work[m], work[k - 1]);
        const double edge = k < n ? table[work[k - 1] * n + work[k]] : 0.0;
        permute(k - 1, length + edge, best, work, table);
        std::swap(work[m], work[k - 1]);
    }
}

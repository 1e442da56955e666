#include <nmktoolbox/ordering/nmkAnnealStateReversibleLines.h>

#include "ordering/anneal_draw.h"
#include "ordering/run_time_type.h"
#include "ordering/whole_assignment.h"

#include <utility>

using nmk_ordering::cast_to_kind;
using nmk_ordering::draw_index;

nmkAnnealStateReversibleLines::nmkAnnealStateReversibleLines(const giPoint3coPageArr& starts,
                                                             const giPoint3coPageArr& ends)
    : nmkAnnealOrderState(starts.size()),
      start_points(&starts),
      end_points(&ends),
      reverse_flags(starts.size()) {}

const utTypeID& nmkAnnealStateReversibleLines::ut_dynamic_type() const { return ut_static_type(); }

int nmkAnnealStateReversibleLines::ut_is_kind_of(const utTypeID& type) const {
    return nmk_ordering::is_kind(*this, type);
}

void nmkAnnealStateReversibleLines::accept_new_state() {
    int lo = candidate_1 + 1;
    int hi = candidate_2;
    if (lo > hi) hi += items.size();
    for (; lo < hi; ++lo, --hi) {
        const int p = normalise_index(lo);
        const int q = normalise_index(hi);
        std::swap(items[p], items[q]);
        reverse(p);
        reverse(q);
    }
    // The middle line of an odd span is reversed without moving.
    if (lo == hi) reverse(normalise_index(lo));
    distance_value = candidate_distance;
    candidate_distance = -1.0;
    candidate_1 = candidate_2 = -1;
}

nmkAnnealState& nmkAnnealStateReversibleLines::operator=(const nmkAnnealState& other) {
    const nmkAnnealStateReversibleLines* source = ut_dynamic_cast(&other);
    if (source == nullptr) return *this;
    start_points = source->start_points;
    end_points = source->end_points;
    reverse_flags.become(utCopy(), source->reverse_flags);
    nmkAnnealOrderState::operator=(other);
    return *this;
}

nmkAnnealStateReversibleLines& nmkAnnealStateReversibleLines::operator=(
    const nmkAnnealStateReversibleLines& other) {
    return nmk_ordering::assign_whole(*this, other);
}

nmkAnnealStateReversibleLines::~nmkAnnealStateReversibleLines() = default;

double nmkAnnealStateReversibleLines::distance(int item_a, int item_b) {
    return end_point(item_a).distance(start_point(item_b));
}

double nmkAnnealStateReversibleLines::total_distance() {
    const int n = items.size();
    double total = 0.0;
    for (int k = 0; k < n; ++k) total += distance(items[k], items[(k + 1) % n]);
    return total;
}

void nmkAnnealStateReversibleLines::get_reverse_flags(intcoFixedArr& out) const {
    out.become(utCopy(), reverse_flags);
    for (int k = 0; k < out.size(); ++k) out[k] = reversed(k);
}

const utTypeID& nmkAnnealStateReversibleLines::ut_static_type() {
    static const utTypeID type("nmkAnnealStateReversibleLines",
                               &nmkAnnealOrderState::ut_static_type());
    return type;
}

nmkAnnealStateReversibleLines* nmkAnnealStateReversibleLines::ut_dynamic_cast(
    nmkAnnealState* state) {
    return cast_to_kind<nmkAnnealStateReversibleLines>(state);
}

const nmkAnnealStateReversibleLines* nmkAnnealStateReversibleLines::ut_dynamic_cast(
    const nmkAnnealState* state) {
    return cast_to_kind<const nmkAnnealStateReversibleLines>(state);
}

int nmkAnnealStateReversibleLines::num_item_states(int) { return 2; }

void nmkAnnealStateReversibleLines::switch_item_to_state(int item, int state) {
    reverse_flags[item] = state;
}

// Deliberate: the two are not put in order. Where `first` is above `second` the span wraps past
// the end of the permutation.
void nmkAnnealStateReversibleLines::get_candidates(int& first, int& second) {
    const int n = items.size();
    first = draw_index(random, n);
    second = draw_index(random, n);
    if (first == second) second = (second + 1) % n;
}

void nmkAnnealStateReversibleLines::update_candidate_distance() {
    const int n = items.size();
    const int b = items[(candidate_1 + 1) % n];
    const int d = items[(candidate_2 + 1) % n];
    const giPoint3& end_a = end_point(items[candidate_1]);
    const giPoint3& end_c = end_point(items[candidate_2]);
    const giPoint3& start_b = start_point(b);
    const giPoint3& start_d = start_point(d);
    const double added = start_b.distance(start_d) + end_a.distance(end_c);
    const double removed = end_c.distance(start_d) + end_a.distance(start_b);
    candidate_distance = (added - removed) + distance_value;
    // Deliberate: rounding must not bring the energy below zero, so that the temperature, which
    // starts at an energy, stays meaningful.
    if (candidate_distance <= 0.0) candidate_distance = 0.0;
}

int nmkAnnealStateReversibleLines::reversible() const { return 1; }

void nmkAnnealStateReversibleLines::reverse(int position) {
    int& flag = reverse_flags[items[position]];
    flag = flag == 0 ? 1 : 0;
}

int nmkAnnealStateReversibleLines::reversed(int position) const {
    return reverse_flags[items[position]];
}

const giPoint3& nmkAnnealStateReversibleLines::start_point(int item) const {
    return (reverse_flags[item] != 0 ? *end_points : *start_points)[item];
}

const giPoint3& nmkAnnealStateReversibleLines::end_point(int item) const {
    return (reverse_flags[item] != 0 ? *start_points : *end_points)[item];
}

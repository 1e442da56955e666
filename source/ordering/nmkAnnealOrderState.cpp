#include <nmktoolbox/ordering/nmkAnnealOrderState.h>

#include "ordering/anneal_draw.h"
#include "ordering/anneal_schedule.h"
#include "ordering/run_time_type.h"
#include "ordering/whole_assignment.h"

#include <cstdlib>
#include <utility>

using nmk_ordering::cast_to_kind;
using nmk_ordering::draw_index;
using nmk_ordering::max_items_not_annealed;

nmkAnnealOrderState::nmkAnnealOrderState(int n) : items(n), item_states(n) {}

const utTypeID& nmkAnnealOrderState::ut_dynamic_type() const { return ut_static_type(); }

int nmkAnnealOrderState::ut_is_kind_of(const utTypeID& type) const {
    return nmk_ordering::is_kind(*this, type);
}

int nmkAnnealOrderState::size() { return items.size(); }

double nmkAnnealOrderState::initialise() {
    const int n = items.size();
    for (int k = 0; k < n; ++k) {
        items[k] = k;
        switch_item_to_state(k, 0);
        item_states[k] = 0;
    }
    if (n <= max_items_not_annealed) return -1.0;
    distance_value = total_distance();
    return distance_value;
}

double nmkAnnealOrderState::randomise() {
    const int n = items.size();
    for (int k = 0; k < n; ++k) std::swap(items[draw_index(random, n)], items[k]);
    distance_value = total_distance();
    return distance_value;
}

double nmkAnnealOrderState::candidate_new_state() {
    get_candidates(candidate_1, candidate_2);
    update_candidate_distance();
    return candidate_distance;
}

// Deliberate: position 0 is never moved, so the first item is the one that randomise left there.
void nmkAnnealOrderState::accept_new_state() {
    for (int lo = candidate_1 + 1, hi = candidate_2; lo < hi; ++lo, --hi) {
        std::swap(items[lo], items[hi]);
    }
    distance_value = candidate_distance;
    candidate_distance = -1.0;
    candidate_1 = candidate_2 = -1;
}

nmkAnnealState& nmkAnnealOrderState::operator=(const nmkAnnealState& other) {
    const nmkAnnealOrderState* source = ut_dynamic_cast(&other);
    if (source == nullptr) return *this;
    items.become(utCopy(), source->items);
    item_states.become(utCopy(), source->item_states);
    distance_value = source->distance_value;
    candidate_1 = source->candidate_1;
    candidate_2 = source->candidate_2;
    candidate_distance = source->candidate_distance;
    // Deliberate: the generator is not copied, so the best-so-far state and the working state keep
    // their own sequences.
    return *this;
}

nmkAnnealOrderState& nmkAnnealOrderState::operator=(const nmkAnnealOrderState& other) {
    return nmk_ordering::assign_whole(*this, other);
}

nmkAnnealOrderState::~nmkAnnealOrderState() = default;

double nmkAnnealOrderState::length() { return total_distance(); }

double nmkAnnealOrderState::distance(int, int) { return 0.0; }

double nmkAnnealOrderState::total_distance() {
    const int n = items.size();
    double total = 0.0;
    for (int k = 1; k < n; ++k) total += distance(items[k - 1], items[k]);
    return total;
}

int nmkAnnealOrderState::num_items() const { return items.size(); }

void nmkAnnealOrderState::get_items(intcoFixedArr& out) const { out.become(utCopy(), items); }

void nmkAnnealOrderState::get_item_states(intcoFixedArr& out) const {
    out.become(utCopy(), item_states);
}

const utTypeID& nmkAnnealOrderState::ut_static_type() {
    static const utTypeID type("nmkAnnealOrderState", &nmkAnnealState::ut_static_type());
    return type;
}

nmkAnnealOrderState* nmkAnnealOrderState::ut_dynamic_cast(nmkAnnealState* state) {
    return cast_to_kind<nmkAnnealOrderState>(state);
}

const nmkAnnealOrderState* nmkAnnealOrderState::ut_dynamic_cast(const nmkAnnealState* state) {
    return cast_to_kind<const nmkAnnealOrderState>(state);
}

int nmkAnnealOrderState::num_item_states(int) { return 1; }

void nmkAnnealOrderState::switch_item_to_state(int, int) {}

// The modulus of the second draw keeps the loop from carrying `second` past n - 1.
void nmkAnnealOrderState::get_candidates(int& first, int& second) {
    const int n = items.size();
    first = draw_index(random, n);
    second = draw_index(random, n - max_items_not_annealed);
    while (std::abs(first - second) < 2) ++second;
    if (first > second) std::swap(first, second);
}

void nmkAnnealOrderState::update_candidate_distance() {
    const int n = items.size();
    const int a = items[candidate_1];
    const int b = items[(candidate_1 + 1) % n];
    const int c = items[candidate_2];
    if (candidate_2 == n - 1) {
        // The tail of the open path is reversed: only the edge into it changes.
        candidate_distance = (distance(a, c) - distance(a, b)) + distance_value;
        return;
    }
    const int d = items[(candidate_2 + 1) % n];
    const double added = distance(b, d) + distance(a, c);
    const double removed = distance(c, d) + distance(a, b);
    candidate_distance = (added - removed) + distance_value;
}

int nmkAnnealOrderState::normalise_index(int index) const {
    const int n = items.size();
    return (n + index) % n;
}

int nmkAnnealOrderState::verify_result() {
    const int n = items.size();
    for (int item = 0; item < n; ++item) {
        bool is_found = false;
        for (int k = 0; k < n && !is_found; ++k) is_found = items[k] == item;
        if (!is_found) return 0;
    }
    return 1;
}

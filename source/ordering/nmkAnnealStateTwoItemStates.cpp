#include <nmktoolbox/ordering/nmkAnnealStateTwoItemStates.h>

#include "ordering/anneal_block_exchange.h"
#include "ordering/anneal_draw.h"
#include "ordering/run_time_type.h"
#include "ordering/whole_assignment.h"

#include <utility>

using nmk_ordering::cast_to_kind;
using nmk_ordering::draw_index;

namespace {

// The share of moves that flip one toolpath.
constexpr double share_of_flips = 0.25;

}  // namespace

nmkAnnealStateTwoItemStates::nmkAnnealStateTwoItemStates(
    const nmkAnnealItemTPcoPageArrPrfINTERNALcoPrfcoPageArr& toolpaths, int is_closed)
    : nmkAnnealOrderState(toolpaths.size()), paths(utCopy(), toolpaths), closed(is_closed) {
    nmkAnnealStateTwoItemStates::initialise();
}

const utTypeID& nmkAnnealStateTwoItemStates::ut_dynamic_type() const { return ut_static_type(); }

int nmkAnnealStateTwoItemStates::ut_is_kind_of(const utTypeID& type) const {
    return nmk_ordering::is_kind(*this, type);
}

// Deliberate: two items are annealed, though other states need four.
double nmkAnnealStateTwoItemStates::initialise() {
    invalidate_candidate();
    const int n = items.size();
    for (int k = 0; k < n; ++k) {
        items[k] = k;
        item_states[k] = 0;
    }
    if (n <= 1) return -1.0;
    distance_value = total_distance();
    return distance_value;
}

double nmkAnnealStateTwoItemStates::randomise() {
    const int n = items.size();
    for (int k = 0; k < n; ++k) {
        const int r = draw_index(random, n);
        flip_item_state(r);
        std::swap(items[r], items[k]);
    }
    distance_value = total_distance();
    return distance_value;
}

double nmkAnnealStateTwoItemStates::candidate_new_state() {
    is_flip = nmk_ordering::draw_uniform(random) < share_of_flips ? 1 : 0;
    return is_flip != 0 ? candidate_flip_state() : candidate_swap_state();
}

void nmkAnnealStateTwoItemStates::accept_new_state() {
    if (!has_valid_candidate()) return;
    if (is_flip != 0) {
        flip_item_state(items[flip_position]);
    } else {
        nmk_ordering::exchange_blocks(items, {candidate_1, candidate_2, swap_length});
    }
    distance_value = candidate_distance;
    invalidate_candidate();
}

nmkAnnealState& nmkAnnealStateTwoItemStates::operator=(const nmkAnnealState& other) {
    const nmkAnnealStateTwoItemStates* source = ut_dynamic_cast(&other);
    if (source == nullptr) return *this;
    if (source != this) paths.become(utCopy(), source->paths);
    is_flip = source->is_flip;
    closed = source->closed;
    flip_position = source->flip_position;
    // Deliberate: the block length is not copied.
    nmkAnnealOrderState::operator=(other);
    return *this;
}

nmkAnnealStateTwoItemStates& nmkAnnealStateTwoItemStates::operator=(
    const nmkAnnealStateTwoItemStates& other) {
    return nmk_ordering::assign_whole(*this, other);
}

nmkAnnealStateTwoItemStates::~nmkAnnealStateTwoItemStates() = default;

double nmkAnnealStateTwoItemStates::distance(int item_a, int item_b) {
    const auto& toolpaths = std::as_const(paths);
    const giPoint3 from = toolpaths[item_a]->end_point(item_states[item_a]);
    return from.distance(toolpaths[item_b]->start_point(item_states[item_b]));
}

double nmkAnnealStateTwoItemStates::total_distance() {
    const double open = nmkAnnealOrderState::total_distance();
    const int n = items.size();
    return closed != 0 && n > 0 ? open + distance(items[n - 1], items[0]) : open;
}

const utTypeID& nmkAnnealStateTwoItemStates::ut_static_type() {
    static const utTypeID type("nmkAnnealStateTwoItemStates",
                               &nmkAnnealOrderState::ut_static_type());
    return type;
}

nmkAnnealStateTwoItemStates* nmkAnnealStateTwoItemStates::ut_dynamic_cast(nmkAnnealState* state) {
    return cast_to_kind<nmkAnnealStateTwoItemStates>(state);
}

const nmkAnnealStateTwoItemStates* nmkAnnealStateTwoItemStates::ut_dynamic_cast(
    const nmkAnnealState* state) {
    return cast_to_kind<const nmkAnnealStateTwoItemStates>(state);
}

int nmkAnnealStateTwoItemStates::num_item_states(int) { return 2; }

void nmkAnnealStateTwoItemStates::get_swap_candidate() {
    const int n = items.size();
    candidate_1 = draw_index(random, n);
    candidate_2 = draw_index(random, n);
    if (candidate_1 == candidate_2) candidate_2 = (candidate_2 + 1) % n;
    if (candidate_2 < candidate_1) std::swap(candidate_1, candidate_2);
    swap_length = draw_index(random, nmk_ordering::longest_block(candidate_1, candidate_2, n)) + 1;
}

void nmkAnnealStateTwoItemStates::get_flip_candidate() {
    flip_position = draw_index(random, items.size());
}

double nmkAnnealStateTwoItemStates::candidate_swap_state() {
    get_swap_candidate();
    update_distance_swap_items();
    return candidate_distance;
}

double nmkAnnealStateTwoItemStates::candidate_flip_state() {
    get_flip_candidate();
    update_distance_flip_item_states();
    return candidate_distance;
}

void nmkAnnealStateTwoItemStates::update_distance_swap_items() {
    candidate_distance = nmk_ordering::length_after_exchange(
        items, {candidate_1, candidate_2, swap_length}, distance_value, closed != 0,
        [this](int a, int b) { return distance(a, b); });
}

void nmkAnnealStateTwoItemStates::update_distance_flip_item_states() {
    const int item = items[flip_position];
    const int state = item_states[item];
    const double before = distance_around(flip_position);
    flip_item_state(item);
    const double after = distance_around(flip_position);
    item_states[item] = state;
    candidate_distance = (after + distance_value) - before;
}

void nmkAnnealStateTwoItemStates::flip_item_state(int item) {
    item_states[item] = item_states[item] == 1 ? 0 : 1;
}

bool nmkAnnealStateTwoItemStates::has_valid_candidate() const {
    return is_flip != 0 ? has_valid_flip_candidate() : has_valid_swap_candidate();
}

bool nmkAnnealStateTwoItemStates::has_valid_swap_candidate() const {
    const int n = items.size();
    return swap_length >= 0 &&
           swap_length <= nmk_ordering::longest_block(candidate_1, candidate_2, n) &&
           candidate_1 >= 0 && candidate_2 < n && candidate_1 < candidate_2;
}

bool nmkAnnealStateTwoItemStates::has_valid_flip_candidate() const {
    return flip_position >= 0 && flip_position < items.size();
}

void nmkAnnealStateTwoItemStates::invalidate_candidate() {
    flip_position = swap_length = candidate_1 = candidate_2 = -1;
}

// The length of the edges to and from `position`; an open path has only one at either end.
double nmkAnnealStateTwoItemStates::distance_around(int position) {
    const int n = items.size();
    int prev = position - 1;
    int next = position + 1;
    if (closed != 0) {
        if (prev < 0) prev = n - 1;
        if (next > n - 1) next = 0;
    }
    double total = 0.0;
    if (prev >= 0) total += distance(items[prev], items[position]);
    if (next < n) total += distance(items[position], items[next]);
    return total;
}

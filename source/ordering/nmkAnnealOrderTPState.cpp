#include <nmktoolbox/ordering/nmkAnnealOrderTPState.h>

#include <geometry/giAngle.h>
#include <geometry/giPoint2.h>

#include "ordering/anneal_draw.h"
#include "ordering/run_time_type.h"
#include "ordering/whole_assignment.h"

#include <cmath>
#include <cstddef>

using nmk_ordering::cast_to_kind;
using nmk_ordering::draw_index;
using nmk_ordering::draw_uniform;

namespace {

constexpr double right_angle = 1.5707963267948966;  // up to it a change of axis is free
constexpr double full_turn = 6.283185307179586;
constexpr double cost_of_a_radian = 10.0;
constexpr double extra_cost_of_climbing = 2.0;

}  // namespace

nmkAnnealOrderTPState::nmkAnnealOrderTPState(
    const std::vector<std::shared_ptr<nmkAnnealItemOrientedTP>>& toolpaths)
    : nmkAnnealOrderState(static_cast<int>(toolpaths.size())), paths(toolpaths) {}

const utTypeID& nmkAnnealOrderTPState::ut_dynamic_type() const { return ut_static_type(); }

int nmkAnnealOrderTPState::ut_is_kind_of(const utTypeID& type) const {
    return nmk_ordering::is_kind(*this, type);
}

double nmkAnnealOrderTPState::randomise() {
    const int n = items.size();
    std::vector<int> heads = first_of_each_run();
    for (int k = 0; k < n; ++k) {
        const int m = static_cast<int>(heads.size());
        // Deliberate: the last head is not drawn until it is the only one left, so that the last
        // run always comes last.
        const int index = m == 1 ? 0 : draw_index(random, m - 1);
        int& head = heads[static_cast<std::size_t>(index)];
        items[k] = head;
        if (m == 1 && head == n - 1) break;
        if (path(head + 1).orientation_id() == path(head).orientation_id()) {
            ++head;
        } else {
            heads.erase(heads.begin() + index);
        }
    }
    distance_value = total_distance();
    return distance_value;
}

void nmkAnnealOrderTPState::accept_new_state() {
    if (candidate_1 < 0 || candidate_2 < 0) return;  // no move was ever proposed
    const int held = items[candidate_1];
    for (int pos = candidate_1; pos != candidate_2; pos += move_direction) {
        items[pos] = items[pos + move_direction];
    }
    items[candidate_2] = held;
    distance_value = candidate_distance;
}

nmkAnnealOrderTPState& nmkAnnealOrderTPState::operator=(const nmkAnnealState& other) {
    const nmkAnnealOrderTPState* source = ut_dynamic_cast(&other);
    if (source == nullptr || source == this) return *this;
    paths = source->paths;
    move_offset = source->move_offset;
    move_direction = source->move_direction;
    nmkAnnealOrderState::operator=(other);
    return *this;
}

nmkAnnealOrderTPState& nmkAnnealOrderTPState::operator=(const nmkAnnealOrderTPState& other) {
    return nmk_ordering::assign_whole(*this, other);
}

nmkAnnealOrderTPState::~nmkAnnealOrderTPState() = default;

double nmkAnnealOrderTPState::distance(int item_a, int item_b) {
    const nmkAnnealItemOrientedTP& a = path(item_a);
    const nmkAnnealItemOrientedTP& b = path(item_b);
    const giPoint3 end_a = a.end_point(item_states[item_a]);
    const giPoint3 start_b = b.start_point(item_states[item_b]);
    const giPoint3 end_b = b.end_point(item_states[item_b]);
    // Deliberate: the plan distance is measured to the end of b, not to its start.
    const double plan = giPoint2(end_a.x, end_a.y).distance(giPoint2(end_b.x, end_b.y));
    double cost = plan + std::abs(start_b.z - end_b.z);
    if (start_b.z > end_a.z) cost += extra_cost_of_climbing * (start_b.z - end_a.z);
    if (a.orientation_id() != b.orientation_id()) {
        cost += axis_distance(a.orientation_vector(), b.orientation_vector());
    }
    return cost;
}

double nmkAnnealOrderTPState::axis_distance(const giUnitVec3& from, const giUnitVec3& to) {
    const double angle = from.unsigned_angle(to).angle(giRadians);
    // Deliberate: past a right angle the cost falls as the angle grows.
    return angle > right_angle ? (full_turn - angle) * cost_of_a_radian : 0.0;
}

const utTypeID& nmkAnnealOrderTPState::ut_static_type() {
    static const utTypeID type("nmkAnnealOrderTPState", &nmkAnnealOrderState::ut_static_type());
    return type;
}

nmkAnnealOrderTPState* nmkAnnealOrderTPState::ut_dynamic_cast(nmkAnnealState* state) {
    return cast_to_kind<nmkAnnealOrderTPState>(state);
}

const nmkAnnealOrderTPState* nmkAnnealOrderTPState::ut_dynamic_cast(const nmkAnnealState* state) {
    return cast_to_kind<const nmkAnnealOrderTPState>(state);
}

// Deliberate: the last position is never chosen as `first`.
void nmkAnnealOrderTPState::get_candidates(int& first, int& second) {
    const int n = items.size();
    first = draw_index(random, n - 1);
    const int step = draw_index(random, n) + 1;
    int direction = 1;
    if (first != 0) {
        const double r = draw_uniform(random);
        if (r + r - 1.0 < 0.0) direction = -1;
    }
    second = direction * step + first;
    second = make_valid_candidate(first, second, direction);
}

void nmkAnnealOrderTPState::update_candidate_distance() {
    const int i = candidate_1;
    const int j = candidate_2;
    const int last = items.size() - 1;
    candidate_distance = distance_value;
    move_direction = j < i ? -1 : 1;
    move_offset = j - i;
    if (i == j) return;

    const auto edge = [this](int p, int q) { return distance(items[p], items[q]); };
    const bool forwards = move_direction == 1;
    const int k = j + move_direction;
    const bool has_neighbour = k >= 0 && k <= last;
    if (i > 0) candidate_distance -= edge(i - 1, i);
    if (i < last) candidate_distance -= edge(i, i + 1);
    if (has_neighbour) candidate_distance -= forwards ? edge(j, k) : edge(k, j);
    candidate_distance += forwards ? edge(j, i) : edge(i, j);
    if (has_neighbour) candidate_distance += forwards ? edge(i, k) : edge(k, i);
    if (i > 0 && i < last) candidate_distance += edge(i - 1, i + 1);
}

int nmkAnnealOrderTPState::make_valid_candidate(int first, int second, int direction) {
    if (first == second) return second;
    const int n = items.size();
    const nmkAnnealItemOrientedTP& p = path_at(first);
    int last = first;
    for (int pos = first + direction; pos >= 0; pos += direction) {
        if (pos >= n || pos == second + direction) break;
        const nmkAnnealItemOrientedTP& q = path_at(pos);
        if (p.orientation_id() == q.orientation_id()) {
            if (pos < first && p.order_id() > q.order_id()) break;
            if (pos > first && p.order_id() < q.order_id()) break;
        }
        last = pos;
    }
    return last;
}

const nmkAnnealItemOrientedTP& nmkAnnealOrderTPState::path_at(int position) const {
    return path(items[position]);
}

const nmkAnnealItemOrientedTP& nmkAnnealOrderTPState::path(int item) const {
    return *paths.at(static_cast<std::size_t>(item));
}

std::vector<int> nmkAnnealOrderTPState::first_of_each_run() const {
    std::vector<int> heads;
    for (int k = 0; k < items.size(); ++k) {
        if (heads.empty() || path(k).orientation_id() != path(heads.back()).orientation_id()) {
            heads.push_back(k);
        }
    }
    return heads;
}

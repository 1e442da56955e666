#include "travel_network.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace nmk_ordering {

namespace {

using Kind = nmkTravelEnd::Kind;

TravelPoint travel_point(const giPoint3& p) { return {p.x, p.y, p.z}; }

TravelPoint divided(const TravelPoint& p, double unit) {
    return {p.x / unit, p.y / unit, p.z / unit};
}

nmkTravelAxes divided(const nmkTravelAxes& axes, double unit) {
    return {axes.x / unit, axes.y / unit, axes.z / unit};
}

double largest_of(const std::vector<nmkTravelKeepOut>& keep_outs) {
    double largest = 0.0;
    for (const nmkTravelKeepOut& keep_out : keep_outs) {
        for (const std::vector<giPoint2>& part : keep_out.parts) {
            for (const giPoint2& p : part) {
                largest = std::max({largest, std::fabs(p.x), std::fabs(p.y)});
            }
        }
    }
    return largest;
}

}  // namespace

double unit_of(double largest) {
    int exponent = 0;
    std::frexp(largest, &exponent);
    return largest > 0.0 ? std::ldexp(1.0, std::min(exponent, 1023)) : 1.0;
}

// Places may be far larger than the keep-outs; no product of theirs may overflow.
double unit_of_keep_outs(const std::vector<nmkTravelKeepOut>& keep_outs) {
    constexpr double least_unit = 0x1p-150;
    return std::max(unit_of(largest_of(keep_outs)), least_unit);
}

TravelMetric scaled_metric(const nmkTravelProblem& problem, double unit) {
    return {problem.measure, {divided(problem.speed, unit), divided(problem.acceleration, unit)}};
}

TravelNetwork::TravelNetwork(const nmkTravelProblem& problem) : m_problem(problem) {
    add_items();
    add_ends();
    m_fixed.assign(at(size()), {-1, -1});
    const auto is_one_way = [](const nmkTravelItem& item) {
        return item.kind == nmkTravelItemKind::one_way_line;
    };
    const auto keeps_order = [](const nmkTravelGroup& group) {
        return group.keeps_order && group.items.size() > 1;
    };
    if (std::any_of(problem.items.begin(), problem.items.end(), is_one_way) ||
        std::any_of(problem.groups.begin(), problem.groups.end(), keeps_order)) {
        m_ahead.assign(at(size()), -1);
    }
    for (int item = 0; item < items(); ++item) {
        if (!is_line(item)) continue;
        fix(first_node(item), first_node(item) + 1);
        if (!may_reverse(item)) m_ahead[at(first_node(item))] = first_node(item) + 1;
    }
    if (m_start >= 0 && m_start != m_end) {
        fix(m_start, m_end);
        if (!m_ahead.empty()) m_ahead[at(m_end)] = m_start;
    }
    set_groups();
    scale();
}

void TravelNetwork::add_items() {
    m_points.reserve(m_problem.items.size());
    m_item_of.reserve(m_problem.items.size());
    m_first_nodes.reserve(m_problem.items.size());
    for (int item = 0; item < items(); ++item) {
        m_first_nodes.push_back(point_count());
        m_points.push_back(travel_point(m_problem.items[at(item)].start));
        m_item_of.push_back(item);
        if (!is_line(item)) continue;
        m_points.push_back(travel_point(m_problem.items[at(item)].end));
        m_item_of.push_back(item);
    }
    m_item_nodes = point_count();
}

// Places come before terminals; only then are the numbers of the terminals known.
void TravelNetwork::add_ends() {
    const nmkTravelEnd& start = m_problem.start;
    const nmkTravelEnd& end = m_problem.end;
    if (start.kind == Kind::place) m_start = add_end(start);
    if (is_closed()) {
        m_end = m_start;
        return;
    }
    if (end.kind == Kind::place) m_end = add_end(end);
    if (m_start < 0) m_start = add_end(start);
    if (m_end >= 0) return;
    const bool both_are_free = start.kind == Kind::free && end.kind == Kind::free;
    m_end = both_are_free ? m_start : add_end(end);
}

int TravelNetwork::add_end(const nmkTravelEnd& end) {
    if (end.kind == Kind::place) {
        m_points.push_back(travel_point(end.place));
        return point_count() - 1;
    }
    TravelTerminal terminal;
    if (end.kind == Kind::item) {
        terminal.item_nodes = {entry_node(end.item, false), exit_node(end.item, false)};
    }
    m_terminals.push_back(terminal);
    return size() - 1;
}

void TravelNetwork::fix(int a, int b) {
    for (const auto& [from, to] : {std::pair(a, b), std::pair(b, a)}) {
        m_fixed[at(from)][m_fixed[at(from)][0] < 0 ? 0 : 1] = to;
    }
}

void TravelNetwork::chain_groups(const TravelSequence& sequence) {
    for (const nmkTravelGroup& group : m_problem.groups) {
        for (std::size_t k = 1; k < group.items.size() && group.keeps_order; ++k) {
            const int before = group.items[k - 1];
            const int after = group.items[k];
            const int from = exit_node(before, sequence.is_reversed[at(before)]);
            const int to = entry_node(after, sequence.is_reversed[at(after)]);
            fix(from, to);
            m_ahead[at(from)] = to;
        }
    }
}

std::vector<int> TravelNetwork::group_of_items() const {
    std::vector<int> groups(at(items()), -1);
    for (std::size_t g = 0; g < m_problem.groups.size(); ++g) {
        for (const int item : m_problem.groups[g].items) groups[at(item)] = static_cast<int>(g);
    }
    return groups;
}

// Whatever is in no group is in one of its own.
void TravelNetwork::set_groups() {
    const auto changes_order = [](const nmkTravelGroup& group) {
        return !group.keeps_order && group.items.size() > 1;
    };
    if (std::none_of(m_problem.groups.begin(), m_problem.groups.end(), changes_order)) return;
    const std::vector<int> of_items = group_of_items();
    int next = static_cast<int>(m_problem.groups.size());
    for (int node = 0; node < point_count(); ++node) {
        const int item = node < m_item_nodes ? m_item_of[at(node)] : -1;
        const bool is_in_group = item >= 0 && of_items[at(item)] >= 0;
        const bool is_second = item >= 0 && node > first_node(item);
        if (!is_in_group && !is_second) ++next;
        m_groups.push_back(is_in_group ? of_items[at(item)] : next);
    }
}

void TravelNetwork::scale() {
    double largest = largest_of(m_problem.keep_outs);
    for (const TravelPoint& p : m_points) {
        largest = std::max({largest, std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)});
    }
    m_unit = unit_of(largest);
    TravelPoint low = m_points.empty() ? TravelPoint() : divided(m_points.front(), m_unit);
    TravelPoint high = low;
    for (TravelPoint& p : m_points) {
        p = divided(p, m_unit);
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    m_is_plane = low.z == high.z;
    m_metric = scaled_metric(m_problem, m_unit);
    TravelObstacles obstacles(m_problem.keep_outs, m_unit);
    if (!obstacles.polygons().empty()) {
        m_legs = std::make_unique<TravelLegs>(std::move(obstacles), m_metric, m_points);
    }
    const double largest_leg =
        m_legs != nullptr ? m_legs->upper_bound(low, high) : m_metric(low, high);
    m_penalty = largest_leg > 0.0 ? largest_leg * penalty_in_largest_costs : 1.0;
}

double TravelNetwork::length(const TravelSequence& sequence) const {
    if (sequence.order.empty()) return m_start < 0 ? 0.0 : leg(m_start, m_end);
    double sum = 0.0;
    int from = m_start;
    for (const int item : sequence.order) {
        const int to = entry_node(item, sequence.is_reversed[at(item)]);
        if (from >= 0) sum += leg(from, to);
        from = exit_node(item, sequence.is_reversed[at(item)]);
    }
    const int first = sequence.order.front();
    return sum + leg(from, m_end >= 0 ? m_end : entry_node(first, sequence.is_reversed[at(first)]));
}

std::vector<int> TravelNetwork::ring(const TravelSequence& sequence) const {
    std::vector<int> ring;
    ring.reserve(at(size()));
    if (m_start >= 0) ring.push_back(m_start);
    for (const int item : sequence.order) {
        const bool is_reversed = sequence.is_reversed[at(item)];
        ring.push_back(entry_node(item, is_reversed));
        if (is_line(item)) ring.push_back(exit_node(item, is_reversed));
    }
    if (m_end >= 0 && m_end != m_start) ring.push_back(m_end);
    return ring;
}

void TravelNetwork::turn(std::vector<int>& ring) const {
    if (m_ahead.empty()) return;
    for (std::size_t place = 0; place < ring.size(); ++place) {
        const int follower = m_ahead[at(ring[place])];
        if (follower < 0) continue;
        if (ring[(place + 1) % ring.size()] != follower) std::reverse(ring.begin(), ring.end());
        return;
    }
}

// The nodes of the items in the order of travel, no line cut in two.
std::vector<int> TravelNetwork::from_start(const std::vector<int>& ring) const {
    std::vector<int> nodes(ring);
    turn(nodes);
    if (m_start < 0) {
        const bool is_cut =
            nodes.size() > 1 && m_item_of[at(nodes.front())] == m_item_of[at(nodes.back())];
        if (is_cut) std::rotate(nodes.begin(), nodes.begin() + 1, nodes.end());
        return nodes;
    }
    std::rotate(nodes.begin(), std::find(nodes.begin(), nodes.end(), m_start), nodes.end());
    nodes.erase(nodes.begin());
    if (m_end == m_start || nodes.empty()) return nodes;
    if (nodes.front() == m_end) std::reverse(nodes.begin(), nodes.end());
    nodes.pop_back();
    return nodes;
}

TravelSequence TravelNetwork::sequence(const std::vector<int>& ring) const {
    TravelSequence sequence;
    sequence.order.reserve(at(items()));
    sequence.is_reversed.assign(at(items()), false);
    const std::vector<int> nodes = from_start(ring);
    for (std::size_t place = 0; place < nodes.size(); ++place) {
        const int item = m_item_of[at(nodes[place])];
        sequence.order.push_back(item);
        sequence.is_reversed[at(item)] = nodes[place] != first_node(item);
        if (is_line(item)) ++place;
    }
    begin_at_start(sequence);
    return sequence;
}

void TravelNetwork::begin_at_start(TravelSequence& sequence) const {
    if (!is_closed() || m_start >= 0 || sequence.order.empty()) return;
    std::vector<int>& order = sequence.order;
    const bool is_given = m_problem.start.kind == Kind::item;
    const auto place = std::find(order.begin(), order.end(), is_given ? m_problem.start.item : 0);
    std::rotate(order.begin(), place, order.end());
    if (is_given || m_problem.groups.empty()) return;
    const std::vector<int> groups = group_of_items();
    const int group = groups[at(order.front())];
    auto first = order.end();
    while (group >= 0 && first != order.begin() && groups[at(*(first - 1))] == group) --first;
    if (first != order.begin()) std::rotate(order.begin(), first, order.end());
}

}  // namespace nmk_ordering

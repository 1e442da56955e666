// plain_travel.h: travel problems made of numbers, and their shortest orders by trying all of them.
#pragma once

#include <nmktoolbox/ordering/nmkTravelProblem.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace plain {

inline double axis_time(double way, double speed, double acceleration) {
    if (way < speed * speed / acceleration) return 2.0 * std::sqrt(way / acceleration);
    return way / speed + speed / acceleration;
}

inline double travel_leg(const nmkTravelProblem& problem, const giPoint3& a, const giPoint3& b) {
    const double dx = std::fabs(a.x - b.x);
    const double dy = std::fabs(a.y - b.y);
    const double dz = std::fabs(a.z - b.z);
    switch (problem.measure) {
        case nmkTravelMeasure::chebyshev:
            return std::max({dx, dy, dz});
        case nmkTravelMeasure::time:
            return std::max({axis_time(dx, problem.speed.x, problem.acceleration.x),
                             axis_time(dy, problem.speed.y, problem.acceleration.y),
                             axis_time(dz, problem.speed.z, problem.acceleration.z)});
        case nmkTravelMeasure::length:
            break;
    }
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

inline const giPoint3& travel_entry(const nmkTravelItem& item, bool is_reversed) {
    return is_reversed ? item.end : item.start;
}
inline const giPoint3& travel_exit(const nmkTravelItem& item, bool is_reversed) {
    if (item.kind == nmkTravelItemKind::point) return item.start;
    return is_reversed ? item.start : item.end;
}

/// The length of the leg between two places.
using TravelLeg = std::function<double(const giPoint3&, const giPoint3&)>;

inline TravelLeg straight_legs(const nmkTravelProblem& problem) {
    return [&problem](const giPoint3& a, const giPoint3& b) { return travel_leg(problem, a, b); };
}

/// The travel in a given order, with the legs at both ends.
inline double travel_length(const nmkTravelProblem& problem, const std::vector<int>& order,
                            const std::vector<bool>& is_reversed, const TravelLeg& leg) {
    using Kind = nmkTravelEnd::Kind;
    const bool has_start = problem.start.kind == Kind::place;
    std::vector<giPoint3> ways;  // from, to, from, to ...
    if (has_start) ways.push_back(problem.start.place);
    for (const int number : order) {
        const auto item = static_cast<std::size_t>(number);
        const bool is_first = ways.empty();
        const giPoint3& entry = travel_entry(problem.items[item], is_reversed[item]);
        if (!is_first) ways.push_back(entry);
        ways.push_back(travel_exit(problem.items[item], is_reversed[item]));
    }
    if (problem.end.kind == Kind::place) {
        ways.push_back(problem.end.place);
    } else if (problem.end.kind == Kind::at_start && has_start) {
        ways.push_back(problem.start.place);
    } else if (problem.end.kind == Kind::at_start && !order.empty()) {
        const auto first = static_cast<std::size_t>(order.front());
        ways.push_back(travel_entry(problem.items[first], is_reversed[first]));
    }
    double length = 0.0;
    for (std::size_t i = 0; i + 1 < ways.size(); i += 2) {
        length += leg(ways[i], ways[i + 1]);
    }
    return length;
}
inline double travel_length(const nmkTravelProblem& problem, const std::vector<int>& order,
                            const std::vector<bool>& is_reversed) {
    return travel_length(problem, order, is_reversed, straight_legs(problem));
}

/// Whether the items of each group follow each other. In a closed travel from item to item the last
/// is followed by the first.
inline bool keeps_groups(const nmkTravelProblem& problem, const std::vector<int>& order) {
    using Kind = nmkTravelEnd::Kind;
    const bool is_ring = problem.end.kind == Kind::at_start && problem.start.kind != Kind::place;
    const std::size_t n = order.size();
    for (const nmkTravelGroup& group : problem.groups) {
        const auto is_in = [&](std::size_t place) {
            return std::find(group.items.begin(), group.items.end(), order[place]) !=
                   group.items.end();
        };
        std::size_t begin = 0;  // the first of the group, or where it begins on the ring
        while (begin < n && !is_in(begin)) ++begin;
        if (begin == 0 && is_ring && group.items.size() < n) {
            while (is_in((begin + n - 1) % n)) begin = (begin + n - 1) % n;
        }
        for (std::size_t k = 0; k < group.items.size(); ++k) {
            if (!is_ring && begin + k >= n) return false;
            if (!is_in((begin + k) % n)) return false;
            if (group.keeps_order && order[(begin + k) % n] != group.items[k]) return false;
        }
    }
    return true;
}

/// Whether an order is one that the problem allows.
inline bool is_allowed(const nmkTravelProblem& problem, const std::vector<int>& order,
                       const std::vector<bool>& is_reversed) {
    using Kind = nmkTravelEnd::Kind;
    std::vector<int> sorted = order;
    std::sort(sorted.begin(), sorted.end());
    for (std::size_t i = 0; i < problem.items.size(); ++i) {
        if (i >= sorted.size() || sorted[i] != static_cast<int>(i)) return false;
        if (is_reversed[i] && problem.items[i].kind != nmkTravelItemKind::line) return false;
    }
    if (sorted.size() != problem.items.size()) return false;
    if (problem.start.kind == Kind::item && order.front() != problem.start.item) return false;
    if (problem.end.kind == Kind::item && order.back() != problem.end.item) return false;
    return keeps_groups(problem, order);
}

/// The length of the shortest order, by trying all orders and directions; one that is longer than
/// the best so far before it is complete is given up.
class ShortestTravel {
  public:
    explicit ShortestTravel(const nmkTravelProblem& problem)
        : ShortestTravel(problem, straight_legs(problem)) {}
    ShortestTravel(const nmkTravelProblem& problem, TravelLeg leg)
        : m_problem(problem),
          m_leg(std::move(leg)),
          m_is_reversed(problem.items.size(), false),
          m_is_used(problem.items.size(), false) {
        extend(0.0);
    }
    double length() const { return m_least; }

  private:
    void extend(double length) {
        if (length > m_least) return;
        if (m_order.size() == m_problem.items.size()) {
            if (!is_allowed(m_problem, m_order, m_is_reversed)) return;
            m_least = std::min(m_least, travel_length(m_problem, m_order, m_is_reversed, m_leg));
            return;
        }
        for (std::size_t item = 0; item < m_problem.items.size(); ++item) {
            if (m_is_used[item]) continue;
            const bool is_line = m_problem.items[item].kind == nmkTravelItemKind::line;
            for (int turn = 0; turn < (is_line ? 2 : 1); ++turn) visit(item, turn != 0, length);
        }
    }
    void visit(std::size_t item, bool is_reversed, double length) {
        const giPoint3& entry = travel_entry(m_problem.items[item], is_reversed);
        if (!m_order.empty()) {
            const auto last = static_cast<std::size_t>(m_order.back());
            const giPoint3& exit = travel_exit(m_problem.items[last], m_is_reversed[last]);
            length += m_leg(exit, entry);
        } else if (m_problem.start.kind == nmkTravelEnd::Kind::place) {
            length += m_leg(m_problem.start.place, entry);
        }
        m_is_used[item] = true;
        m_is_reversed[item] = is_reversed;
        m_order.push_back(static_cast<int>(item));
        extend(length);
        m_order.pop_back();
        m_is_reversed[item] = false;
        m_is_used[item] = false;
    }

    const nmkTravelProblem& m_problem;
    TravelLeg m_leg;
    std::vector<int> m_order;
    std::vector<bool> m_is_reversed;
    std::vector<bool> m_is_used;
    double m_least = std::numeric_limits<double>::infinity();
};

/// Draws whole numbers, the same everywhere.
class TravelDraw {
  public:
    explicit TravelDraw(std::uint32_t seed) : m_words(seed) {}
    int below(int limit) { return static_cast<int>(m_words() % static_cast<std::uint32_t>(limit)); }
    giPoint3 point(int side, bool has_z) {
        const double x = below(side);
        const double y = below(side);
        return {x, y, has_z ? static_cast<double>(below(side)) : 0.0};
    }

  private:
    std::mt19937 m_words;
};

/// What a drawn problem may have.
struct TravelTraits {
    bool has_lines = false;
    bool has_one_way_lines = false;
    bool has_groups = false;
    bool has_z = false;
    int side = 1000;  // coordinates are whole numbers below it
};

inline void draw_ends(nmkTravelProblem& problem, TravelDraw& draw, bool has_z) {
    const int n = static_cast<int>(problem.items.size());
    const int kind = draw.below(3);
    if (kind == 1) problem.start = nmkTravelEnd::at_place(draw.point(1000, has_z));
    if (kind == 2) problem.start = nmkTravelEnd::at_item(draw.below(n));
    const int end_kind = draw.below(4);
    if (end_kind == 1) problem.end = nmkTravelEnd::at_place(draw.point(1000, has_z));
    if (end_kind == 2) problem.end = nmkTravelEnd::at_item(draw.below(n));
    if (end_kind == 3) problem.end = nmkTravelEnd::at_start();
    if (n > 1 && problem.start.item == problem.end.item)
        problem.end.item = (problem.end.item + 1) % n;
    if (problem.end.kind != nmkTravelEnd::Kind::item) problem.end.item = -1;
}

// Each item goes to one of a few groups or to none; ends that a group does not allow are freed.
inline void draw_groups(nmkTravelProblem& problem, TravelDraw& draw) {
    problem.groups.resize(2);
    for (nmkTravelGroup& group : problem.groups) group.keeps_order = draw.below(2) != 0;
    for (int item = 0; item < static_cast<int>(problem.items.size()); ++item) {
        const int group = draw.below(4);
        if (group < 2) problem.groups[static_cast<std::size_t>(group)].items.push_back(item);
    }
    for (nmkTravelGroup& group : problem.groups) {
        for (nmkTravelEnd* end : {&problem.start, &problem.end}) {
            const bool is_in = end->kind == nmkTravelEnd::Kind::item &&
                               std::count(group.items.begin(), group.items.end(), end->item) != 0;
            if (is_in && (group.keeps_order || end == &problem.end)) *end = nmkTravelEnd();
        }
    }
}

inline nmkTravelProblem drawn_travel(int n, const TravelTraits& traits, std::uint32_t seed) {
    TravelDraw draw(seed);
    nmkTravelProblem problem;
    for (int i = 0; i < n; ++i) {
        const giPoint3 start = draw.point(traits.side, traits.has_z);
        const giPoint3 end = draw.point(traits.side, traits.has_z);
        const int kind = draw.below(3);
        if (traits.has_lines && kind == 1) {
            problem.items.push_back(nmkTravelItem::line(start, end));
        } else if (traits.has_one_way_lines && kind == 2) {
            problem.items.push_back(nmkTravelItem::one_way_line(start, end));
        } else {
            problem.items.push_back(nmkTravelItem::point(start));
        }
    }
    draw_ends(problem, draw, traits.has_z);
    if (traits.has_groups) draw_groups(problem, draw);
    problem.measure = static_cast<nmkTravelMeasure>(draw.below(3));
    problem.speed = {100.0, 80.0, 20.0};
    problem.acceleration = {50.0, 100.0, 30.0};
    return problem;
}

}  // namespace plain

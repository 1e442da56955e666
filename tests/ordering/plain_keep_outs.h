// plain_keep_outs.h: ways around keep-outs whose corners, and places, are whole numbers below
// 10,000: every corner is joined with every other that a line reaches, and Dijkstra's algorithm
// does the rest.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <utility>
#include <vector>

#include "ordering/plain_travel.h"

namespace plain {

__extension__ using Wide = __int128;

/// A place whose coordinates are fractions with one denominator above 0.
struct Fraction2 {
    Wide x, y, denominator;
};

inline Fraction2 fraction(const giPoint2& p) {
    return {static_cast<std::int64_t>(p.x), static_cast<std::int64_t>(p.y), 1};
}

inline int sign(Wide value) { return value > 0 ? 1 : value < 0 ? -1 : 0; }

/// 1 where p is to the left of the way from a to b, both whole numbers.
inline int side_of(const Fraction2& a, const Fraction2& b, const Fraction2& p) {
    return sign((b.x - a.x) * (p.y - a.y * p.denominator) -
                (b.y - a.y) * (p.x - a.x * p.denominator));
}

/// Whether p is inside a polygon and not on its edges.
inline bool is_inside(const std::vector<giPoint2>& corners, const Fraction2& p) {
    bool is_in = false;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Fraction2 a = fraction(corners[i]);
        const Fraction2 b = fraction(corners[(i + 1) % corners.size()]);
        const Wide d = p.denominator;
        const int side = side_of(a, b, p);
        if (side == 0 && std::min(a.x, b.x) * d <= p.x && p.x <= std::max(a.x, b.x) * d &&
            std::min(a.y, b.y) * d <= p.y && p.y <= std::max(a.y, b.y) * d) {
            return false;
        }
        if ((a.y * d <= p.y) != (b.y * d <= p.y) && (side > 0) == (a.y * d <= p.y)) is_in = !is_in;
    }
    return is_in;
}

/// Whether a line has a place inside: cut where it meets the lines of the edges, the middle of each
/// piece decides.
inline bool line_meets(const std::vector<giPoint2>& corners, const giPoint2& from,
                       const giPoint2& to) {
    const Fraction2 a = fraction(from);
    const Fraction2 b = fraction(to);
    using Cut = std::pair<Wide, Wide>;  // numerator and denominator above 0, from 0 to 1
    std::vector<Cut> cuts = {{0, 1}, {1, 1}};
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Fraction2 c = fraction(corners[i]);
        const Fraction2 d = fraction(corners[(i + 1) % corners.size()]);
        Wide across = (b.x - a.x) * (d.y - c.y) - (b.y - a.y) * (d.x - c.x);
        Wide along = (c.x - a.x) * (d.y - c.y) - (c.y - a.y) * (d.x - c.x);
        if (across < 0) {
            across = -across;
            along = -along;
        }
        if (across != 0 && along >= 0 && along <= across) cuts.emplace_back(along, across);
        // Where an edge lies on the line its ends cut it.
        for (const Fraction2& p : {c, d}) {
            if (across != 0 || side_of(a, b, p) != 0) continue;
            const Wide length = (b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y);
            const Wide place = (p.x - a.x) * (b.x - a.x) + (p.y - a.y) * (b.y - a.y);
            if (length > 0 && place >= 0 && place <= length) cuts.emplace_back(place, length);
        }
    }
    std::sort(cuts.begin(), cuts.end(), [](const Cut& one, const Cut& other) {
        return one.first * other.second < other.first * one.second;
    });
    for (std::size_t i = 1; i < cuts.size(); ++i) {
        const auto& [n1, d1] = cuts[i - 1];
        const auto& [n2, d2] = cuts[i];
        const Wide whole = 2 * d1 * d2;
        const Wide part = n1 * d2 + n2 * d1;
        if (is_inside(corners, {a.x * whole + (b.x - a.x) * part, a.y * whole + (b.y - a.y) * part,
                                whole})) {
            return true;
        }
    }
    return false;
}

class PlainWays {
  public:
    explicit PlainWays(const nmkTravelProblem& problem) : m_problem(problem) {
        for (const nmkTravelKeepOut& keep_out : problem.keep_outs) {
            for (const auto& part : keep_out.parts) {
                m_parts.push_back(part);
                for (std::size_t i = 0; i < part.size(); ++i) {
                    m_corners.push_back(part[i]);
                    m_neighbours.push_back(
                        {part[(i + part.size() - 1) % part.size()], part[(i + 1) % part.size()]});
                    m_parts_of.push_back(m_parts.size() - 1);
                }
            }
        }
        for (std::size_t i = 0; i < m_corners.size(); ++i) {
            m_reached.emplace_back();
            for (std::size_t k = 0; k < m_corners.size(); ++k) {
                m_reached[i].push_back(is_bend(m_corners[i], k) && is_bend(m_corners[k], i) &&
                                       is_free(m_corners[i], m_corners[k]));
            }
        }
    }

    bool is_free(const giPoint2& a, const giPoint2& b) const {
        return std::none_of(m_parts.begin(), m_parts.end(),
                            [&](const auto& part) { return line_meets(part, a, b); });
    }
    bool is_blocked(const giPoint3& p) const {
        return std::any_of(m_parts.begin(), m_parts.end(), [&](const auto& part) {
            return is_inside(part, fraction({p.x, p.y}));
        });
    }

    /// Infinite where there is no way.
    double length(const giPoint3& a, const giPoint3& b) {
        const std::array<double, 6> key = {a.x, a.y, a.z, b.x, b.y, b.z};
        const auto found = m_lengths.find(key);
        if (found != m_lengths.end()) return found->second;
        return m_lengths[key] = dijkstra(a, b);
    }

  private:
    // Whether a way from a place may bend at a corner. By length and Chebyshev the shortest way
    // bends like a stretched string of itself; by time it is only looked for among
    // those that do.
    bool is_bend(const giPoint2& from, std::size_t corner) const {
        if (m_problem.measure != nmkTravelMeasure::time) return true;
        const auto& [before, after] = m_neighbours[corner];
        const Fraction2 place = fraction(m_corners[corner]);
        const Fraction2 begin = fraction(from);
        const bool is_tangent =
            side_of(begin, place, fraction(before)) * side_of(begin, place, fraction(after)) >= 0;
        const Fraction2 middle = {fraction(before).x + fraction(after).x,
                                  fraction(before).y + fraction(after).y, 2};
        return is_tangent && is_convex(corner, middle);
    }
    // Of a polygon with the corner, the middle of its neighbours is on the inner side of the corner
    // if it is convex there.
    bool is_convex(std::size_t corner, const Fraction2& middle) const {
        const Fraction2 place = fraction(m_corners[corner]);
        const Wide near = 1000000;
        const Fraction2 beside = {place.x * near + (middle.x - 2 * place.x),
                                  place.y * near + (middle.y - 2 * place.y), near};
        return is_inside(m_parts[m_parts_of[corner]], beside);
    }

    double dijkstra(const giPoint3& a, const giPoint3& b) const {
        const giPoint2 begin(a.x, a.y);
        const giPoint2 end(b.x, b.y);
        if (is_free(begin, end)) return travel_leg(m_problem, a, b);
        const std::size_t count = m_corners.size();
        constexpr double infinite = std::numeric_limits<double>::infinity();
        std::vector<double> least(count, infinite);
        std::vector<std::size_t> before(count, count);
        std::vector<bool> is_done(count, false);
        for (std::size_t i = 0; i < count; ++i) {
            if (is_bend(begin, i) && is_free(begin, m_corners[i]))
                least[i] = cost(begin, m_corners[i]);
        }
        for (;;) {
            std::size_t next = count;
            for (std::size_t i = 0; i < count; ++i) {
                if (!is_done[i] && least[i] < infinite && (next == count || least[i] < least[next]))
                    next = i;
            }
            if (next == count) break;
            is_done[next] = true;
            for (std::size_t i = 0; i < count; ++i) {
                const double length = least[next] + cost(m_corners[next], m_corners[i]);
                if (is_done[i] || !m_reached[next][i] || !(length < least[i])) continue;
                least[i] = length;
                before[i] = next;
            }
        }
        std::size_t last = count;
        double whole = infinite;
        for (std::size_t i = 0; i < count; ++i) {
            if (!is_bend(end, i) || !is_free(m_corners[i], end)) continue;
            const double length = least[i] + cost(m_corners[i], end);
            if (!(length < whole)) continue;
            whole = length;
            last = i;
        }
        return last == count ? infinite : along(a, b, before, last, whole);
    }

    // With z in proportion to the cost in the plane.
    double along(const giPoint3& a, const giPoint3& b, const std::vector<std::size_t>& before,
                 std::size_t last, double whole) const {
        std::vector<giPoint3> places;
        for (std::size_t i = last; i < m_corners.size(); i = before[i]) {
            places.insert(places.begin(), {m_corners[i].x, m_corners[i].y, 0.0});
        }
        places.insert(places.begin(), a);
        places.push_back(b);
        double travelled = 0.0;
        double length = 0.0;
        for (std::size_t i = 1; i < places.size(); ++i) {
            travelled += cost({places[i - 1].x, places[i - 1].y}, {places[i].x, places[i].y});
            if (i + 1 < places.size()) places[i].z = a.z + (b.z - a.z) * travelled / whole;
            length += travel_leg(m_problem, places[i - 1], places[i]);
        }
        return length;
    }

    double cost(const giPoint2& a, const giPoint2& b) const {
        return travel_leg(m_problem, {a.x, a.y, 0.0}, {b.x, b.y, 0.0});
    }

    const nmkTravelProblem& m_problem;
    std::vector<std::vector<giPoint2>> m_parts;
    std::vector<giPoint2> m_corners;
    std::vector<std::pair<giPoint2, giPoint2>> m_neighbours;  // by corner
    std::vector<std::size_t> m_parts_of;                      // likewise
    std::vector<std::vector<bool>> m_reached;
    std::map<std::array<double, 6>, double> m_lengths;
};

/// A simple polygon of whole numbers around a place, not convex as a rule: its corners lie on rays
/// in order of angle. Empty where chance makes none.
inline std::vector<giPoint2> drawn_polygon(TravelDraw& draw, int side) {
    static constexpr std::array<std::array<int, 2>, 8> rays = {
        {{5, 1}, {3, 4}, {0, 1}, {-4, 3}, {-5, -1}, {-2, -5}, {0, -4}, {3, -3}}};
    const int x = draw.below(side);
    const int y = draw.below(side);
    std::vector<giPoint2> corners;
    for (const auto& ray : rays) {
        const int reach = draw.below(side / 16 + 2);
        if (reach > 0) corners.emplace_back(x + ray[0] * reach, y + ray[1] * reach);
    }
    // Fewer than a half turn between neighbours, or the centre is outside and edges may cross.
    return corners.size() < 6 ? std::vector<giPoint2>() : corners;
}

/// A problem with a few keep-outs, none of which has a place inside.
inline nmkTravelProblem drawn_travel_beside(int n, const TravelTraits& traits, int keep_outs,
                                            std::uint32_t seed) {
    nmkTravelProblem problem = drawn_travel(n, traits, seed);
    // By time, ways that take equally long in the plane may differ where z changes along them.
    if (problem.measure == nmkTravelMeasure::time) {
        TravelTraits flat = traits;
        flat.has_z = false;
        problem = drawn_travel(n, flat, seed);
        problem.measure = nmkTravelMeasure::time;
        problem.speed = {100.0, 80.0, 20.0};
        problem.acceleration = {50.0, 100.0, 30.0};
    }
    TravelDraw draw(seed + 1000000);
    for (int i = 0; i < keep_outs; ++i) {
        std::vector<giPoint2> corners = drawn_polygon(draw, traits.side);
        if (corners.empty()) continue;
        const auto is_in = [&](const giPoint3& p) {
            return p.is_set() && is_inside(corners, fraction({p.x, p.y}));
        };
        bool is_place_in =
            (problem.start.kind == nmkTravelEnd::Kind::place && is_in(problem.start.place)) ||
            (problem.end.kind == nmkTravelEnd::Kind::place && is_in(problem.end.place));
        for (const nmkTravelItem& item : problem.items) {
            is_place_in = is_place_in || is_in(item.start) || is_in(item.end);
        }
        if (!is_place_in) problem.keep_outs.push_back({{std::move(corners)}});
    }
    return problem;
}

}  // namespace plain

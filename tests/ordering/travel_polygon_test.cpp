// Tests of lines and places against polygons.
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "ordering/plain_keep_outs.h"
#include "ordering/travel_polygon.h"

namespace {

using nmk_ordering::PlanePoint;
using nmk_ordering::TravelPolygon;

std::vector<PlanePoint> places(const std::vector<giPoint2>& corners) {
    std::vector<PlanePoint> result;
    for (const giPoint2& p : corners) result.push_back({p.x, p.y});
    return result;
}

//  4 +-----------+
//    |           |
//  2 |   +---+   |
//    |   |   |   |
//  0 +---+   +---+
//    0   2   4   6
const std::vector<PlanePoint> arch = {{0, 0}, {2, 0}, {2, 2}, {4, 2},
                                      {4, 0}, {6, 0}, {6, 4}, {0, 4}};

struct LineCase {
    const char* name;
    PlanePoint from, to;
    bool meets;
};

std::ostream& operator<<(std::ostream& out, const LineCase& tested) { return out << tested.name; }

class travel_polygon_line : public ::testing::TestWithParam<LineCase> {};

TEST_P(travel_polygon_line, meets_the_inside_or_not) {
    std::vector<PlanePoint> turned(arch.rbegin(), arch.rend());
    for (const TravelPolygon& polygon : {TravelPolygon(arch), TravelPolygon(turned)}) {
        EXPECT_EQ(polygon.meets(GetParam().from, GetParam().to), GetParam().meets);
        EXPECT_EQ(polygon.meets(GetParam().to, GetParam().from), GetParam().meets);
    }
}

INSTANTIATE_TEST_SUITE_P(
    cases, travel_polygon_line,
    ::testing::Values(LineCase{"crosses_two_edges", {-1, 3}, {7, 3}, true},
                      LineCase{"passes_beside", {-1, 5}, {7, 5}, false},
                      LineCase{"runs_along_an_edge", {-1, 4}, {7, 4}, false},
                      LineCase{"runs_along_a_part_of_an_edge", {1, 4}, {5, 4}, false},
                      LineCase{"runs_along_an_edge_and_then_inside", {2, 0}, {2, 3}, true},
                      LineCase{"runs_along_both_feet", {-1, 0}, {7, 0}, false},
                      LineCase{"touches_a_corner", {-1, 5}, {1, 3 + 2}, false},
                      LineCase{"goes_over_a_corner_from_outside", {-2, 2}, {2, 6}, false},
                      LineCase{"goes_through_two_corners_inside", {0, 0}, {6, 4}, true},
                      LineCase{"joins_two_corners_outside", {2, 0}, {4, 2}, false},
                      LineCase{"joins_two_corners_of_the_notch_inside", {2, 2}, {6, 4}, true},
                      LineCase{"is_inside_from_end_to_end", {1, 3}, {5, 3}, true},
                      LineCase{"is_outside_in_the_notch", {3, 0}, {3, 1}, false},
                      LineCase{"ends_on_an_edge_from_outside", {3, 0}, {3, 2}, false},
                      LineCase{"ends_on_an_edge_from_inside", {1, 3}, {1, 4}, true},
                      LineCase{"joins_two_edges_inside", {0, 3}, {6, 3}, true},
                      LineCase{"joins_two_edges_across_the_notch", {2, 1}, {4, 1}, false},
                      LineCase{"is_a_place_inside", {1, 3}, {1, 3}, true},
                      LineCase{"is_a_place_on_an_edge", {1, 4}, {1, 4}, false},
                      LineCase{"is_a_place_on_a_corner", {2, 2}, {2, 2}, false}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(travel_polygon, meets_what_the_plain_way_meets) {
    int met = 0;
    for (std::uint32_t seed = 1; seed <= 400; ++seed) {
        plain::TravelDraw draw(seed);
        const std::vector<giPoint2> corners = plain::drawn_polygon(draw, 20);
        if (corners.empty()) continue;
        ASSERT_TRUE(nmk_ordering::is_simple(places(corners))) << seed;
        const TravelPolygon polygon(places(corners));
        for (int i = 0; i < 100; ++i) {
            const giPoint3 a = draw.point(20, false);
            const giPoint3 b = draw.point(20, false);
            const bool meets = plain::line_meets(corners, {a.x, a.y}, {b.x, b.y});
            ASSERT_EQ(polygon.meets({a.x, a.y}, {b.x, b.y}), meets) << seed << " " << i;
            ASSERT_EQ(polygon.has_inside({a.x, a.y}),
                      plain::is_inside(corners, plain::fraction({a.x, a.y})))
                << seed << " " << i;
            met += meets ? 1 : 0;
        }
    }
    EXPECT_GT(met, 3000);
}

TEST(travel_polygon, is_simple_only_without_common_places_of_edges) {
    using nmk_ordering::is_simple;
    EXPECT_TRUE(is_simple(arch));
    EXPECT_TRUE(is_simple({{0, 0}, {1, 0}, {2, 0}, {1, 1}}));  // a corner on a straight edge
    EXPECT_FALSE(is_simple({}));
    EXPECT_FALSE(is_simple({{0, 0}, {1, 0}}));
    EXPECT_FALSE(is_simple({{0, 0}, {1, 0}, {2, 0}}));                  // no inside
    EXPECT_FALSE(is_simple({{0, 0}, {2, 0}, {1, 0}, {1, 1}}));          // runs back
    EXPECT_FALSE(is_simple({{0, 0}, {2, 2}, {2, 0}, {0, 2}}));          // crosses itself
    EXPECT_FALSE(is_simple({{0, 0}, {4, 0}, {4, 4}, {2, 0}, {0, 4}}));  // touches itself
    EXPECT_FALSE(is_simple({{0, 0}, {1, 0}, {1, 0}, {0, 1}}));          // a corner twice
}

bool is_on(const giPoint2& a, const giPoint2& b, const giPoint2& p) {
    return plain::side_of(plain::fraction(a), plain::fraction(b), plain::fraction(p)) == 0 &&
           std::min(a.x, b.x) <= p.x && p.x <= std::max(a.x, b.x) && std::min(a.y, b.y) <= p.y &&
           p.y <= std::max(a.y, b.y);
}

bool edges_meet(const giPoint2& a, const giPoint2& b, const giPoint2& c, const giPoint2& d) {
    const auto side = [](const giPoint2& from, const giPoint2& to, const giPoint2& p) {
        return plain::side_of(plain::fraction(from), plain::fraction(to), plain::fraction(p));
    };
    const bool crosses = side(a, b, c) * side(a, b, d) < 0 && side(c, d, a) * side(c, d, b) < 0;
    return crosses || is_on(a, b, c) || is_on(a, b, d) || is_on(c, d, a) || is_on(c, d, b);
}

// Each edge with each other.
bool is_simple_plainly(const std::vector<giPoint2>& corners) {
    const std::size_t n = corners.size();
    for (std::size_t i = 0; i < n; ++i) {
        const giPoint2& a = corners[i];
        const giPoint2& b = corners[(i + 1) % n];
        const giPoint2& next = corners[(i + 2) % n];
        if (a == b || is_on(a, b, next) || is_on(b, next, a)) return false;
        for (std::size_t k = i + 2; k < n; ++k) {
            if ((k + 1) % n == i) continue;
            if (edges_meet(a, b, corners[k], corners[(k + 1) % n])) return false;
        }
    }
    return true;
}

TEST(travel_polygon, is_simple_where_no_edge_of_all_meets_another) {
    int simple = 0;
    for (std::uint32_t seed = 1; seed <= 20000; ++seed) {
        plain::TravelDraw draw(seed);
        std::vector<giPoint2> corners;
        const int count = 3 + draw.below(8);
        for (int i = 0; i < count; ++i) {
            const int x = draw.below(9);
            corners.emplace_back(x, draw.below(9));
        }
        const bool expected = is_simple_plainly(corners);
        ASSERT_EQ(nmk_ordering::is_simple(places(corners)), expected) << seed;
        simple += expected ? 1 : 0;
    }
    EXPECT_GT(simple, 2000);
}

TEST(travel_polygon, has_a_convex_hull_without_corners_on_edges) {
    using nmk_ordering::convex_hull;
    const auto hull = convex_hull({{1, 1}, {0, 0}, {2, 0}, {1, 0}, {2, 2}, {0, 2}, {0, 0}});
    EXPECT_EQ(hull, (std::vector<PlanePoint>{{0, 0}, {2, 0}, {2, 2}, {0, 2}}));
}

}  // namespace

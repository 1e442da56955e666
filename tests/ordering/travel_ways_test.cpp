// Tests of the search of ways: with its limits it finds, to the last bit, the ways that a search of
// all corners finds.
#include <gtest/gtest.h>

#include <cmath>
#include <ostream>
#include <string>
#include <vector>

#include "ordering/plain_keep_outs.h"
#include "ordering/plain_ways.h"
#include "ordering/travel_ways.h"

namespace nmk_ordering {
namespace {

struct Field {
    const char* name;
    TravelMetric metric;
    int side;      // of the square in which everything is; few places make ties
    int polygons;  // drawn; some of them come to nothing
    int seeds;

    friend std::ostream& operator<<(std::ostream& out, const Field& field) {
        return out << field.name;
    }
};

const TravelMetric by_chebyshev{nmkTravelMeasure::chebyshev, {}};
const TravelMetric by_time{nmkTravelMeasure::time, {{100.0, 80.0, 20.0}, {50.0, 100.0, 30.0}}};

const Field fields[] = {{"few_large_polygons", {}, 1000, 7, 40},
                        {"polygons_that_touch", {}, 24, 7, 60},
                        {"many_small_polygons", {}, 4000, 60, 5},
                        {"chebyshev", by_chebyshev, 1000, 7, 30},
                        {"chebyshev_with_ties", by_chebyshev, 24, 9, 60},
                        {"time", by_time, 1000, 7, 30},
                        {"time_with_ties", by_time, 24, 9, 60}};

std::vector<TravelPolygon> drawn_polygons(plain::TravelDraw& draw, const Field& field) {
    std::vector<TravelPolygon> polygons;
    for (int i = 0; i < field.polygons; ++i) {
        const int reach = field.polygons > 20 ? field.side / 8 : field.side;
        std::vector<PlanePoint> corners;
        const int x = draw.below(field.side), y = draw.below(field.side);
        for (const giPoint2& p : plain::drawn_polygon(draw, reach)) {
            corners.push_back(
                {p.x + (reach < field.side ? x : 0), p.y + (reach < field.side ? y : 0)});
        }
        if (!corners.empty()) polygons.emplace_back(std::move(corners));
    }
    return polygons;
}

std::vector<TravelPoint> drawn_places(plain::TravelDraw& draw, const TravelObstacles& obstacles,
                                      const Field& field) {
    std::vector<TravelPoint> places;
    for (int i = 0; i < 14; ++i) {
        const double x = draw.below(field.side);
        const TravelPoint place{x, static_cast<double>(draw.below(field.side)), 0.0};
        if (!obstacles.keep_out_at(TravelWays::in_plane(place))) places.push_back(place);
    }
    return places;
}

bool is_lesser(const TravelPoint& a, const TravelPoint& b) {
    return a.x != b.x ? a.x < b.x : a.y < b.y;
}

class travel_ways : public ::testing::TestWithParam<Field> {};

TEST_P(travel_ways, are_those_of_a_search_of_all_corners_to_the_last_bit) {
    const Field& field = GetParam();
    int bent = 0;
    for (int seed = 1; seed <= field.seeds; ++seed) {
        plain::TravelDraw draw(static_cast<std::uint32_t>(seed));
        const TravelObstacles obstacles(drawn_polygons(draw, field));
        if (obstacles.polygons().empty()) continue;
        const std::vector<TravelPoint> places = drawn_places(draw, obstacles, field);
        TravelWays ways(obstacles, field.metric);
        const plain::CornerGraph graph(obstacles, field.metric);
        for (const TravelPoint& from : places) {
            for (const TravelPoint& to : places) {
                if (!is_lesser(from, to) || ways.is_straight(from, to)) continue;
                const std::vector<PlanePoint> expected =
                    plain::way_around(graph, {from.x, from.y}, {to.x, to.y});
                const TravelWay way = ways.way(from, to);
                ASSERT_EQ(way.places.size(), expected.size()) << seed;
                for (std::size_t i = 0; i < expected.size(); ++i) {
                    ASSERT_EQ(TravelWays::in_plane(way.places[i]), expected[i]) << seed;
                }
                ++bent;
            }
        }
    }
    EXPECT_GT(bent, 200);
}

INSTANTIATE_TEST_SUITE_P(fields, travel_ways, ::testing::ValuesIn(fields),
                         [](const auto& tested) { return std::string(tested.param.name); });

// Rows of squares, each 6 wide and 4 apart from the next.
std::vector<TravelPolygon> squares(int side) {
    std::vector<TravelPolygon> polygons;
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            const double x = 10.0 * column, y = 10.0 * row;
            polygons.emplace_back(
                std::vector<PlanePoint>{{x, y}, {x + 6.0, y}, {x + 6.0, y + 6.0}, {x, y + 6.0}});
        }
    }
    return polygons;
}

TEST(travel_ways_kept, are_not_searched_again_in_either_direction) {
    TravelWays ways(TravelObstacles(squares(3)), {});
    const TravelPoint a{8.0, 8.0, 0.0}, b{18.0, 16.5, 1.0};
    EXPECT_EQ(ways.searched(), 0);
    const TravelWay way = ways.way(a, b);
    EXPECT_EQ(ways.searched(), 1);
    EXPECT_EQ(ways.way(b, a).length, way.length);
    EXPECT_EQ(ways.way(a, {b.x, b.y, 5.0}).places.size(), way.places.size());
    EXPECT_EQ(ways.searched(), 1);
    EXPECT_EQ(ways.way(a, {8.0, 18.0, 0.0}).places.size(), 2U);  // straight
    EXPECT_EQ(ways.searched(), 1);
}

// What a way costs must not depend on the obstacles that are far from it.
TEST(travel_ways_near, look_no_farther_than_they_can_reach) {
    TravelWays ways(TravelObstacles(squares(40)), {});
    const TravelPoint from{198.0, 198.0, 0.0}, to{208.0, 206.5, 0.0};
    ASSERT_GT(ways.way(from, to).places.size(), 2U);
    const double length = ways.way(from, to).length;
    int known = 0;
    for (int corner = 0; corner < ways.corner_count(); ++corner) {
        const SeenCorners& seen = ways.seen_from_corner(corner, 0.0);
        if (seen.reach > 0.0) ++known;
        EXPECT_LT(seen.reach, 3.0 * length);
    }
    EXPECT_GT(known, 0);
    EXPECT_LT(known, 30);
}

}  // namespace
}  // namespace nmk_ordering

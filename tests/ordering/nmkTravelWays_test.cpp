// Tests of the shortest ways around keep-outs.
#include <gtest/gtest.h>
#include <nmktoolbox/ordering/nmkTravelWays.h>

#include <cmath>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "ordering/plain_keep_outs.h"

namespace {

using Places = std::vector<giPoint3>;

nmkTravelProblem beside(std::vector<std::vector<giPoint2>> parts) {
    nmkTravelProblem problem;
    for (auto& part : parts) problem.keep_outs.push_back({{std::move(part)}});
    return problem;
}

const std::vector<giPoint2> square = {{4, -1}, {6, -1}, {6, 1}, {4, 1}};

TEST(nmkTravelWays, is_straight_where_no_keep_out_is_crossed) {
    const nmkTravelWays ways(beside({square}));
    EXPECT_EQ(ways.bends({0, 3, 0}, {10, 3, 0}), Places());
    EXPECT_EQ(ways.length({0, 3, 0}, {10, 3, 0}), 10.0);
    EXPECT_EQ(ways.keep_out_between({0, 3, 0}, {10, 3, 0}), std::nullopt);
}

TEST(nmkTravelWays, may_touch_edges_and_corners) {
    const nmkTravelWays ways(beside({square}));
    EXPECT_EQ(ways.bends({0, 1, 0}, {10, 1, 0}), Places());
    EXPECT_EQ(ways.bends({3, 0, 0}, {5, 2, 0}), Places());
    EXPECT_EQ(ways.keep_out_at({4, 0, 0}), std::nullopt);
    EXPECT_EQ(ways.keep_out_at({5, 0, 0}), 0);
}

TEST(nmkTravelWays, bends_at_the_corners_of_the_shorter_side) {
    const nmkTravelWays ways(beside({square}));
    EXPECT_EQ(ways.keep_out_between({0, 0.5, 0}, {10, 0.5, 0}), 0);
    EXPECT_EQ(ways.bends({0, 0.5, 0}, {10, 0.5, 0}), (Places{{4, 1, 0}, {6, 1, 0}}));
    EXPECT_EQ(ways.length({0, 0.5, 0}, {10, 0.5, 0}), 2.0 + 2.0 * std::sqrt(16.25));
}

TEST(nmkTravelWays, is_the_same_in_both_directions) {
    const nmkTravelWays ways(beside({square}));
    // Above and below are equally long.
    const auto there = ways.bends({0, 0, 0}, {10, 0, 0});
    auto back = ways.bends({10, 0, 0}, {0, 0, 0});
    ASSERT_TRUE(there && back);
    EXPECT_EQ(there->size(), 2U);
    EXPECT_EQ(*there, Places(back->rbegin(), back->rend()));
}

TEST(nmkTravelWays, passes_between_two_keep_outs_that_only_touch) {
    const nmkTravelWays ways(
        beside({{{4, -9}, {6, -9}, {6, 0}, {4, 0}}, {{4, 0}, {6, 0}, {6, 9}, {4, 9}}}));
    EXPECT_EQ(ways.bends({0, 0, 0}, {10, 0, 0}), Places());
}

TEST(nmkTravelWays, changes_z_in_proportion_along_the_way) {
    const nmkTravelWays ways(beside({{{4, -9}, {4, 3}, {5, -9}}}));
    const auto bends = ways.bends({0, 0, 0}, {8, 0, 10});
    ASSERT_TRUE(bends);
    EXPECT_EQ(*bends, (Places{{4, 3, 5}}));
    EXPECT_DOUBLE_EQ(ways.length({0, 0, 0}, {8, 0, 10}), std::sqrt(200.0));
}

TEST(nmkTravelWays, has_none_to_places_that_keep_outs_enclose_or_have_inside) {
    // Four walls whose ends overlap.
    const nmkTravelWays ways(beside({{{-3, -3}, {3, -3}, {3, -2}, {-3, -2}},
                                     {{-3, 2}, {3, 2}, {3, 3}, {-3, 3}},
                                     {{-3, -3}, {-2, -3}, {-2, 3}, {-3, 3}},
                                     {{2, -3}, {3, -3}, {3, 3}, {2, 3}}}));
    EXPECT_EQ(ways.error(), "");
    EXPECT_EQ(ways.bends({0, 0, 0}, {9, 0, 0}), std::nullopt);
    EXPECT_EQ(ways.bends({9, 0, 0}, {0, 0, 0}), std::nullopt);
    EXPECT_EQ(ways.length({0, 0, 0}, {9, 0, 0}), std::numeric_limits<double>::infinity());
    EXPECT_EQ(ways.bends({0, 0, 0}, {1, 1, 0}), Places());
    EXPECT_EQ(ways.bends({-2.5, 0, 0}, {9, 0, 0}), std::nullopt);
}

TEST(nmkTravelWays, number_the_areas_that_keep_outs_enclose) {
    for (const double unit : {1.0, 0x1p-200, 0x1p200}) {
        std::vector<std::vector<giPoint2>> walls = {{{-3, -3}, {3, -3}, {3, -2}, {-3, -2}},
                                                    {{-3, 2}, {3, 2}, {3, 3}, {-3, 3}},
                                                    {{-3, -3}, {-2, -3}, {-2, 3}, {-3, 3}},
                                                    {{2, -3}, {3, -3}, {3, 3}, {2, 3}}};
        for (auto& wall : walls) {
            for (giPoint2& p : wall) p = {p.x * unit, p.y * unit};
        }
        const nmkTravelWays ways(beside(walls));
        EXPECT_EQ(ways.area_at({9 * unit, 0, 0}), 0);
        EXPECT_EQ(ways.area_at({0, 0, 5}), 1);
        EXPECT_EQ(ways.area_at({unit, -unit, 0}), 1);
        EXPECT_EQ(ways.area_at({2.5 * unit, 0, 0}), std::nullopt);
        EXPECT_FALSE(ways.may_be_enclosed({9 * unit, 0, 0}));
        EXPECT_TRUE(ways.may_be_enclosed({0, 0, 0}));
    }
    EXPECT_EQ(nmkTravelWays(nmkTravelProblem()).area_at({1, 2, 3}), 0);
}

TEST(nmkTravelWays, reports_bad_settings_and_has_no_keep_outs_then) {
    nmkTravelProblem problem = beside({{{0, 0}, {1, 0}}});
    const nmkTravelWays ways(problem);
    EXPECT_EQ(ways.error(), "keep-out 0: 2 corners; expected a polygon of at least 3");
    EXPECT_EQ(ways.bends({0, 0, 0}, {9, 0, 0}), Places());
    problem.keep_outs = {{{{{0, 0}, {1e101, 0}, {0, 1}}}}};
    EXPECT_EQ(nmkTravelWays(problem).error(),
              "keep-out 0: expected coordinates from -1e100 to 1e100");
    problem.keep_outs.clear();
    problem.measure = nmkTravelMeasure::time;
    EXPECT_EQ(nmkTravelWays(problem).error(), "speed: expected numbers above 0 for all axes");
}

TEST(nmkTravelWays, refuses_more_corners_than_can_be_searched) {
    nmkTravelProblem problem;
    for (int i = 0; i < 20; ++i) {
        problem.keep_outs.push_back(nmkTravelKeepOut::circle({100.0 * i, 0.0}, 1.0, 0.0, 1e-9));
    }
    EXPECT_EQ(nmkTravelWays(problem).error(), "keep-outs: expected at most 20000 corners in all");
}

TEST(nmkTravelWays, works_in_very_small_and_very_large_units) {
    for (const double unit : {0x1p-300, 0x1p-40, 0x1p40, 0x1p300}) {
        std::vector<giPoint2> corners = square;
        for (giPoint2& p : corners) p = {p.x * unit, p.y * unit};
        const nmkTravelWays ways(beside({corners}));
        EXPECT_EQ(ways.bends({0, unit / 2, 0}, {10 * unit, unit / 2, 0}),
                  (Places{{4 * unit, unit, 0}, {6 * unit, unit, 0}}));
    }
}

// Whether bends are the way that they are said to be.
void expect_way(const nmkTravelProblem& problem, const nmkTravelWays& ways,
                const plain::PlainWays& plain, const giPoint3& from, const giPoint3& to) {
    const auto bends = ways.bends(from, to);
    ASSERT_TRUE(bends);
    Places places = {from};
    places.insert(places.end(), bends->begin(), bends->end());
    places.push_back(to);
    double length = 0.0;
    for (std::size_t i = 1; i < places.size(); ++i) {
        EXPECT_TRUE(plain.is_free({places[i - 1].x, places[i - 1].y}, {places[i].x, places[i].y}));
        length += plain::travel_leg(problem, places[i - 1], places[i]);
    }
    EXPECT_NEAR(length, ways.length(from, to), 1e-12 * length);
}

TEST(nmkTravelWays, are_as_short_as_the_plain_ones) {
    int bent = 0;
    for (std::uint32_t seed = 1; seed <= 150; ++seed) {
        // Few lattice points, so that corners coincide and edges touch; or many.
        const plain::TravelTraits traits{.has_z = seed % 3 == 0, .side = seed % 2 == 0 ? 24 : 1000};
        nmkTravelProblem problem = plain::drawn_travel_beside(6, traits, 7, seed);
        const nmkTravelWays ways(problem);
        ASSERT_EQ(ways.error(), "") << seed;
        plain::PlainWays plain(problem);
        for (const nmkTravelItem& from : problem.items) {
            for (const nmkTravelItem& to : problem.items) {
                const double length = ways.length(from.start, to.start);
                const double expected = plain.length(from.start, to.start);
                if (std::isinf(expected)) {
                    EXPECT_EQ(length, expected) << seed;
                    continue;
                }
                ASSERT_NEAR(length, expected, 1e-12 * expected) << seed;
                expect_way(problem, ways, plain, from.start, to.start);
                bent += length > plain::travel_leg(problem, from.start, to.start) ? 1 : 0;
            }
        }
    }
    EXPECT_GT(bent, 300);
}

// The number of the first keep-out for which `holds` is true, found by looking at all of them.
template <class Holds>
std::optional<int> first_of_all(const nmkTravelProblem& problem, const Holds& holds) {
    for (std::size_t i = 0; i < problem.keep_outs.size(); ++i) {
        if (holds(problem.keep_outs[i].parts.front())) return static_cast<int>(i);
    }
    return std::nullopt;
}

TEST(nmkTravelWays, find_the_first_of_hundreds_of_keep_outs_as_a_comparison_with_all_does) {
    constexpr int side = 400;
    plain::TravelDraw draw(7);
    std::vector<std::vector<giPoint2>> parts;
    while (parts.size() < 300) {
        // The smallest that the drawing makes, so that most are apart from each other.
        std::vector<giPoint2> corners = plain::drawn_polygon(draw, 12);
        if (corners.empty()) continue;
        const int x = draw.below(side), y = draw.below(side);
        for (giPoint2& corner : corners) corner = {corner.x + x, corner.y + y};
        parts.push_back(std::move(corners));
    }
    const nmkTravelProblem problem = beside(parts);
    const nmkTravelWays ways(problem);
    ASSERT_EQ(ways.error(), "");
    int crossed = 0, inside = 0;
    for (int i = 0; i < 3000; ++i) {
        const giPoint2 a(draw.below(side), draw.below(side));
        // Long lines and short ones, level and upright ones too.
        const int reach = i % 2 == 0 ? side / 2 : 6;
        const giPoint2 b(i % 5 == 0 ? a.x : a.x + draw.below(2 * reach) - reach,
                         i % 7 == 0 ? a.y : a.y + draw.below(2 * reach) - reach);
        const auto between = first_of_all(problem, [&](const std::vector<giPoint2>& corners) {
            return plain::line_meets(corners, a, b);
        });
        const auto at = first_of_all(problem, [&](const std::vector<giPoint2>& corners) {
            return plain::is_inside(corners, plain::fraction(a));
        });
        ASSERT_EQ(ways.keep_out_between({a.x, a.y, 0}, {b.x, b.y, 0}), between) << "line " << i;
        ASSERT_EQ(ways.keep_out_at({a.x, a.y, 0}), at) << "line " << i;
        crossed += between ? 1 : 0;
        inside += at ? 1 : 0;
    }
    EXPECT_GT(crossed, 1000);
    EXPECT_LT(crossed, 2900);
    EXPECT_GT(inside, 50);
}

}  // namespace

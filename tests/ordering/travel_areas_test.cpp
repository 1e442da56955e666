// Tests of the areas into which obstacles divide the plane, beside the ways between places.
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <vector>

#include "ordering/plain_travel.h"
#include "ordering/travel_areas.h"

namespace nmk_ordering {
namespace {

TravelPolygon box(double left, double low, double right, double high) {
    return TravelPolygon({{left, low}, {right, low}, {right, high}, {left, high}});
}

// Four walls around a square, which overlap in its corners.
void add_pocket(std::vector<TravelPolygon>& polygons, double left, double low, double side) {
    polygons.push_back(box(left, low, left + side, low + 1.0));
    polygons.push_back(box(left, low + side - 1.0, left + side, low + side));
    polygons.push_back(box(left, low, left + 1.0, low + side));
    polygons.push_back(box(left + side - 1.0, low, left + side, low + side));
}

TEST(travel_areas, number_those_that_are_enclosed_in_the_order_in_which_they_are_asked_for) {
    std::vector<TravelPolygon> polygons;
    add_pocket(polygons, 0.0, 0.0, 20.0);
    add_pocket(polygons, 100.0, 0.0, 20.0);
    TravelAreas areas(polygons);
    EXPECT_EQ(areas.of({110.0, 10.0}), 1);
    EXPECT_EQ(areas.of({10.0, 10.0}), 2);
    EXPECT_EQ(areas.of({50.0, 10.0}), TravelAreas::around);
    EXPECT_EQ(areas.of({3.0, 17.0}), 2);
    EXPECT_EQ(areas.of({117.0, 3.0}), 1);
    EXPECT_EQ(areas.of({-5.0, 10.0}), TravelAreas::around);
}

TEST(travel_areas, of_a_pocket_in_a_pocket_are_three) {
    std::vector<TravelPolygon> polygons;
    add_pocket(polygons, 0.0, 0.0, 50.0);
    add_pocket(polygons, 20.0, 20.0, 10.0);
    TravelAreas areas(polygons);
    EXPECT_EQ(areas.of({25.0, 25.0}), 1);
    EXPECT_EQ(areas.of({10.0, 10.0}), 2);
    EXPECT_EQ(areas.of({60.0, 10.0}), TravelAreas::around);
    EXPECT_EQ(areas.of({40.0, 40.0}), 2);
}

TEST(travel_areas, are_one_where_a_gap_of_no_width_leads_out) {
    std::vector<TravelPolygon> polygons;
    add_pocket(polygons, 0.0, 0.0, 20.0);
    // The wall on the left in two parts that only touch.
    polygons[2] = box(0.0, 0.0, 1.0, 10.0);
    polygons.push_back(box(0.0, 10.0, 1.0, 20.0));
    TravelAreas areas(polygons);
    EXPECT_EQ(areas.of({10.0, 3.0}), TravelAreas::around);
}

TEST(travel_areas, take_no_search_outside_of_the_boxes_of_polygons_that_touch) {
    std::vector<TravelPolygon> polygons;
    add_pocket(polygons, 0.0, 0.0, 20.0);
    polygons.push_back(box(200.0, 0.0, 220.0, 20.0));
    TravelAreas areas(polygons);
    for (const PlanePoint& place : {PlanePoint{-1.0, 5.0}, {50.0, 5.0}, {200.0, 5.0}}) {
        EXPECT_FALSE(areas.may_be_enclosed(place));
        EXPECT_EQ(areas.of(place), TravelAreas::around);
    }
    EXPECT_EQ(areas.searched(), 0);
    EXPECT_TRUE(areas.may_be_enclosed({10.0, 10.0}));
    EXPECT_EQ(areas.of({10.0, 10.0}), 1);
    const std::int64_t searched = areas.searched();
    EXPECT_GT(searched, 0);
    EXPECT_EQ(areas.of({11.0, 10.0}), 1);  // in line with the last
    EXPECT_EQ(areas.searched(), searched);
}

// Walls of a lattice, drawn one by one: pockets of all shapes, whose walls overlap or touch.
std::vector<TravelPolygon> drawn_walls(plain::TravelDraw& draw) {
    std::vector<TravelPolygon> walls;
    for (int i = 0; i < 60; ++i) {
        const double x = 10.0 * draw.below(6), y = 10.0 * draw.below(6);
        const double over = draw.below(8) == 0 ? 0.0 : 1.0;
        if (draw.below(2) == 0) {
            walls.push_back(box(x - over, y - 1.0, x + 10.0 + over, y + 1.0));
        } else {
            walls.push_back(box(x - 1.0, y - over, x + 1.0, y + 10.0 + over));
        }
    }
    return walls;
}

TEST(travel_areas, are_the_same_for_two_places_where_a_way_leads_from_one_to_the_other) {
    int enclosed = 0;
    for (std::uint32_t seed = 1; seed <= 25; ++seed) {
        plain::TravelDraw draw(seed);
        const std::vector<TravelPolygon> walls = drawn_walls(draw);
        TravelAreas areas(walls);
        TravelWays ways(TravelObstacles(walls), {});
        std::vector<PlanePoint> places = {{-20.0, -20.0}};
        for (int i = 0; i < 25; ++i) {
            const PlanePoint place{0.5 * draw.below(140) - 5.0, 0.5 * draw.below(140) - 5.0};
            if (!ways.obstacles().keep_out_at(place)) places.push_back(place);
        }
        std::vector<int> numbers;
        for (const PlanePoint& place : places) numbers.push_back(areas.of(place));
        EXPECT_EQ(numbers[0], TravelAreas::around);
        for (std::size_t i = 0; i < places.size(); ++i) {
            for (std::size_t k = 0; k < i; ++k) {
                const TravelWay way =
                    ways.way({places[i].x, places[i].y, 0.0}, {places[k].x, places[k].y, 0.0});
                ASSERT_EQ(numbers[i] == numbers[k], std::isfinite(way.length))
                    << seed << ": " << places[i].x << "," << places[i].y << " and " << places[k].x
                    << "," << places[k].y;
            }
            enclosed += numbers[i] != TravelAreas::around ? 1 : 0;
        }
    }
    EXPECT_GT(enclosed, 50);
}

}  // namespace
}  // namespace nmk_ordering

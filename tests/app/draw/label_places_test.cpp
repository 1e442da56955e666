// label_places: labels overlap neither each other nor what is reserved.

#include "draw/label_places.h"

#include <gtest/gtest.h>

#include <random>

namespace nmk_draw {
namespace {

constexpr LabelBox box{10.0, 20.0, 30.0, 10.0};  // to (40, 30)

struct Line {
    const char* name;
    SvgPoint from, to;
    bool crosses;

    friend std::ostream& operator<<(std::ostream& out, const Line& line) {
        return out << line.name;
    }
};

class label_places_crosses : public testing::TestWithParam<Line> {};

TEST_P(label_places_crosses, whether_a_line_goes_through_a_box) {
    EXPECT_EQ(crosses(box, GetParam().from, GetParam().to), GetParam().crosses);
    EXPECT_EQ(crosses(box, GetParam().to, GetParam().from), GetParam().crosses);
}

INSTANTIATE_TEST_SUITE_P(lines, label_places_crosses,
                         testing::Values(Line{"from_side_to_side", {0, 25}, {50, 25}, true},
                                         Line{"from_top_to_bottom", {20, 0}, {25, 50}, true},
                                         Line{"within", {15, 22}, {20, 28}, true},
                                         Line{"ends_within", {0, 0}, {15, 22}, true},
                                         Line{"a_point_within", {15, 22}, {15, 22}, true},
                                         Line{"a_point_outside", {5, 22}, {5, 22}, false},
                                         Line{"past_a_corner", {0, 25}, {12, 40}, false},
                                         Line{"above", {0, 19}, {50, 19}, false},
                                         Line{"ends_before", {0, 25}, {9, 25}, false},
                                         Line{"to_the_right", {41, 0}, {41, 50}, false}));

TEST(label_places, takes_the_first_middle_that_is_free) {
    LabelPlaces places({0, 0, 100, 100});
    LabelBox placed;
    EXPECT_TRUE(places.place({{50, 50}}, 20, 10, placed));
    EXPECT_TRUE(places.place({{55, 52}, {50, 70}}, 20, 10, placed));
    EXPECT_EQ(placed.top, 65.0);
    EXPECT_FALSE(places.place({{45, 49}, {50, 69}}, 20, 10, placed));
}

TEST(label_places, moves_a_label_into_the_bounds) {
    LabelPlaces places({0, 0, 100, 100});
    LabelBox placed;
    EXPECT_TRUE(places.place({{99, -5}}, 20, 10, placed));
    EXPECT_EQ(placed.left, 80.0);
    EXPECT_EQ(placed.top, 0.0);
}

TEST(label_places, never_covers_a_reserved_line_nor_its_width) {
    LabelPlaces places({0, 0, 100, 100});
    places.take_line({0, 50}, {100, 50}, 8.0);
    LabelBox placed;
    EXPECT_FALSE(places.place({{50, 50}, {50, 45}, {50, 58}}, 20, 10, placed));
    EXPECT_TRUE(places.place({{50, 59.5}}, 20, 10, placed));
}

TEST(label_places, random_labels_never_overlap) {
    std::mt19937 random(20261122);
    std::uniform_real_distribution<double> anywhere(0.0, 400.0);
    LabelPlaces places({0, 0, 400, 400});
    const SvgPoint from{anywhere(random), anywhere(random)};
    const SvgPoint to{anywhere(random), anywhere(random)};
    places.take_line(from, to, 6.0);
    std::vector<LabelBox> placed;
    for (int i = 0; i < 300; ++i) {
        LabelBox label;
        if (places.place({{anywhere(random), anywhere(random)}}, 30, 12, label)) {
            EXPECT_FALSE(crosses(label.grown(2.9), from, to));
            for (const LabelBox& other : placed) EXPECT_FALSE(label.overlaps(other));
            placed.push_back(label);
        }
    }
    EXPECT_GT(placed.size(), 50U);
}

}  // namespace
}  // namespace nmk_draw

// nmkRange: intervals with open and closed ends.
#include <gtest/gtest.h>

#include <nmktoolbox/solver/nmkRange.h>
#include <limits>
#include <string>

namespace {

constexpr double largest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();

std::string text_of(const nmkRange& range) { return std::string(range.get_range_string().view()); }

TEST(nmkRange, a_range_that_was_not_set_has_an_empty_text) {
    EXPECT_EQ(text_of(nmkRange()), "");
    EXPECT_FALSE(nmkRange().get_range_string().is_null());
}

TEST(nmkRange, an_open_end_begins_a_little_inside) {
    const nmkRange open(1, 2, 0, 0);
    EXPECT_EQ(open.contains(1.0), 0);
    EXPECT_EQ(open.contains(1.0 + 2e-10), 1);
    EXPECT_EQ(open.contains(2.0), 0);
    EXPECT_EQ(open.contains(2.0 - 2e-10), 1);
    const nmkRange closed(1, 2);
    EXPECT_EQ(closed.contains(1.0), 1);
    EXPECT_EQ(closed.contains(2.0), 1);
    EXPECT_EQ(closed.contains(0.9999999999), 0);
}

TEST(nmkRange, the_flags_can_be_changed) {
    nmkRange range(1, 2);
    range.allow_equality(0, 1);
    EXPECT_EQ(range.contains(1.0), 0);
    EXPECT_EQ(range.contains(2.0), 1);
    range.allow_equality(1, 0);
    EXPECT_EQ(range.contains(1.0), 1);
    EXPECT_EQ(range.contains(2.0), 0);
}

TEST(nmkRange, any_flag_but_0_includes_the_end) {
    const nmkRange range(1, 2, 2, -1);
    EXPECT_EQ(range.contains(1.0), 1);
    EXPECT_EQ(range.contains(2.0), 1);
    EXPECT_EQ(text_of(range), "1 <= x <= 2");
}

TEST(nmkRange, clamp_moves_to_the_effective_end) {
    const nmkRange open(1, 2, 0, 0);
    double value = 0.5;
    EXPECT_EQ(open.clamp(value), -1);
    EXPECT_EQ(value, 1.0 + 1e-10);
    value = 2.0;
    EXPECT_EQ(open.clamp(value), 1);
    EXPECT_EQ(value, 2.0 - 1e-10);
    value = 1.5;
    EXPECT_EQ(open.clamp(value), 0);
    EXPECT_EQ(value, 1.5);
    const nmkRange closed(1, 2);
    value = -infinity;
    EXPECT_EQ(closed.clamp(value), -1);
    EXPECT_EQ(value, 1.0);
    value = infinity;
    EXPECT_EQ(closed.clamp(value), 1);
    EXPECT_EQ(value, 2.0);
}

TEST(nmkRange, what_is_not_a_number_is_neither_below_nor_above) {
    double value = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(nmkRange(1, 2).contains(value), 1);
    EXPECT_EQ(nmkRange(1, 2).clamp(value), 0);
    EXPECT_NE(value, value);
}

struct Overlap {
    const char* name;
    nmkRange one;
    nmkRange other;
    int expected;
};

std::ostream& operator<<(std::ostream& out, const Overlap& one) { return out << one.name; }

struct Overlaps : testing::TestWithParam<Overlap> {};

TEST_P(Overlaps, is_the_same_in_both_directions) {
    EXPECT_EQ(GetParam().one.overlaps(GetParam().other), GetParam().expected);
    EXPECT_EQ(GetParam().other.overlaps(GetParam().one), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    nmkRange, Overlaps,
    testing::Values(Overlap{"equal_open_ranges", {1, 2, 0, 0}, {1, 2, 0, 0}, 1},
                    Overlap{"equal_closed_ranges", {1, 2}, {1, 2}, 1},
                    Overlap{"an_open_point_is_empty", {1, 1, 0, 0}, {1, 1, 0, 0}, 0},
                    Overlap{"an_open_point_at_an_open_end", {1, 2, 0, 0}, {1, 1, 0, 0}, 0},
                    Overlap{"a_closed_point", {1, 1}, {1, 1}, 1},
                    Overlap{"open_ranges_that_touch", {1, 2, 0, 0}, {2, 3, 0, 0}, 0},
                    Overlap{"closed_ranges_that_touch", {1, 2}, {2, 3}, 1},
                    Overlap{"one_of_the_touching_ends_is_closed", {1, 2, 1, 1}, {2, 3, 0, 0}, 1},
                    Overlap{"apart", {1, 2}, {3, 4}, 0},
                    Overlap{"one_inside_the_other", {1, 4, 0, 0}, {2, 3, 0, 0}, 1},
                    Overlap{"crossing", {1, 3, 0, 0}, {2, 4, 0, 0}, 1},
                    // Deliberate: no end of either lies inside the other, and they are not equal.
                    Overlap{"open_ranges_a_hair_apart_at_both_ends",
                            {1, 2, 0, 0},
                            {1 + 5e-11, 2 - 5e-11, 0, 0},
                            0}),
    [](const testing::TestParamInfo<Overlap>& one) { return one.param.name; });

TEST(nmkRange, reads_as_a_condition_on_x) {
    EXPECT_EQ(text_of(nmkRange(1, 2)), "1 <= x <= 2");
    EXPECT_EQ(text_of(nmkRange(1, 2, 0, 0)), "1 < x < 2");
    EXPECT_EQ(text_of(nmkRange(1, 2, 1, 0)), "1 <= x < 2");
    EXPECT_EQ(text_of(nmkRange(-0.5, 2.25, 0, 1)), "-0.5 < x <= 2.25");
    EXPECT_EQ(text_of(nmkRange(1, 1)), "1 <= x <= 1") << "only a range turned inside out has none";
    // A low end beyond all finite numbers is a limit, and makes one of the high end.
    EXPECT_EQ(text_of(nmkRange(infinity, infinity)), "inf <= x <= inf");
}

TEST(nmkRange, without_a_limit_on_one_side_reads_shorter) {
    EXPECT_EQ(text_of(nmkRange(-largest, 2)), "x <= 2");
    EXPECT_EQ(text_of(nmkRange(-infinity, 2, 0, 0)), "x < 2");
    EXPECT_EQ(text_of(nmkRange(1, largest)), "x >= 1");
    EXPECT_EQ(text_of(nmkRange(1, infinity, 0, 0)), "x > 1");
}

TEST(nmkRange, without_limits_or_turned_inside_out_has_an_empty_text) {
    EXPECT_EQ(text_of(nmkRange(-largest, largest)), "");
    EXPECT_EQ(text_of(nmkRange(-infinity, infinity, 0, 0)), "");
    EXPECT_EQ(text_of(nmkRange(2, 1)), "");
}

TEST(nmkRange, the_next_text_overwrites_the_one_before) {
    const utString& first = nmkRange(1, 2).get_range_string();
    const utString& second = nmkRange(3, 4).get_range_string();
    EXPECT_EQ(&first, &second);
    EXPECT_EQ(std::string(first.view()), "3 <= x <= 4");
}

TEST(nmkRange, can_be_kept_in_a_paged_array) {
    nmkRangecoPageArr ranges;
    ranges.add(nmkRange(1, 2));
    ranges.add(nmkRange(3, 4, 0, 0));
    EXPECT_EQ(ranges.size(), 2);
    EXPECT_EQ(text_of(ranges[1]), "3 < x < 4");
}

}  // namespace

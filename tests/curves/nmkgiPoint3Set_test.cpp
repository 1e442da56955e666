#include <gtest/gtest.h>
#include <nmktoolbox/curves/nmkgiPoint3Set.h>
#include <utils/utAssert.h>

#include <algorithm>
#include <limits>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

int failed_assertions = 0;

void count_assertion(const char*, const char*, int, const char*) { ++failed_assertions; }

std::vector<giPoint3> points_of(nmkgiPoint3Set& set) {
    std::vector<giPoint3> points;
    for (const void* item = set.top(); item != nullptr; item = set.next()) {
        points.push_back(*static_cast<const giPoint3*>(item));
    }
    return points;
}

}  // namespace

TEST(nmkgiPoint3Set, adding_an_equal_point_returns_the_one_that_is_there) {
    nmkgiPoint3Set set;
    const giPoint3 first(1, 2, 3);
    const giPoint3 same(1, 2, 3);
    EXPECT_EQ(set.add(&first), &first);
    EXPECT_EQ(set.add(&same), &first);
    EXPECT_EQ(set.add(&first), &first);
    EXPECT_EQ(points_of(set).size(), 1U);
}

TEST(nmkgiPoint3Set, exist_returns_the_equal_point_or_null) {
    nmkgiPoint3Set set;
    const giPoint3 first(1, 2, 3);
    const giPoint3 same(1, 2, 3);
    const giPoint3 other(1, 2, 3.0000000000000004);
    EXPECT_EQ(set.exist(&first), nullptr);
    set.add(&first);
    EXPECT_EQ(set.exist(&same), &first);
    EXPECT_EQ(set.exist(&other), nullptr);
}

TEST(nmkgiPoint3Set, is_read_from_the_last_point_to_the_first) {
    nmkgiPoint3Set set;
    const giPoint3 points[] = {{1, 2, 3}, {0, 5, 5}, {1, 2, 2}, {1, 3, 0}};
    for (const giPoint3& point : points) set.add(&point);
    EXPECT_EQ(points_of(set), (std::vector<giPoint3>{{1, 3, 0}, {1, 2, 3}, {1, 2, 2}, {0, 5, 5}}));
}

TEST(nmkgiPoint3Set, sets_can_share_an_allocator) {
    fbaAllocatorcoPrf allocator = nmkBalBinTree::get_allocator(10);
    nmkgiPoint3Set first(allocator);
    nmkgiPoint3Set second(allocator);
    const giPoint3 point(1, 2, 3);
    first.add(&point);
    second.add(&point);
    EXPECT_EQ(allocator->pages(), 1);
    EXPECT_EQ(allocator.use_count(), 3);
}

TEST(nmkgiPoint3Set, adding_after_it_has_been_read_is_an_assertion_and_adds_nothing) {
    nmkgiPoint3Set set;
    const giPoint3 point(1, 2, 3);
    const giPoint3 late(4, 5, 6);
    set.add(&point);
    set.top();
    failed_assertions = 0;
    const utAssertHandler before = ut_set_assert_handler(count_assertion);
    set.add(&late);
    ut_set_assert_handler(before);
    EXPECT_GT(failed_assertions, 0);
    EXPECT_EQ(points_of(set), std::vector<giPoint3>{point});
}

TEST(nmkgiPoint3Set, keeps_each_of_many_generated_points_once) {
    std::mt19937 random(11);
    std::uniform_int_distribution<int> coordinate(0, 9);
    std::vector<giPoint3> points;
    for (int i = 0; i < 5000; ++i) {
        points.emplace_back(coordinate(random), coordinate(random), coordinate(random));
    }
    nmkgiPoint3Set set;
    for (const giPoint3& point : points) EXPECT_EQ(*set.add(&point), point);
    std::vector<giPoint3> expected = points;
    const auto later = [](const giPoint3& a, const giPoint3& b) {
        return nmkgiPoint3Set::compare(&a, &b) > 0;
    };
    std::sort(expected.begin(), expected.end(), later);
    expected.erase(std::unique(expected.begin(), expected.end()), expected.end());
    EXPECT_EQ(points_of(set), expected);
}

namespace {

struct CompareCase {
    const char* name;
    giPoint3 a;
    giPoint3 b;
    int result;
};

std::ostream& operator<<(std::ostream& stream, const CompareCase& one) {
    return stream << one.name;
}

class nmkgiPoint3Set_compare : public testing::TestWithParam<CompareCase> {};

}  // namespace

TEST_P(nmkgiPoint3Set_compare, returns_the_order) {
    EXPECT_EQ(nmkgiPoint3Set::compare(&GetParam().a, &GetParam().b), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    cases, nmkgiPoint3Set_compare,
    testing::Values(
        CompareCase{"equal_coordinates_give_0", {1, 2, 3}, {1, 2, 3}, 0},
        CompareCase{"x_decides_first", {1, 9, 9}, {2, 0, 0}, -1},
        CompareCase{"then_y_decides", {1, 3, 0}, {1, 2, 9}, 1},
        CompareCase{"then_z_decides", {1, 2, 3}, {1, 2, 4}, -1},
        CompareCase{"minus_0_equals_0", {-0.0, 0, 0}, {0, 0, -0.0}, 0},
        CompareCase{"one_rounding_apart_differs", {1, 0, 0}, {1.0000000000000002, 0, 0}, -1},
        CompareCase{"nan_on_the_left_gives_1", {not_a_number, 0, 0}, {0, 0, 0}, 1},
        CompareCase{"nan_on_the_right_gives_1", {0, 0, 0}, {not_a_number, 0, 0}, 1},
        CompareCase{"nan_on_both_sides_gives_1", {0, 0, not_a_number}, {0, 0, not_a_number}, 1}),
    [](const auto& one) { return std::string(one.param.name); });

TEST(nmkgiPoint3Set_compare, an_object_equals_itself_even_with_nan) {
    const giPoint3 point(not_a_number, not_a_number, not_a_number);
    EXPECT_EQ(nmkgiPoint3Set::compare(&point, &point), 0);
}

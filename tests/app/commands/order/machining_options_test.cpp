// machining_options: heights and feeds, and the unit that they are given in.

#include "commands/order/machining_options.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "shell/command.h"

namespace nmk_order {
namespace {

TEST(machining_options, are_empty_where_nothing_is_given) {
    const auto options = nmk_shell::read_options(declare_machining_options, {});
    ASSERT_TRUE(options);
    EXPECT_FALSE(options->depth || options->retract || options->plunge_feed || options->feed);
}

TEST(machining_options, are_in_the_unit_of_the_command_line) {
    const auto options = nmk_shell::read_options(
        declare_machining_options,
        {"--depth", "0.1", "--retract=0.2", "--plunge-feed", "5", "--feed", "10"});
    ASSERT_TRUE(options);
    const MachiningOptions mm = machining_in_mm(*options, nmk_job::JobUnits::inches);
    EXPECT_EQ(mm.depth, 2.54);
    EXPECT_EQ(mm.retract, 5.08);
    EXPECT_EQ(mm.plunge_feed, 127.0);
    EXPECT_EQ(mm.feed, 254.0);
    EXPECT_EQ(machining_in_mm(*options, nmk_job::JobUnits::millimetres).depth, 0.1);
}

struct BadValue {
    const char* name;
    std::vector<std::string> words;
    const char* expected;

    friend std::ostream& operator<<(std::ostream& out, const BadValue& bad) {
        return out << bad.name;
    }
};

class machining_options_error : public testing::TestWithParam<BadValue> {};

TEST_P(machining_options_error, names_the_range) {
    const auto options = nmk_shell::read_options(declare_machining_options, GetParam().words);
    ASSERT_FALSE(options);
    EXPECT_NE(options.error().message.find(GetParam().expected), std::string::npos)
        << options.error().message;
}

INSTANTIATE_TEST_SUITE_P(
    bad_values, machining_options_error,
    testing::Values(
        BadValue{"a_negative_depth", {"--depth", "-1"}, "a number above 0 up to 100000"},
        BadValue{"a_depth_of_zero", {"--depth", "0"}, "a number above 0 up to 100000"},
        BadValue{"not_a_number", {"--retract", "nan"}, "a number above 0 up to 100000"},
        BadValue{"an_infinite_height", {"--retract", "inf"}, "a number above 0 up to 100000"},
        BadValue{"a_huge_height", {"--retract", "1e300"}, "a number above 0 up to 100000"},
        BadValue{"a_feed_of_zero", {"--plunge-feed", "0"}, "a number above 0 up to 1000000"},
        BadValue{"a_huge_feed", {"--feed", "1000001"}, "a number above 0 up to 1000000"},
        BadValue{"an_empty_value", {"--depth", ""}, "a number above 0 up to 100000"}),
    [](const auto& given) { return std::string(given.param.name); });

}  // namespace
}  // namespace nmk_order

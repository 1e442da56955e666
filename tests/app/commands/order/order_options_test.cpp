// order_options: valid command lines, and the errors of the others.

#include "commands/order/order_options.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "commands/order/sort_type_names.h"
#include "shell/command.h"

namespace {

using namespace nmk_order;

using Words = std::vector<std::string>;

OrderOptions read(const Words& words) {
    const auto options = nmk_shell::read_options(declare_order_options, words);
    if (!options) {
        ADD_FAILURE() << options.error().message;
        return {};
    }
    return *options;
}

TEST(order_options, a_file_name_alone_selects_the_defaults) {
    const OrderOptions options = read({"plate.drl"});
    EXPECT_EQ(options.file_name, "plate.drl");
    EXPECT_EQ(options.type, best_order);
    EXPECT_FALSE(options.effort || options.time_limit || options.end || options.is_closed);
    EXPECT_FALSE(options.across_tools || options.json || options.quiet);
    EXPECT_EQ(options.measure.kind, nmkTravelMeasure::length);
    for (const auto units : {nmk_job::JobUnits::inches, nmk_job::JobUnits::millimetres}) {
        const RapidMoves rapids = order_request(options, units).measure.rapids;
        EXPECT_EQ(rapids.rate.x, 10000.0);
        EXPECT_EQ(rapids.acceleration.z, 1000.0);
    }
    const OrderRequest request = order_request(options, nmk_job::JobUnits::inches);
    EXPECT_EQ(request.tolerance, default_tolerance);
    EXPECT_EQ(request.ends.start, giPoint3(0.0, 0.0, 0.0));
    EXPECT_FALSE(request.ends.end || request.ends.is_closed || request.deadline);
}

TEST(order_options, every_option_may_have_a_blank_or_an_equals_sign) {
    const OrderOptions a =
        read({"--type", "xz",      "--start",        "1,-2.5,3", "--tolerance", "0.5",   "--units",
              "mm",     "--rapid", "6000",           "-o",       "a.csv",       "--svg", "a.svg",
              "--html", "a.html",  "--across-tools", "--json",   "--quiet",     "f"});
    const OrderOptions b = read({"f", "--type=XZ", "--start=1,-2.5,3", "--tolerance=0.5",
                                 "--units=mm", "--rapid=6000", "--output=a.csv", "--svg=a.svg",
                                 "--html=a.html", "--across-tools", "--json", "--quiet"});
    for (const OrderOptions& options : {a, b}) {
        EXPECT_EQ(options.type, nmkSortTypeXZ);
        EXPECT_EQ(options.start, (std::array<double, 3>{1.0, -2.5, 3.0}));
        EXPECT_EQ(options.tolerance, 0.5);
        EXPECT_EQ(options.units, nmk_job::JobUnits::millimetres);
        EXPECT_EQ(options.measure.rate->z, 6000.0);
        EXPECT_EQ(options.output_file, "a.csv");
        EXPECT_EQ(options.svg_file, "a.svg");
        EXPECT_EQ(options.html_file, "a.html");
        EXPECT_TRUE(options.across_tools && options.json && options.quiet);
    }
}

TEST(order_options, the_extension_of_the_output_may_be_in_capital_letters) {
    for (const std::string name : {"OUT.DRL", "parts.d/Out.Csv", "a.b.JSON"}) {
        EXPECT_EQ(read({"f", "-o", name}).output_file, name);
    }
}

TEST(order_options, lengths_are_in_the_unit_of_the_file_by_default) {
    OrderOptions options = read({"f", "--start", "1,2", "--tolerance", "0.5"});
    EXPECT_EQ(order_request(options, nmk_job::JobUnits::inches).ends.start,
              giPoint3(25.4, 50.8, 0.0));
    EXPECT_EQ(order_request(options, nmk_job::JobUnits::inches).tolerance, 12.7);
    EXPECT_EQ(order_request(options, nmk_job::JobUnits::millimetres).ends.start,
              giPoint3(1.0, 2.0, 0.0));
    options.units = nmk_job::JobUnits::millimetres;
    EXPECT_EQ(order_request(options, nmk_job::JobUnits::inches).ends.start,
              giPoint3(1.0, 2.0, 0.0));
}

TEST(order_options, one_rate_counts_for_all_axes_and_z_is_as_y_unless_given) {
    const auto rate = [](const std::string& value) {
        const nmkTravelAxes axes = *read({"f", "--rapid", value}).measure.rate;
        return std::array{axes.x, axes.y, axes.z};
    };
    EXPECT_EQ(rate("5000"), (std::array{5000.0, 5000.0, 5000.0}));
    EXPECT_EQ(rate("5000,4000"), (std::array{5000.0, 4000.0, 4000.0}));
    EXPECT_EQ(rate("5000,4000,900.5"), (std::array{5000.0, 4000.0, 900.5}));
}

TEST(order_options, the_request_has_rates_in_mm_given_in_the_unit_of_the_command_line) {
    OrderOptions options =
        read({"f", "--measure", "Time", "--rapid", "400", "--acceleration", "1,2,3"});
    const TravelMeasure inches = order_request(options, nmk_job::JobUnits::inches).measure;
    EXPECT_EQ(inches.kind, nmkTravelMeasure::time);
    EXPECT_EQ(inches.rapids.rate.y, 10160.0);
    EXPECT_EQ(inches.rapids.acceleration.y, 50.8);
    options.units = nmk_job::JobUnits::millimetres;
    EXPECT_EQ(order_request(options, nmk_job::JobUnits::inches).measure.rapids.rate.y, 400.0);
    EXPECT_EQ(read({"f", "--type", "x", "--measure", "length"}).type, nmkSortTypeX);
}

TEST(order_options, after_two_dashes_a_name_may_begin_with_a_dash) {
    EXPECT_EQ(read({"--json", "--", "-odd.drl"}).file_name, "-odd.drl");
}

TEST(order_options, every_supported_sort_type_has_a_name_of_its_own) {
    int named = 0;
    for (int value = -1; value <= 20; ++value) {
        const auto type = static_cast<nmkSortType>(value);
        const std::string name(sort_type_name(type));
        const bool supported = (0 <= value && value <= 12) || value == 17;
        EXPECT_EQ(!name.empty(), supported) << value;
        if (supported) {
            EXPECT_EQ(read({"f", "--type", name}).type, type);
            ++named;
        }
    }
    EXPECT_EQ(named, 14);
    EXPECT_EQ(sort_type_name(best_order), "best");
    EXPECT_EQ(read({"f", "--type", "best"}).type, best_order);
}

TEST(order_options, start_and_end_are_places_or_words) {
    const auto ends = [](const Words& words) {
        return order_request(read(words), nmk_job::JobUnits::inches).ends;
    };
    EXPECT_FALSE(ends({"f", "--start", "free"}).start);
    EXPECT_FALSE(ends({"f", "--start=FREE", "--end", "free"}).end);
    EXPECT_EQ(ends({"f", "--end", "1,2,3"}).end, giPoint3(25.4, 50.8, 76.2));
    EXPECT_EQ(ends({"f", "--start", "2,1", "--end", "start"}).end, giPoint3(50.8, 25.4, 0.0));
    EXPECT_EQ(ends({"f", "--end", "start"}).end, giPoint3(0.0, 0.0, 0.0));
    EXPECT_EQ(ends({"f", "--start", "free", "--start", "1,1"}).start, giPoint3(25.4, 25.4, 0.0));
    EXPECT_TRUE(ends({"f", "--closed"}).is_closed);
    EXPECT_FALSE(ends({"f", "--closed"}).end);
}

TEST(order_options, the_deadline_is_the_time_limit_after_the_beginning) {
    const auto begin = OrderRequest::Clock::now();
    const OrderOptions options = read({"f", "--time-limit", "2.5", "--effort", "40"});
    const OrderRequest request = order_request(options, nmk_job::JobUnits::millimetres, begin);
    EXPECT_EQ(request.effort, 40);
    ASSERT_TRUE(request.deadline);
    EXPECT_EQ(*request.deadline - begin, std::chrono::milliseconds(2500));
    const OrderOptions far = read({"f", "--time-limit", "1e9"});
    EXPECT_GT(*order_request(far, nmk_job::JobUnits::millimetres, begin).deadline, begin);
}

struct BadLine {
    const char* name;
    Words words;
    const char* expected;  // part of the message
};

std::ostream& operator<<(std::ostream& out, const BadLine& line) { return out << line.name; }

class order_options_bad : public testing::TestWithParam<BadLine> {};

TEST_P(order_options_bad, is_refused_with_one_line) {
    const auto options = nmk_shell::read_options(declare_order_options, GetParam().words);
    ASSERT_FALSE(options);
    const std::string& problem = options.error().message;
    EXPECT_NE(problem.find(GetParam().expected), std::string::npos) << problem;
    EXPECT_EQ(problem.find('\n'), std::string::npos);
}

const BadLine bad_lines[] = {
    {"no_file", {"--json"}, "expected FILE; see nmk help"},
    {"empty_file", {""}, "FILE \"\": expected the name of a file"},
    {"unknown_option", {"a", "--fast"}, "unknown option"},
    {"unknown_with_line_feed", {"a", "--fa\nst"}, "unknown option"},
    {"similar_option", {"a", "--tpye", "x"}, "did you mean --type?"},
    {"switch_with_value", {"a", "--json=yes"}, "--json takes no value"},
    {"value_missing", {"a", "--type"}, "needs a value"},
    {"unknown_type", {"a", "--type", "worst"}, "one-way"},
    {"cylinder", {"a", "--type", "cylinder"}, "shortest, closest"},
    {"empty_type", {"a", "--type="}, "expected best, none, shortest"},
    {"start_of_one", {"a", "--start", "1"}, "X,Y"},
    {"start_of_four", {"a", "--start", "1,2,3,4"}, "X,Y"},
    {"start_with_hole", {"a", "--start", "1,,3"}, "X,Y"},
    {"start_trailing_comma", {"a", "--start", "1,2,"}, "X,Y"},
    {"start_not_finite", {"a", "--start", "nan,0"}, "X,Y"},
    {"start_infinite", {"a", "--start", "1e999,0"}, "X,Y"},
    {"start_far", {"a", "--start", "1e30,0"}, "X,Y"},
    {"start_word", {"a", "--start", "home"}, "expected X,Y or X,Y,Z or free"},
    {"end_word", {"a", "--end", "nonsense"}, "expected X,Y or X,Y,Z or start or free"},
    {"end_of_one", {"a", "--end", "1"}, "--end \"1\": expected X,Y"},
    {"end_not_finite", {"a", "--end", "nan,0"}, "X,Y"},
    {"effort_negative", {"a", "--effort", "-1"}, "a whole number from 0 to 1000000"},
    {"effort_of_a_part", {"a", "--effort", "1.5"}, "a whole number"},
    {"effort_too_large", {"a", "--effort", "1e18"}, "a whole number"},
    {"time_limit_zero", {"a", "--time-limit", "0"}, "above 0"},
    {"time_limit_word", {"a", "--time-limit", "soon"}, "above 0"},
    {"tolerance_negative", {"a", "--tolerance", "-1"}, "from 0 up"},
    {"tolerance_word", {"a", "--tolerance", "fine"}, "from 0 up"},
    {"tolerance_infinite", {"a", "--tolerance", "inf"}, "from 0 up"},
    {"rapid_zero", {"a", "--rapid", "0"}, "above 0"},
    {"rapid_nan", {"a", "--rapid", "nan"}, "above 0"},
    {"rapid_negative", {"a", "--rapid", "-5"}, "each a number above 0"},
    {"rapid_of_four_axes", {"a", "--rapid", "1,2,3,4"}, "X or X,Y or X,Y,Z"},
    {"rapid_of_one_bad_axis", {"a", "--rapid", "5000,0"}, "each a number above 0"},
    {"rapid_infinite", {"a", "--rapid", "inf"}, "each a number above 0"},
    {"rapid_too_small_for_a_time", {"a", "--rapid", "1e-300"}, "0.001 to 1000000000"},
    {"rapid_too_large", {"a", "--rapid", "1e10"}, "0.001 to 1000000000"},
    {"rapid_empty", {"a", "--rapid", ""}, "--rapid \"\": expected X"},
    {"rapid_trailing_comma", {"a", "--rapid", "5000,"}, "expected X or X,Y"},
    {"acceleration_zero", {"a", "--acceleration", "0"}, "each a number above 0"},
    {"acceleration_negative", {"a", "--acceleration", "100,-1"}, "each a number above 0"},
    {"acceleration_nan", {"a", "--acceleration", "1,nan,1"}, "each a number above 0"},
    {"acceleration_of_four_axes", {"a", "--acceleration", "1,1,1,1"}, "--acceleration \"1,1,1,1\""},
    {"unknown_measure", {"a", "--measure", "speed"}, "expected length, chebyshev or time"},
    {"units", {"a", "--units", "cm"}, "mm or inch"},
    {"svg_empty", {"a", "--svg", ""}, "--svg \"\": expected the name of a file"},
};

INSTANTIATE_TEST_SUITE_P(lines, order_options_bad, testing::ValuesIn(bad_lines),
                         [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace

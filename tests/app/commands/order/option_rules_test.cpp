// option_rules: options that are fine each by itself, but not together.

#include "commands/order/option_rules.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "shell/command.h"

namespace nmk_order {
namespace {

using Words = std::vector<std::string>;

struct BadPair {
    const char* name;
    Words words;
    const char* expected;  // part of the message

    friend std::ostream& operator<<(std::ostream& out, const BadPair& pair) {
        return out << pair.name;
    }
};

class option_rules : public testing::TestWithParam<BadPair> {};

TEST_P(option_rules, refuse_with_one_line) {
    const auto options = nmk_shell::read_options(declare_order_options, GetParam().words);
    ASSERT_FALSE(options);
    const std::string& problem = options.error().message;
    EXPECT_NE(problem.find(GetParam().expected), std::string::npos) << problem;
    EXPECT_EQ(problem.find('\n'), std::string::npos);
}

const BadPair bad_pairs[] = {
    {"end_at_a_free_start", {"a", "--start", "free", "--end", "start"}, "needs a place as --start"},
    {"closed_with_end", {"a", "--closed", "--end", "1,2"}, "exclude each other"},
    {"closed_with_end_at_start", {"a", "--closed", "--end", "start"}, "exclude each other"},
    {"effort_of_a_sorter", {"a", "--type", "closest", "--effort", "9"}, "are for --type best"},
    {"time_limit_of_a_sorter", {"a", "--type", "x", "--time-limit", "9"}, "are for --type best"},
    {"measure_of_a_sorter", {"a", "--type", "x", "--measure", "time"}, "are for --type best"},
    {"chebyshev_of_a_sorter",
     {"a", "--type", "shortest", "--measure", "chebyshev"},
     "are for --type best"},
    {"output_extension", {"a", "-o", "b.pdf"}, "-o \"b.pdf\": expected the extension .drl, .nc"},
    {"output_directory_with_extension", {"a", "-o", "b.csv/c.d"}, ".drl, .nc, .csv, .json"},
    {"same_output", {"a", "--svg", "b", "--html", "b"}, "the name of two outputs"},
    {"two_files_and_one_output", {"a", "b", "-o", "c.csv"}, "take one FILE"},
    {"skip_blocked_without_keep_outs", {"a", "--skip-blocked"}, "--skip-blocked needs --avoid"},
    {"keep_outs_of_a_sorter", {"a", "--type", "x", "--avoid", "k"}, "--avoid is for --type best"},
    {"standard_input_twice", {"-", "-", "--quiet"}, "standard input can be read once"},
    {"in_place_and_an_output", {"a", "--in-place", "-o", "b.csv"}, "-o names one file"},
    {"in_place_and_a_folder", {"a", "--in-place", "--output-folder", "."}, "exclude each other"},
    {"standard_input_in_place", {"-", "--in-place"}, "--in-place needs files"},
    {"channel_without_its_drawing", {"a", "--debug", "nmkPointSorter"}, "must be given together"},
    {"drawing_of_several_processes",
     {"a", "--debug", "nmkPointSorter", "--debug-svg", "d.svg", "--jobs", "2"},
     "cannot be combined with --jobs"},
    {"heights_without_a_feed",
     {"a", "--depth", "1", "--retract", "5"},
     "the time of a job needs --depth, --retract and --plunge-feed"},
    {"gcode_without_heights", {"a", "-o", "b.nc"}, "G-code needs --depth"},
};

INSTANTIATE_TEST_SUITE_P(pairs, option_rules, testing::ValuesIn(bad_pairs),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(option_rules, are_kept_by_a_file_name_alone) {
    OrderOptions options;
    options.files = {"a.drl"};
    options.file_name = "a.drl";
    EXPECT_EQ(check_rules(options), "");
}

}  // namespace
}  // namespace nmk_order

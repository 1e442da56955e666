// tool_numbers: the numbers of the tools of a program.

#include "formats/gcode/tool_numbers.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace nmk_gcode {
namespace {

struct Names {
    const char* name;
    std::vector<std::string> tools;
    std::vector<int> numbers;

    friend std::ostream& operator<<(std::ostream& out, const Names& names) {
        return out << names.name;
    }
};

class tool_numbers_of : public testing::TestWithParam<Names> {};

TEST_P(tool_numbers_of, are_those_of_the_names_where_all_have_one) {
    std::vector<nmk_job::JobTool> tools;
    for (const std::string& name : GetParam().tools) tools.push_back({name, {}});
    EXPECT_EQ(tool_numbers(tools), GetParam().numbers);
}

INSTANTIATE_TEST_SUITE_P(
    names, tool_numbers_of,
    testing::Values(Names{"numbers_are_kept", {"T3", "t12", "T07"}, {3, 12, 7}},
                    Names{"one_other_name_numbers_all", {"T3", "drill"}, {1, 2}},
                    Names{"equal_numbers_number_all", {"T3", "T03"}, {1, 2}},
                    Names{"zero_numbers_all", {"T0", "T5"}, {1, 2}},
                    Names{"five_digits_number_all", {"T10000", "T5"}, {1, 2}},
                    Names{"a_huge_number_numbers_all", {"T99999999999999999999"}, {1}},
                    Names{"a_sign_or_text_behind_numbers_all", {"T-3", "T4x"}, {1, 2}},
                    Names{"an_empty_name_numbers_all", {"", "T", "T5"}, {1, 2, 3}},
                    Names{"no_tools_have_no_numbers", {}, {}}),
    [](const auto& given) { return std::string(given.param.name); });

}  // namespace
}  // namespace nmk_gcode

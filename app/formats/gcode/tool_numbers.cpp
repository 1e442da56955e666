// tool_numbers: the numbers of the tools of a program.

#include "formats/gcode/tool_numbers.h"

#include <charconv>
#include <numeric>
#include <set>
#include <string_view>

namespace nmk_gcode {

namespace {

constexpr int max_number = 9999;  // controls have four digits for it, or more

/// 3 of "T3"; 0 where the name is another one.
int number_of_name(std::string_view name) {
    if (name.size() < 2 || (name[0] != 'T' && name[0] != 't')) {
        return 0;
    }
    int number = 0;
    const char* const end = name.data() + name.size();
    const auto [rest, error] = std::from_chars(name.data() + 1, end, number);
    const bool is_number = error == std::errc() && rest == end;
    return is_number && number > 0 && number <= max_number ? number : 0;
}

}  // namespace

std::vector<int> tool_numbers(const std::vector<nmk_job::JobTool>& tools) {
    std::vector<int> numbers;
    std::set<int> different;
    for (const nmk_job::JobTool& tool : tools) {
        numbers.push_back(number_of_name(tool.name));
        different.insert(numbers.back());
    }
    if (different.contains(0) || different.size() < tools.size()) {
        std::iota(numbers.begin(), numbers.end(), 1);
    }
    return numbers;
}

}  // namespace nmk_gcode

// command_runner.h: runs the tool with arguments, and expectations of the tests of all commands.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "commands/config/config_command.h"
#include "commands/curve/curve_command.h"
#include "commands/electrode/electrode_command.h"
#include "commands/id/id_command.h"
#include "commands/levels/levels_command.h"
#include "commands/model/model_command.h"
#include "commands/order/order_command.h"
#include "commands/registry/registry_command.h"
#include "commands/route/route_command.h"
#include "commands/solve/solve_command.h"
#include "shell/run_tool.h"

namespace nmk_shell {

/// The commands of the tool, as main lists them.
inline constexpr Command tool_commands[] = {
    // clang-format off
    nmk_order::order_command,
    nmk_route::route_command,
    nmk_solve::solve_command,
    nmk_model::model_command,
    nmk_curve::curve_command,
    nmk_levels::levels_command,
    nmk_id::id_command,
    nmk_registry::registry_command,
    nmk_electrode::electrode_command,
    nmk_config::config_command,
    // clang-format on
};

struct Printed {
    int code;
    std::string out, err;
};

inline Printed run(const std::vector<std::string>& words) {
    std::ostringstream out;
    std::ostringstream err;
    const int code = run_tool(tool_commands, words, out, err);
    return {code, out.str(), err.str()};
}

inline std::string text_of(const std::string& file_name) {
    std::ifstream file(file_name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Expects exit code 2, no output, and one line with `words` as the error.
inline void expect_refused(const Printed& printed, const std::string& words) {
    EXPECT_EQ(printed.code, 2) << printed.err;
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(std::count(printed.err.begin(), printed.err.end(), '\n'), 1) << printed.err;
    EXPECT_TRUE(printed.err.ends_with('\n'));
    EXPECT_NE(printed.err.find(words), std::string::npos) << printed.err;
}

}  // namespace nmk_shell

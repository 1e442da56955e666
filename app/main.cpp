// main: the command-line tool nmk, and the list of its commands.

#include <iostream>
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

namespace {

constexpr nmk_shell::Command commands[] = {
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

}  // namespace

int main(int count, char** arguments) {
    return nmk_shell::run_tool(commands, {arguments + (count > 0 ? 1 : 0), arguments + count},
                               std::cout, std::cerr);
}

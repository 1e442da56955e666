// model_command: `nmk model`: examines, converts and draws triangle models.

#include "commands/model/model_command.h"

#include <nmkprogressbreak/nmkTerminalProgress.h>

#include <cstdio>

#include "commands/model/model_convert.h"
#include "commands/model/model_info.h"
#include "commands/model/model_options.h"
#include "commands/model/model_view.h"
#include "shell/command_result.h"

namespace nmk_model {

namespace {

int run_on_terminal(const ModelOptions& options, std::ostream& out, std::ostream& err) {
    // Draws on a terminal only, but handles Ctrl-C everywhere.
    nmkTerminalProgress progress(options.quiet ? nullptr : stderr);
    return run_model(options, out, err, progress);
}

}  // namespace

int run_model(const ModelOptions& options, std::ostream& out, std::ostream& err,
              nmkProgressBreak& progress) {
    switch (options.action) {
        case Action::info:
            return print_info(options, progress, out, err);
        case Action::convert:
            return convert_model(options, progress, out, err);
        case Action::view:
            return view_model(options, progress, out, err);
    }
    return nmk_shell::bad_input;
}

nmk_shell::Run declare_model(nmk_shell::OptionTable& table) {
    return nmk_shell::declare_command<ModelOptions>(table, declare_model_options, run_on_terminal);
}

}  // namespace nmk_model

// curve_command: `nmk curve`: makes curves and examines those of files.

#include "commands/curve/curve_command.h"

#include "commands/curve/closest_command.h"
#include "commands/curve/compare_command.h"
#include "commands/curve/curve_options.h"
#include "commands/curve/show_curves.h"
#include "shell/command_result.h"

namespace nmk_curve {

namespace {

int run_curve(const CurveOptions& options, std::ostream& out, std::ostream& err) {
    try {
        switch (options.action) {
            case Action::info:
                return show_file(options, out, err);
            case Action::split:
                return show_pieces(options, out, err);
            case Action::compare:
                return compare_files(options, out, err);
            case Action::closest:
                return find_closest(options, out, err);
            default:
                return show_shape(options, out, err);
        }
    } catch (const nmk_text::Error& error) {
        return nmk_shell::refuse(err, error.text());
    }
}

}  // namespace

nmk_shell::Run declare_curve(nmk_shell::OptionTable& table) {
    return nmk_shell::declare_command<CurveOptions>(table, declare_curve_options, run_curve);
}

}  // namespace nmk_curve

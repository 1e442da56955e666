// gcode_options: the options of `nmk order` for G-code alone.

#include "commands/order/gcode_options.h"

namespace nmk_order {

namespace {

constexpr nmk_shell::NumberRange speed{1.0, true, 1e6, "a number from 1 to 1000000"};

}  // namespace

void declare_gcode_options(nmk_shell::OptionTable& table, GcodeOptions& options) {
    table.number("--spindle", "SPEED", options.spindle, speed,
                 "turns per minute, with which G-code starts the spindle");
    table.option("--gcode", options.is_asked,
                 "write G-code, also to - and, as NAME.nc, into --output-folder");
}

}  // namespace nmk_order

// gcode_options.h: the options of `nmk order` for G-code alone; heights and feeds are those of
// machining_options.h.
#pragma once

#include <optional>

#include "shell/option_table.h"

namespace nmk_order {

struct GcodeOptions {
    bool is_asked = false;          // --gcode: whatever the name of the output
    std::optional<double> spindle;  // turns per minute; empty: the program does not start it
};

/// Declares --spindle and --gcode.
void declare_gcode_options(nmk_shell::OptionTable& table, GcodeOptions& options);

}  // namespace nmk_order

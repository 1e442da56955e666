// machining_options.h: the heights and feeds of the machining, for G-code and for the time of a
// job.
#pragma once

#include <optional>

#include "formats/job/machining_job.h"
#include "shell/option_table.h"

namespace nmk_order {

/// As given, in the unit of the command line (order_options.h) and in this unit per minute; empty
/// where an option is missing.
struct MachiningOptions {
    std::optional<double> depth;        // of each cut below its item
    std::optional<double> retract;      // z at which the tool moves between the items
    std::optional<double> plunge_feed;  // straight down
    std::optional<double> feed;         // along a slot
    std::optional<double> tool_change_seconds;
};

/// Declares --depth, --retract, --plunge-feed, --feed and --tool-change-seconds.
void declare_machining_options(nmk_shell::OptionTable& table, MachiningOptions& options);

/// Values that were given in `units`, in mm and mm per minute.
MachiningOptions machining_in_mm(const MachiningOptions& options, nmk_job::JobUnits units);

}  // namespace nmk_order

// machining_options: the heights and feeds of the machining.

#include "commands/order/machining_options.h"

#include "formats/job/job_length.h"

namespace nmk_order {

namespace {

// Far beyond any machine; the numbers still have no exponent in a program.
constexpr nmk_shell::NumberRange length{0.0, false, 1e5, "a number above 0 up to 100000"};
constexpr nmk_shell::NumberRange change{0.0, true, 1e5, "a number from 0 to 100000"};
constexpr nmk_shell::NumberRange rate{0.0, false, 1e6, "a number above 0 up to 1000000"};

}  // namespace

void declare_machining_options(nmk_shell::OptionTable& table, MachiningOptions& options) {
    table.group("Machining");
    table.number("--depth", "DEPTH", options.depth, length, "depth of each cut below its item");
    table.number("--retract", "Z", options.retract, length,
                 "height at which the tool moves between the items");
    table.number("--plunge-feed", "RATE", options.plunge_feed, rate,
                 "feed straight down, a minute; with it, --depth and --retract the time of the job "
                 "is printed");
    table.number("--feed", "RATE", options.feed, rate, "feed along slots, a minute");
    table.number("--tool-change-seconds", "SECONDS", options.tool_change_seconds, change,
                 "seconds of each tool change, for the time of the job (default 0)");
}

MachiningOptions machining_in_mm(const MachiningOptions& options, nmk_job::JobUnits units) {
    MachiningOptions result = options;
    for (std::optional<double>* value :
         {&result.depth, &result.retract, &result.plunge_feed, &result.feed}) {
        if (*value) {
            **value = nmk_job::millimetres_of(**value, units);
        }
    }
    return result;
}

}  // namespace nmk_order

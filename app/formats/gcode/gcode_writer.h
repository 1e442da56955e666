// gcode_writer.h: an ordered job as a program for a mill or a drilling machine.
//
// Plain words that every control reads: G0 and G1, millimetres (G21) or inches (G20), absolute
// coordinates (G90), feeds a minute (G94), exact stops (G61) where rapids bend; coordinates and
// feeds have a decimal point always. A hole is a rapid to its place at the retract height, a
// plunge, and a rapid straight up; a slot is plunged at one end and cut to the other. Between them
// the tool stays at the retract height. Before each tool the program stops (M0) for the change, and
// then goes to where it was, since a change may have moved the tool.
#pragma once

#include <geometry/giPoint3.h>

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "formats/job/job_order.h"
#include "text/result.h"

namespace nmk_gcode {

/// Smaller feeds would vanish in the decimals of a program, and are mistakes of units. mm per
/// minute
inline constexpr double min_feed = 1.0;

/// What a program needs beside the order. Lengths in mm, feeds in mm per minute.
struct GcodeSettings {
    nmk_job::JobUnits units = nmk_job::JobUnits::millimetres;  // of the program
    double depth = 0.0;    // of each cut below the z of its item
    double retract = 0.0;  // z of all rapids
    double plunge_feed = 0.0;
    std::optional<double> feed;     // of slots; may be empty where the order has none
    std::optional<double> spindle;  // turns per minute; empty: the program does not start it
    std::optional<giPoint3> start;  // before the first item of each tool
    std::optional<giPoint3> end;    // after the last item of each tool
    bool is_closed = false;         // after the last item of each tool back to its first
    bool is_across_tools = false;   // these ends are those of the whole order, not of each tool
};

/// The places at which the rapid from one place to another bends.
using Bends = std::function<std::vector<giPoint3>(const giPoint3& from, const giPoint3& to)>;

/// The program. `order` is an order of items of the job, of which some may be missing; `bends` may
/// be empty. An Error where a height or feed cannot be used: the retract height is not above 0 and
/// all items, the depth is below 0.001 mm, a feed is below 1 mm per minute, that of slots missing;
/// where a place is farther than 100 m away, and where the job has parts that no order has.
nmk_text::Result<std::string> write_gcode(const nmk_job::MachiningJob& job,
                                          std::span<const nmk_job::JobCut> order,
                                          const GcodeSettings& settings, const Bends& bends);

}  // namespace nmk_gcode

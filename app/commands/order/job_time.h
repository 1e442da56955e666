// job_time.h: how long the machining of a job takes, as far as its order decides and beyond.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "commands/order/machining_options.h"
#include "commands/order/order_options.h"
#include "commands/order/travel_measure.h"
#include "formats/job/job_order.h"

namespace nmk_order {

/// The parts of the time of a job, in seconds.
struct JobTime {
    double rapids = 0.0;        // between the items, at the retract height
    double plunges = 0.0;       // down to the depth, at the plunge feed
    double slots = 0.0;         // along them, at the feed
    double retracts = 0.0;      // up again, as rapid moves
    double tool_changes = 0.0;  // seconds, too
    std::size_t changes = 0;    // their number

    double total() const { return rapids + plunges + slots + retracts + tool_changes; }
};

struct JobTimes {
    JobTime before, after;
};

/// True where --depth, --retract and --plunge-feed are given, which the time of a job needs.
bool has_job_time(const MachiningOptions& machining);

/// The problem of a command line with some options of the machining, but not these three.
nmk_shell::Problem check_job_time(const OrderOptions& options);

/// Why the time of this job cannot be computed: a slot without --feed, or a retract height that is
/// not above an item. Empty for none, where no time is asked for, and where G-code is
/// written, which has these problems and more.
std::string job_time_problem(const nmk_job::MachiningJob& job, const OrderOptions& options);

/// The time of the cuts of a job in this order; lengths in mm, feeds in mm per minute.
///
///   rapid_seconds  of the moves between them
///   changes        number of tool changes; to have the first tool in the spindle is none
///
/// With the retract height r, the depth d, the plunge feed p, the feed f, the z of the beginning of
/// an item z1 and of its end z2, an item takes
///
///   (r - z1 + d) / p        down
///   length of the slot / f  along it; nothing for a hole
///   the rapid move from z2 - d up to r, with the rate and acceleration of the axis z
///
/// Feeds are taken as constant, without acceleration. A tool change takes --tool-change-seconds,
/// without the moves to the place where it is made.
JobTime job_time(const nmk_job::MachiningJob& job, std::span<const nmk_job::JobCut> order,
                 const MachiningOptions& machining, const RapidMoves& rapids, double rapid_seconds,
                 std::size_t changes);

/// "1:02:03", rounded to seconds.
std::string clock_text(double seconds);

/// "Job: 0:12:05 before, 0:09:01 after (...)." with the parts of the time after ordering.
std::string job_time_text(const JobTimes& times);

}  // namespace nmk_order

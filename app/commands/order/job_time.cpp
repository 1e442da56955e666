// job_time: how long the machining of a job takes.

#include "commands/order/job_time.h"

#include <algorithm>
#include <cmath>

#include "commands/order/gcode_output.h"
#include "formats/gcode/gcode_writer.h"
#include "text/number_format.h"

namespace nmk_order {

namespace {

constexpr double seconds_in_a_minute = 60.0;

// Below the range of whole numbers; far more than the age of the world.
constexpr double max_clock_seconds = 1e18;

bool has_some(const MachiningOptions& machining) {
    return machining.depth || machining.retract || machining.plunge_feed || machining.feed ||
           machining.tool_change_seconds;
}

double feed_seconds(double length, double mm_per_minute) {
    return length / mm_per_minute * seconds_in_a_minute;
}

double highest(const nmk_job::JobItem& item) {
    return item.end ? std::max(item.start.z, item.end->z) : item.start.z;
}

std::string two_digits(long long number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

}  // namespace

bool has_job_time(const MachiningOptions& machining) {
    return machining.depth && machining.retract && machining.plunge_feed;
}

nmk_shell::Problem check_job_time(const OrderOptions& options) {
    const MachiningOptions& machining = options.machining;
    if (has_job_time(machining) || !has_some(machining)) {
        return {};
    }
    return "the time of a job needs --depth, --retract and --plunge-feed";
}

std::string job_time_problem(const nmk_job::MachiningJob& job, const OrderOptions& options) {
    if (!has_job_time(options.machining) || writes_gcode(options)) {
        return {};
    }
    const MachiningOptions machining =
        machining_in_mm(options.machining, options.units.value_or(job.units));
    if (std::min(*machining.plunge_feed, machining.feed.value_or(nmk_gcode::min_feed)) <
        nmk_gcode::min_feed) {
        return "expected feeds of at least 1 mm per minute";
    }
    for (const nmk_job::JobItem& item : job.items) {
        if (item.end && !machining.feed) {
            return "the time of slots needs --feed";
        }
        if (!(highest(item) < *machining.retract)) {
            return "an item is at z " + nmk_text::short_number(highest(item), 3) +
                   " mm; expected a retract height above it";
        }
    }
    return {};
}

JobTime job_time(const nmk_job::MachiningJob& job, std::span<const nmk_job::JobCut> order,
                 const MachiningOptions& machining, const RapidMoves& rapids, double rapid_seconds,
                 std::size_t changes) {
    JobTime time;
    time.rapids = rapid_seconds;
    time.changes = changes;
    time.tool_changes = static_cast<double>(changes) * machining.tool_change_seconds.value_or(0.0);
    const double depth = machining.depth.value_or(0.0);
    const double retract = machining.retract.value_or(0.0);
    for (const nmk_job::JobCut& cut : order) {
        const nmk_job::JobItem& item = job.items[cut.item];
        const giPoint3& entry = nmk_job::entry_of(item, cut.reversed);
        const giPoint3& exit = nmk_job::exit_of(item, cut.reversed);
        time.plunges +=
            feed_seconds(retract - entry.z + depth, machining.plunge_feed.value_or(1.0));
        if (item.end) {
            time.slots += feed_seconds(entry.distance(exit), machining.feed.value_or(1.0));
        }
        time.retracts += nmk_order::rapid_seconds(giPoint3(exit.x, exit.y, exit.z - depth),
                                                  giPoint3(exit.x, exit.y, retract), rapids);
    }
    return time;
}

std::string clock_text(double seconds) {
    const long long whole = std::llround(std::min(seconds, max_clock_seconds));
    return std::to_string(whole / 3600) + ":" + two_digits(whole / 60 % 60) + ":" +
           two_digits(whole % 60);
}

std::string job_time_text(const JobTimes& times) {
    const JobTime& after = times.after;
    const auto part = [](const char* name, double seconds) {
        return std::string(name) + " " + nmk_text::fixed_number(seconds, 1) + " s";
    };
    return "Job: " + clock_text(times.before.total()) + " before, " + clock_text(after.total()) +
           " after (" + part("rapids", after.rapids) + ", " + part("plunges", after.plunges) +
           ", " + part("slots", after.slots) + ", " + part("retracts", after.retracts) + ", " +
           std::to_string(after.changes) +
           part(after.changes == 1 ? " tool change" : " tool changes", after.tool_changes) + ").";
}

}  // namespace nmk_order

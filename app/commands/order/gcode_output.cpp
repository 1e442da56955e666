// gcode_output: the ordered items as a program for a mill or a drilling machine.

#include "commands/order/gcode_output.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "commands/order/travel_ends.h"
#include "files/read_whole_file.h"
#include "formats/gcode/gcode_writer.h"
#include "formats/job_files/job_format.h"
#include "text/escaped_text.h"

namespace nmk_order {

namespace {

using nmk_shell::Problem;

bool names_gcode(const std::string& name) {
    return name == nmk_files::standard_stream || nmk_job_files::names_gcode_program(name) ||
           nmk_job_files::name_ending(name) == "tap";
}

Problem check_asked(const OrderOptions& options) {
    if (options.in_place) {
        return "--gcode and --in-place exclude each other; expected --output-folder";
    }
    if (options.output_file.empty() && options.output_folder.empty()) {
        return "--gcode needs -o or --output-folder";
    }
    if (!options.output_file.empty() && !names_gcode(options.output_file)) {
        return "-o " + nmk_text::quoted(options.output_file) +
               ": with --gcode expected the extension .nc, .ngc, .gcode or .tap, or -";
    }
    return {};
}

Problem check_heights_and_feeds(const MachiningOptions& machining) {
    std::string missing;
    for (const auto& [value, name] : {std::pair(machining.depth, "--depth"),
                                      {machining.retract, "--retract"},
                                      {machining.plunge_feed, "--plunge-feed"}}) {
        if (!value) {
            missing += (missing.empty() ? "" : " and ") + std::string(name);
        }
    }
    return missing.empty()
               ? Problem()
               : "G-code needs --depth, --retract and --plunge-feed; missing " + missing;
}

bool has_slots(const nmk_job::MachiningJob& job, const nmk_job::JobOrder& order) {
    return std::any_of(order.begin(), order.end(), [&](const nmk_job::JobCut& cut) {
        return job.items[cut.item].end.has_value();
    });
}

nmk_gcode::GcodeSettings settings_of(const nmk_job::MachiningJob& job, const OrderRequest& request,
                                     const OrderOptions& options) {
    const MachiningOptions machining =
        machining_in_mm(options.machining, options.units.value_or(job.units));
    nmk_gcode::GcodeSettings settings;
    settings.units = job.units;
    settings.depth = machining.depth.value_or(0.0);
    settings.retract = machining.retract.value_or(0.0);
    settings.plunge_feed = machining.plunge_feed.value_or(0.0);
    settings.feed = machining.feed;
    settings.spindle = options.gcode.spindle;
    settings.start = request.ends.start;
    settings.end = request.ends.end;
    settings.is_closed = request.ends.is_closed;
    settings.is_across_tools = request.across_tools;
    return settings;
}

}  // namespace

bool writes_gcode(const OrderOptions& options) {
    const std::string& name = options.output_file;
    const bool is_by_name =
        nmk_job_files::names_gcode_program(name) && !options.keeps_format &&
        nmk_job_files::name_ending(name) != nmk_job_files::name_ending(options.file_name);
    return !name.empty() && (options.gcode.is_asked || is_by_name);
}

Problem check_gcode(const OrderOptions& options) {
    if (options.gcode.is_asked) {
        if (Problem problem = check_asked(options); !problem.empty()) {
            return problem;
        }
    } else if (!writes_gcode(options)) {
        return options.gcode.spindle
                   ? "--spindle is for G-code; expected -o with .nc, .ngc or .gcode, or --gcode"
                   : Problem();
    }
    return check_heights_and_feeds(options.machining);
}

std::string gcode_name(const std::string& file_name) {
    const std::string ending = nmk_job_files::name_ending(file_name);
    return file_name.substr(0, file_name.size() - (ending.empty() ? 0 : ending.size() + 1)) + ".nc";
}

nmk_text::Result<std::string> gcode_text(const nmk_job::MachiningJob& job,
                                         const OrderedJob& ordered, const OrderRequest& request,
                                         const OrderOptions& options) {
    const auto fault = [&](const std::string& message) {
        return nmk_text::Error{job.file_name, 0, "cannot write G-code: " + message};
    };
    if (!options.machining.feed && has_slots(job, ordered.after)) {
        return fault("slots need --feed");
    }
    const auto bends = [&](const giPoint3& from, const giPoint3& to) {
        const std::vector<giPoint3> places = places_of_move(from, to, request.ends);
        return std::vector<giPoint3>(places.begin() + 1, places.end() - 1);
    };
    auto text =
        nmk_gcode::write_gcode(job, ordered.after, settings_of(job, request, options), bends);
    if (!text) {
        return fault(text.error().message);
    }
    return text;
}

}  // namespace nmk_order

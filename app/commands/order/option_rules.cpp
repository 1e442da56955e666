// option_rules: what the options of `nmk order` need of each other.

#include "commands/order/option_rules.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <span>
#include <string_view>
#include <system_error>

#include "commands/order/gcode_output.h"
#include "commands/order/job_time.h"
#include "files/read_whole_file.h"
#include "files/same_file.h"
#include "formats/job_files/write_job.h"
#include "shell/output_names.h"
#include "text/escaped_text.h"

namespace nmk_order {

namespace {

namespace fs = std::filesystem;

using nmk_shell::Problem;

Problem check_ends(const OrderOptions& options) {
    if (options.is_closed && (options.end || options.ends_at_start)) {
        return "--closed and --end exclude each other";
    }
    return options.ends_at_start && !options.start ? "--end start needs a place as --start"
                                                   : Problem();
}

Problem check_search(const OrderOptions& options) {
    if (!options.type) {
        return {};
    }
    if (options.effort || options.time_limit) {
        return "--effort and --time-limit are for --type best";
    }
    return options.measure.kind != nmkTravelMeasure::length
               ? "--measure chebyshev and time are for --type best; the table has the times of "
                 "every type"
               : Problem();
}

Problem check_avoid(const OrderOptions& options) {
    if (options.skip_blocked && options.avoid_file.empty()) {
        return "--skip-blocked needs --avoid";
    }
    const bool is_other_type = !options.avoid_file.empty() && options.type;
    return is_other_type ? "--avoid is for --type best" : Problem();
}

/// No output may replace the keep-outs.
Problem check_avoid_file_is_kept(const OrderOptions& options) {
    if (options.avoid_file.empty()) {
        return {};
    }
    for (const std::string& file : options.files) {
        const std::string output = options_of_file(options, file).output_file;
        const std::string_view outputs[] = {output, options.svg_file, options.html_file,
                                            options.debug_svg_file};
        Problem problem = nmk_shell::check_input_is_kept(options.avoid_file, outputs);
        if (!problem.empty()) {
            return problem;
        }
    }
    return {};
}

bool is_stream(const std::string& name) { return name == nmk_files::standard_stream; }

/// -o may be the input file, which is then ordered in place; a picture would destroy it.
Problem check_names(const OrderOptions& options) {
    const std::string_view outputs[] = {options.output_file, options.svg_file, options.html_file,
                                        options.debug_svg_file};
    Problem problem =
        nmk_shell::check_input_is_kept(options.file_name, std::span(outputs).subspan(1));
    return problem.empty() ? nmk_shell::check_outputs_differ(outputs) : problem;
}

Problem check_output(const OrderOptions& options) {
    const std::string& name = options.output_file;
    if (name.empty() || is_stream(name) || writes_gcode(options) ||
        nmk_job_files::names_output(name, options.files.front())) {
        return {};
    }
    return "-o " + nmk_text::quoted(name) +
           ": expected the extension .drl, .nc, .csv, .json or that of the input";
}

/// The names of the files that --in-place and --output-folder write.
Problem check_files_differ(const OrderOptions& options) {
    std::set<std::string> names;
    for (const std::string& file : options.files) {
        const OrderOptions of_file = options_of_file(options, file);
        if (options.in_place && is_stream(file)) {
            return "--in-place needs files; standard input cannot be replaced";
        }
        if (!options.in_place && nmk_files::is_same_file(file, of_file.output_file)) {
            return nmk_text::quoted(file) + " is in --output-folder; expected --in-place";
        }
        std::error_code ignored;
        if (!names.insert(fs::weakly_canonical(of_file.output_file, ignored).string()).second) {
            return nmk_text::quoted(of_file.output_file) +
                   " is the name of two outputs; expected files of different names";
        }
    }
    return {};
}

Problem check_several(const OrderOptions& options) {
    if (options.in_place && !options.output_folder.empty()) {
        return "--in-place and --output-folder exclude each other";
    }
    const bool writes_all = options.in_place || !options.output_folder.empty();
    if (writes_all && !options.output_file.empty()) {
        return "-o names one file; it cannot be combined with --in-place or --output-folder";
    }
    if (options.files.size() > 1 &&
        !(options.output_file + options.svg_file + options.html_file + options.debug_svg_file)
             .empty()) {
        return "-o, --svg, --html and --debug-svg take one FILE; several are written with "
               "--in-place or --output-folder";
    }
    const bool is_avoid_file_read = options.avoid_file == nmk_files::standard_stream;
    if (std::count(options.files.begin(), options.files.end(), nmk_files::standard_stream) +
            (is_avoid_file_read ? 1 : 0) >
        1) {
        return "standard input can be read once; found \"-\" twice";
    }
    return writes_all ? check_files_differ(options) : Problem();
}

}  // namespace

Problem check_rules(const OrderOptions& options) {
    if (options.debug_channel.name.empty() != options.debug_svg_file.empty()) {
        return "--debug CHANNEL and --debug-svg FILE must be given together";
    }
    if (options.jobs > 1 && !options.debug_svg_file.empty()) {
        return "--debug draws what one process does; it cannot be combined with --jobs";
    }
    for (const auto& rule : {check_several, check_gcode, check_output, check_names, check_ends,
                             check_search, check_avoid, check_avoid_file_is_kept, check_job_time}) {
        if (Problem problem = rule(options); !problem.empty()) {
            return problem;
        }
    }
    return {};
}

}  // namespace nmk_order

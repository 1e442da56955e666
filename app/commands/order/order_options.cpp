// order_options: the command line of `nmk order`.

#include "commands/order/order_options.h"

#include <filesystem>
#include <span>
#include <system_error>

#include "commands/order/gcode_output.h"
#include "commands/order/option_rules.h"
#include "commands/order/sort_type_names.h"
#include "files/base_name.h"
#include "files/read_whole_file.h"
#include "formats/job/job_length.h"
#include "shell/command_result.h"
#include "text/number_reader.h"

namespace nmk_order {

namespace {

namespace fs = std::filesystem;

using nmk_shell::Argument;
using nmk_shell::Problem;

constexpr int max_effort = 1'000'000;

OrderRequest::Clock::duration seconds_until_deadline(double seconds) {
    return std::chrono::duration_cast<OrderRequest::Clock::duration>(
        std::chrono::duration<double>(seconds));
}

constexpr nmk_shell::Choice<nmk_job::JobUnits> unit_names[] = {
    {"mm", nmk_job::JobUnits::millimetres}, {"inch", nmk_job::JobUnits::inches}};

constexpr nmk_shell::Choice<nmk_job::JobFormat> formats[] = {
    {"drill", nmk_job::JobFormat::excellon},
    {"csv", nmk_job::JobFormat::csv},
    {"tsplib", nmk_job::JobFormat::tsplib}};

std::optional<Place> read_place(const std::string& value) {
    const std::vector<double> numbers = nmk_text::read_coordinates(value);
    if (numbers.size() != 2 && numbers.size() != 3) {
        return {};
    }
    return Place{numbers[0], numbers[1], numbers.size() > 2 ? numbers[2] : 0.0};
}

Problem set_start(OrderOptions& options, const std::string& value) {
    options.start = read_place(value);
    return options.start || nmk_shell::is_same_word(value, "free")
               ? Problem()
               : "expected X,Y or X,Y,Z or free";
}

Problem set_end(OrderOptions& options, const std::string& value) {
    options.end = read_place(value);
    options.ends_at_start = nmk_shell::is_same_word(value, "start");
    return options.end || options.ends_at_start || nmk_shell::is_same_word(value, "free")
               ? Problem()
               : "expected X,Y or X,Y,Z or start or free";
}

Problem set_folder(OrderOptions& options, const std::string& value) {
    std::error_code ignored;
    if (!fs::is_directory(value, ignored)) {
        return "expected a directory that exists";
    }
    options.output_folder = value;
    return {};
}

void declare_ordering(nmk_shell::OptionTable& table, OrderOptions& options) {
    table.group("Ordering");
    table.choice("--type", "NAME", options.type, sort_types(), "how to order");
    table.number("--effort", "N", options.effort,
                 nmk_shell::whole_number(0, max_effort, "a whole number from 0 to 1000000"),
                 "steps of the search for each item (type best; default 10 for a hole and 1 for a "
                 "slot, fewer past 20,000 items)");
    table.number("--time-limit", "SECONDS", options.time_limit, nmk_shell::above_zero,
                 "end the search so long after the start of the command (type best)");
    table.option("--across-tools", options.across_tools,
                 "one order of all items, whatever their tool");
    table.option("--merge-tools", options.merge_tools,
                 "make one tool of those with one diameter, in the written file too");
    table.option(
        "--start", "X,Y[,Z]|free",
        [&](const std::string& value) { return set_start(options, value); },
        "place of the cutter before the first item of each tool; free: wherever that is (default "
        "0,0)");
    table.option(
        "--end", "X,Y[,Z]|start|free",
        [&](const std::string& value) { return set_end(options, value); },
        "place of the cutter after the last item of each tool; start: that of --start (default "
        "free)");
    table.option("--closed", options.is_closed,
                 "after the last item of each tool back to its first");
    declare_measure_options(table, options.measure);
    table
        .option("--avoid", "FILE", nmk_shell::file_setter(options.avoid_file),
                "keep-outs (CSV: circle,X,Y,R; rectangle,X0,Y0,X1,Y1; ...) that every move goes "
                "around (type best)")
        .completes = nmk_shell::Completes::files;
    table.option("--skip-blocked", options.skip_blocked,
                 "leave out the items that keep-outs block, and list them");
    table.number("--tolerance", "T", options.tolerance, nmk_shell::from_zero,
                 "largest difference of items in one row (x, y, diag..., concentric); default "
                 "0.1 mm");
    table.choice("--units", "UNIT", options.units, std::span(unit_names),
                 "unit of --start, --end and --tolerance, of rates, accelerations, heights and "
                 "feeds, and of a file that states none");
}

void declare_files(nmk_shell::OptionTable& table, OrderOptions& options) {
    table.group("Files to write");
    table.output_file("-o,--output", options.output_file,
                      "the ordered items: .drl (from a drill file), .nc (G-code, also .ngc and "
                      ".gcode), .csv, .json, or the extension of the input; may be the input "
                      "itself; - is standard output in the format of the input");
    table.option("--in-place", options.in_place, "replace each input by its ordered items");
    table
        .option(
            "--output-folder", "DIR",
            [&](const std::string& value) { return set_folder(options, value); },
            "write each ordered input into this directory, under its own name")
        .completes = nmk_shell::Completes::files;
    table.output_file("--svg", options.svg_file, "a drawing of before and after, side by side");
    table.output_file("--html", options.html_file, "a page with the drawing and the figures");
    Argument& channel = table.option(
        "--debug", "CHANNEL",
        [&](const std::string& value) {
            Problem problem;
            read_debug_channel(value, options.debug_channel, problem);
            return problem;
        },
        "draw a debug channel of the library; CHANNEL=LEVEL sets its level");
    channel.choices = {{"nmkPointSorter", "the points before and after"},
                       {"nmkAnnealStateNonReversible", "one-way lines"}};
    table.output_file("--debug-svg", options.debug_svg_file,
                      "the drawing of the debug channel; needs --debug");
}

void declare_figures(nmk_shell::OptionTable& table, OrderOptions& options) {
    table.group("Figures");
    table.option("--allow-empty", options.allow_empty,
                 "a file without holes and slots is not an error");
    table.option("--json", options.json, "print the figures as JSON instead of the table");
    table.option("--quiet", options.quiet, "print no table and no progress; --json still prints");
}

}  // namespace

void declare_order_options(nmk_shell::OptionTable& table, OrderOptions& options) {
    table.describe(
        "Reads drill files (Excellon), CSV (x,y[,z] for holes; x,y,z,x2,y2,z2 for slots) and "
        "TSPLIB. Each tool is ordered by itself; slots may be cut from either end.");
    table.input_files("FILE", options.files, "the holes and slots to order; - is standard input");
    table.choice("--format", "NAME", options.format, std::span(formats),
                 "the format of a file whose content leaves it open");
    table.number("--jobs", "N", options.jobs,
                 nmk_shell::whole_number(1, 64, "a whole number from 1 to 64"),
                 "work on so many tools at once, of all files");
    declare_ordering(table, options);
    declare_files(table, options);
    declare_machining_options(table, options.machining);
    declare_gcode_options(table, options.gcode);
    declare_figures(table, options);
    table.check([&options] {
        options.file_name = options.files.front();
        return check_rules(options);
    });
    table.remark(
        "Travel is counted for each tool, from --start to its first item, between its items, and "
        "to "
        "--end. Ctrl-C keeps the best order so far, or the items ordered so far; the others follow "
        "in the order of the file.");
    table.exit_code(nmk_shell::done, "done, also after Ctrl-C, with a complete order");
    table.exit_code(
        nmk_shell::no_result,
        "no holes and slots in the file, items or places that keep-outs block, or no result");
    table.example("nmk order samples/cover_plate.drl --svg cover.svg -o ordered.drl");
    table.example("nmk order samples/*.csv --output-folder /tmp --jobs 2");
}

OrderOptions options_of_file(const OrderOptions& options, const std::string& file) {
    OrderOptions result = options;
    result.file_name = file;
    result.keeps_format = options.in_place || !options.output_folder.empty();
    if (options.in_place) {
        result.output_file = file;
    } else if (!options.output_folder.empty()) {
        const std::string name = nmk_files::base_name(nmk_files::input_name(file));
        result.output_file =
            options.output_folder + "/" + (options.gcode.is_asked ? gcode_name(name) : name);
    }
    return result;
}

OrderRequest order_request(const OrderOptions& options, nmk_job::JobUnits file_units,
                           OrderRequest::Clock::time_point begin) {
    const nmk_job::JobUnits given = options.units.value_or(file_units);
    const auto mm = [&](double length) { return nmk_job::millimetres_of(length, given); };
    const auto point = [&](const std::optional<Place>& place) -> std::optional<giPoint3> {
        if (!place) {
            return {};
        }
        return giPoint3(mm((*place)[0]), mm((*place)[1]), mm((*place)[2]));
    };
    OrderRequest request;
    request.type = options.type;
    request.across_tools = options.across_tools;
    request.ends.start = point(options.start);
    request.ends.end = options.ends_at_start ? request.ends.start : point(options.end);
    request.ends.is_closed = options.is_closed;
    if (options.effort) {
        request.effort = static_cast<std::int64_t>(*options.effort);
    }
    if (options.time_limit) {
        request.deadline = begin + seconds_until_deadline(*options.time_limit);
    }
    request.measure = measure_in_mm(options.measure, given);
    request.tolerance = options.tolerance ? mm(*options.tolerance) : default_tolerance;
    return request;
}

}  // namespace nmk_order

// order_options: the command line of `nmk order`.

#include "commands/order/order_options.h"

#include <span>
#include <string_view>

#include "commands/order/sort_type_names.h"
#include "formats/job/job_length.h"
#include "formats/job_files/job_format.h"
#include "shell/command_result.h"
#include "shell/output_names.h"
#include "text/number_reader.h"

namespace nmk_order {

namespace {

using nmk_shell::Argument;
using nmk_shell::Problem;

constexpr nmk_shell::Choice<nmk_job::JobUnits> units[] = {{"mm", nmk_job::JobUnits::millimetres},
                                                          {"inch", nmk_job::JobUnits::inches}};

Problem set_start(OrderOptions& options, const std::string& value) {
    const std::vector<double> numbers = nmk_text::read_coordinates(value);
    if (numbers.size() != 2 && numbers.size() != 3) {
        return "expected X,Y or X,Y,Z";
    }
    options.start = {numbers[0], numbers[1], numbers.size() > 2 ? numbers[2] : 0.0};
    return {};
}

Problem set_output(OrderOptions& options, const std::string& value) {
    const std::string ending = nmk_job_files::name_ending(value);
    if (ending != "drl" && ending != "csv" && ending != "json") {
        return "expected a file with the extension .drl, .csv or .json";
    }
    options.output_file = value;
    return {};
}

Problem check(const OrderOptions& options) {
    if (options.debug_channel.name.empty() != options.debug_svg_file.empty()) {
        return "--debug CHANNEL and --debug-svg FILE must be given together";
    }
    const std::string_view outputs[] = {options.output_file, options.svg_file, options.html_file,
                                        options.debug_svg_file};
    // -o may be the input file, which is then ordered in place; a picture would destroy it.
    Problem problem =
        nmk_shell::check_input_is_kept(options.file_name, std::span(outputs).subspan(1));
    return problem.empty() ? nmk_shell::check_outputs_differ(outputs) : problem;
}

void declare_ordering(nmk_shell::OptionTable& table, OrderOptions& options) {
    table.group("Ordering");
    table.choice("--type", "NAME", options.type, sort_types(), "how to order");
    table.option("--across-tools", options.across_tools,
                 "one order of all items, whatever their tool");
    table.option(
        "--start", "X,Y[,Z]", [&](const std::string& value) { return set_start(options, value); },
        "position of the cutter before the first item of each tool (default 0,0)");
    table.number("--tolerance", "T", options.tolerance, nmk_shell::from_zero,
                 "largest difference of items in one row (x, y, diag..., concentric); default "
                 "0.1 mm");
    table.choice("--units", "UNIT", options.units, std::span(units),
                 "unit of --start and --tolerance, and of a file that states none");
}

void declare_files(nmk_shell::OptionTable& table, OrderOptions& options) {
    table.group("Files to write");
    table
        .option(
            "-o,--output", "OUT",
            [&](const std::string& value) { return set_output(options, value); },
            "the ordered items: .drl (from a drill file), .csv or .json; OUT may be FILE "
            "itself")
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
    table.number("--rapid", "RATE", options.rapid, nmk_shell::above_zero,
                 "mm per minute, for the seconds in the table");
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
    table.input_file("FILE", options.file_name, "the holes and slots to order");
    declare_ordering(table, options);
    declare_files(table, options);
    declare_figures(table, options);
    table.check([&options] { return check(options); });
    table.remark(
        "Travel is counted within each tool, from its first item to its last. Ctrl-C keeps the "
        "items ordered so far; the others follow in the order of the file.");
    table.exit_code(nmk_shell::done, "done, also after Ctrl-C, with a complete order");
    table.exit_code(nmk_shell::no_result, "no holes and slots in the file, or no result");
    table.example("nmk order samples/cover_plate.drl --svg cover.svg -o ordered.drl");
}

OrderRequest order_request(const OrderOptions& options, nmk_job::JobUnits file_units) {
    const nmk_job::JobUnits given = options.units.value_or(file_units);
    const auto mm = [&](double length) { return nmk_job::millimetres_of(length, given); };
    OrderRequest request;
    request.type = options.type;
    request.across_tools = options.across_tools;
    request.start = giPoint3(mm(options.start[0]), mm(options.start[1]), mm(options.start[2]));
    request.tolerance = options.tolerance ? mm(*options.tolerance) : default_tolerance;
    return request;
}

}  // namespace nmk_order

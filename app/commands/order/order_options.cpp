// order_options: the command line of `nmk order`.

#include "commands/order/order_options.h"

#include <string_view>

#include "commands/order/sort_type_names.h"
#include "formats/job/job_length.h"
#include "formats/job_files/job_format.h"
#include "shell/command_options.h"
#include "text/escaped_text.h"
#include "text/number_reader.h"

namespace nmk_order {

namespace {

using Problem = std::string;  // empty: none

Problem set_type(OrderOptions& options, const std::string& value) {
    const auto type = sort_type_of_name(value);
    if (!type) {
        return "--type " + nmk_text::quoted(value) + " is unknown; expected " +
               sort_type_name_list();
    }
    options.type = *type;
    return {};
}

Problem set_start(OrderOptions& options, const std::string& value) {
    const std::vector<double> numbers = nmk_text::read_coordinates(value);
    if (numbers.size() != 2 && numbers.size() != 3) {
        return "--start " + nmk_text::quoted(value) + " is not a point; expected X,Y or X,Y,Z";
    }
    options.start = {numbers[0], numbers[1], numbers.size() > 2 ? numbers[2] : 0.0};
    return {};
}

Problem set_tolerance(OrderOptions& options, const std::string& value) {
    const auto number = nmk_text::read_coordinate(value);
    if (!number || *number < 0.0) {
        return "--tolerance " + nmk_text::quoted(value) +
               " is not a length; expected a number from 0 up";
    }
    options.tolerance = *number;
    return {};
}

Problem set_rapid(OrderOptions& options, const std::string& value) {
    const auto number = nmk_text::read_coordinate(value);
    if (!number || *number <= 0.0) {
        return "--rapid " + nmk_text::quoted(value) +
               " is not a rate; expected mm per minute, above 0";
    }
    options.rapid = *number;
    return {};
}

Problem set_units(OrderOptions& options, const std::string& value) {
    if (value != "mm" && value != "inch") {
        return "--units " + nmk_text::quoted(value) + " is unknown; expected mm or inch";
    }
    options.units = value == "mm" ? nmk_job::JobUnits::millimetres : nmk_job::JobUnits::inches;
    return {};
}

Problem set_output(OrderOptions& options, const std::string& value) {
    const std::string ending = nmk_job_files::name_ending(value);
    if (ending != "drl" && ending != "csv" && ending != "json") {
        return "-o " + nmk_text::quoted(value) +
               " has no known extension; expected .drl, .csv or .json";
    }
    return nmk_shell::set_output_file<OrderOptions, &OrderOptions::output_file>(options, value);
}

Problem set_debug(OrderOptions& options, const std::string& value) {
    Problem problem;
    read_debug_channel(value, options.debug_channel, problem);
    return problem;
}

constexpr nmk_shell::ValueOption<OrderOptions> value_options[] = {
    {"--type", set_type},
    {"--start", set_start},
    {"--tolerance", set_tolerance},
    {"--units", set_units},
    {"--rapid", set_rapid},
    {"-o", set_output},
    {"--output", set_output},
    {"--svg", nmk_shell::set_output_file<OrderOptions, &OrderOptions::svg_file>},
    {"--html", nmk_shell::set_output_file<OrderOptions, &OrderOptions::html_file>},
    {"--debug", set_debug},
    {"--debug-svg", nmk_shell::set_output_file<OrderOptions, &OrderOptions::debug_svg_file>},
};

constexpr nmk_shell::SwitchOption<OrderOptions> switches[] = {
    {"--across-tools", &OrderOptions::across_tools},
    {"--json", &OrderOptions::json},
    {"--quiet", &OrderOptions::quiet},
};

Problem check(OrderOptions& options) {
    if (options.file_name.empty()) {
        return "expected the name of a file: nmk order FILE; see nmk help order";
    }
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

constexpr nmk_shell::OptionTable<OrderOptions> table{
    "order", value_options, switches, &nmk_shell::set_file_name<OrderOptions>, check};

}  // namespace

nmk_text::Result<OrderOptions> read_order_options(const std::vector<std::string>& arguments) {
    return nmk_shell::read_options(table, arguments);
}

OrderRequest order_request(const OrderOptions& options, nmk_job::JobUnits file_units) {
    const nmk_job::JobUnits units = options.units.value_or(file_units);
    const auto mm = [&](double length) { return nmk_job::millimetres_of(length, units); };
    OrderRequest request;
    request.type = options.type;
    request.across_tools = options.across_tools;
    request.start = giPoint3(mm(options.start[0]), mm(options.start[1]), mm(options.start[2]));
    request.tolerance = options.tolerance ? mm(*options.tolerance) : default_tolerance;
    return request;
}

}  // namespace nmk_order

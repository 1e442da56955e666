// order_options: what a person asks of `nmk order`.

#include "order/order_options.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "order/sort_type_names.h"
#include "order/text_number.h"

namespace nmk_app {

namespace {

using Problem = std::string;  // empty: none

constexpr double mm_per_inch = 25.4;

Problem set_type(OrderOptions& options, const std::string& value) {
    const auto type = sort_type_of_name(value);
    if (!type) {
        return "--type " + quoted(value) + " cannot be sorted; the types are " +
               sort_type_name_list();
    }
    options.type = *type;
    return {};
}

Problem set_start(OrderOptions& options, const std::string& value) {
    const Problem problem = "--start " + quoted(value) + " is not a point; expected X,Y or X,Y,Z";
    std::array<double, 3> point{0.0, 0.0, 0.0};
    std::size_t count = 0;
    for (std::size_t begin = 0; begin <= value.size(); ++count) {
        const std::size_t end = std::min(value.find(',', begin), value.size());
        const auto number = read_coordinate(std::string_view(value).substr(begin, end - begin));
        if (count == point.size() || !number) {
            return problem;
        }
        point[count] = *number;
        begin = end + 1;
    }
    if (count < 2) {
        return problem;
    }
    options.start = point;
    return {};
}

Problem set_tolerance(OrderOptions& options, const std::string& value) {
    const auto number = read_coordinate(value);
    if (!number || *number < 0.0) {
        return "--tolerance " + quoted(value) + " is not a length; expected a number from 0 up";
    }
    options.tolerance = *number;
    return {};
}

Problem set_rapid(OrderOptions& options, const std::string& value) {
    const auto number = read_coordinate(value);
    if (!number || *number <= 0.0) {
        return "--rapid " + quoted(value) + " is not a rate; expected mm per minute, above 0";
    }
    options.rapid = *number;
    return {};
}

Problem set_units(OrderOptions& options, const std::string& value) {
    if (value != "mm" && value != "inch") {
        return "--units " + quoted(value) + " is unknown; expected mm or inch";
    }
    options.units = value == "mm" ? JobUnits::millimetres : JobUnits::inches;
    return {};
}

template <std::string OrderOptions::*file>
Problem set_file(OrderOptions& options, const std::string& value) {
    if (value.empty()) {
        return "a file to write needs a name";
    }
    options.*file = value;
    return {};
}

Problem set_output(OrderOptions& options, const std::string& value) {
    const bool known =
        value.ends_with(".drl") || value.ends_with(".csv") || value.ends_with(".json");
    if (!known) {
        return "-o " + quoted(value) + " has no known ending; expected .drl, .csv or .json";
    }
    return set_file<&OrderOptions::output_file>(options, value);
}

struct ValueOption {
    std::string_view name;
    Problem (*set)(OrderOptions&, const std::string& value);
};

constexpr ValueOption value_options[] = {
    {"--type", set_type},
    {"--start", set_start},
    {"--tolerance", set_tolerance},
    {"--units", set_units},
    {"--rapid", set_rapid},
    {"-o", set_output},
    {"--output", set_output},
    {"--svg", set_file<&OrderOptions::svg_file>},
    {"--html", set_file<&OrderOptions::html_file>},
};

struct Switch {
    std::string_view name;
    bool OrderOptions::*flag;
};

constexpr Switch switches[] = {
    {"--across-tools", &OrderOptions::across_tools},
    {"--json", &OrderOptions::json},
    {"--quiet", &OrderOptions::quiet},
};

Problem set_file_name(OrderOptions& options, const std::string& argument) {
    if (!options.file_name.empty()) {
        return "one file at a time; " + quoted(argument) + " is a second one";
    }
    if (argument.empty()) {
        return "the name of the file is empty";
    }
    options.file_name = argument;
    return {};
}

/// Reads the option at `i`, and its value where it has one: `--name value` or `--name=value`.
Problem read_option(OrderOptions& options, const std::vector<std::string>& arguments,
                    std::size_t& i) {
    const std::string& argument = arguments[i];
    for (const Switch& known : switches) {
        if (argument == known.name) {
            options.*known.flag = true;
            return {};
        }
    }
    const std::size_t equals = argument.starts_with("--") ? argument.find('=') : std::string::npos;
    const std::string name = argument.substr(0, equals);
    for (const ValueOption& known : value_options) {
        if (name != known.name) {
            continue;
        }
        if (equals != std::string::npos) {
            return known.set(options, argument.substr(equals + 1));
        }
        if (i + 1 == arguments.size()) {
            return name + " needs a value";
        }
        return known.set(options, arguments[++i]);
    }
    return "unknown option " + quoted(argument) + "; see nmk help order";
}

Problem check_outputs_differ(const OrderOptions& options) {
    const std::string_view names[] = {options.output_file, options.svg_file, options.html_file};
    for (std::size_t i = 0; i < std::size(names); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (!names[i].empty() && names[i] == names[j]) {
                return quoted(names[i]) + " is named for two outputs";
            }
        }
    }
    return {};
}

}  // namespace

std::variant<OrderOptions, std::string> read_order_options(
    const std::vector<std::string>& arguments) {
    OrderOptions options;
    bool only_names = false;  // after "--"
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (!only_names && arguments[i] == "--") {
            only_names = true;
            continue;
        }
        const bool is_option = !only_names && arguments[i].starts_with('-');
        const Problem problem =
            is_option ? read_option(options, arguments, i) : set_file_name(options, arguments[i]);
        if (!problem.empty()) {
            return problem;
        }
    }
    if (options.file_name.empty()) {
        return "expected the name of a file: nmk order FILE; see nmk help order";
    }
    if (const Problem problem = check_outputs_differ(options); !problem.empty()) {
        return problem;
    }
    return options;
}

OrderRequest order_request(const OrderOptions& options, JobUnits file_units) {
    const JobUnits units = options.units.value_or(file_units);
    const double mm = units == JobUnits::inches ? mm_per_inch : 1.0;
    OrderRequest request;
    request.type = options.type;
    request.across_tools = options.across_tools;
    request.start = giPoint3(options.start[0] * mm, options.start[1] * mm, options.start[2] * mm);
    request.tolerance = options.tolerance ? *options.tolerance * mm : default_tolerance;
    return request;
}

}  // namespace nmk_app

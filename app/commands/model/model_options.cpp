// model_options: the command line of `nmk model`.

#include "commands/model/model_options.h"

#include <optional>
#include <span>
#include <string_view>

#include "commands/model/model_convert.h"
#include "shell/command_result.h"
#include "shell/output_names.h"
#include "text/escaped_text.h"

namespace nmk_model {

namespace {

using nmk_shell::Problem;

constexpr nmk_shell::Choice<Action> actions[] = {
    {"info", Action::info,
     "print size, area, volume and the faults of each FILE; one that cannot be read does not stop "
     "the others"},
    {"convert", Action::convert,
     "write the model of the first FILE as the second: binary STL (.stl, or - for standard output) "
     "or NMT (.nmt, .nmlmt), in millimetres"},
    {"view", Action::view,
     "draw FILE seen from a side (--svg), or as a page in which it is turned with the mouse "
     "(--html)"}};

// Large enough for any change of units.
constexpr double max_scale = 1e6;

constexpr nmk_shell::NumberRange scales = {0.0, false, max_scale, "a number above 0, up to 1e6"};

constexpr nmk_shell::Choice<ModelUnits> units[] = {{"mm", ModelUnits::millimetres},
                                                   {"inch", ModelUnits::inches}};

void declare_reading(nmk_shell::OptionTable& table, ModelOptions& options) {
    table.group("Reading");
    table.choice("--units", "NAME", options.reading.units, std::span(units),
                 "unit of the numbers in a file that does not state it; NMT states its own");
    table.choice("--format", "NAME", options.reading.format, format_choices(),
                 "format of the files");
}

void declare_conversion(nmk_shell::OptionTable& table, ModelOptions& options) {
    table.group("Options of convert");
    table.number("--scale", "F", options.scale, scales, "factor for all coordinates");
    table.option("--merge", options.merge, "make one block of all; names and colours go");
    table.option("--normals", options.normals,
                 "write a normal for each node of an NMT: that of the file, else the mean of its "
                 "triangles' by area");
}

void declare_view(nmk_shell::OptionTable& table, ModelOptions& options) {
    table.group("Options of view");
    table.choice("--from", "SIDE", options.from, view_sides(),
                 "where the model is seen from, in the picture and at first in the page");
    table.output_file("--svg", options.svg_file,
                      "a shaded picture with free edges in red, a scale and a legend");
    table.output_file("--html", options.html_file, "a page with the model and its figures");
}

Problem check_conversion(const ModelOptions& options) {
    if (options.files.size() != 2)
        return "convert: expected two files, one to read and one to write";
    const std::string& output = options.files[1];
    const std::optional<OutputFormat> format = output_format(output);
    if (!format) {
        return "convert: unknown format of " + nmk_text::quoted(output) +
               "; expected a name that ends in .stl, .nmt or .nmlmt";
    }
    if (options.normals && *format == OutputFormat::binary_stl) {
        return "--normals does not apply to STL, which has those of its triangles; expected an NMT";
    }
    if (options.json) return "--json does not apply to convert; expected info";
    const std::string_view outputs[] = {output};
    return nmk_shell::check_input_is_kept(options.files[0], outputs);
}

Problem check_view(const ModelOptions& options) {
    if (options.files.size() != 1) return "view: expected one file";
    if (options.svg_file.empty() && options.html_file.empty()) {
        return "view: expected --svg OUT or --html OUT";
    }
    if (options.json) return "--json does not apply to view; expected info";
    const std::string_view outputs[] = {options.svg_file, options.html_file};
    const Problem problem = nmk_shell::check_input_is_kept(options.files[0], outputs);
    return problem.empty() ? nmk_shell::check_outputs_differ(outputs) : problem;
}

Problem check_action(const ModelOptions& options) {
    const bool converts = options.scale != 1.0 || options.merge || options.normals;
    const bool draws =
        !options.svg_file.empty() || !options.html_file.empty() || options.from != ViewSide::iso;
    if (converts && options.action != Action::convert) {
        return "--scale, --merge and --normals apply to convert only";
    }
    if (draws && options.action != Action::view) {
        return "--from, --svg and --html apply to view only";
    }
    if (options.action == Action::convert) return check_conversion(options);
    return options.action == Action::view ? check_view(options) : "";
}

}  // namespace

void declare_model_options(nmk_shell::OptionTable& table, ModelOptions& options) {
    table.describe(
        "Reads triangle models: binary and text STL (.stl), Flue text (.tri), NMT (.nmt, .nmlmt) "
        "and TTR (.ttr). A name without such an extension, and standard input, is recognised by "
        "its content.");
    table.positional_choice("ACTION", options.action, std::span(actions), "what to do")
        .is_required = true;
    table.input_files("FILE", options.files, "the models; - is standard input");
    declare_reading(table, options);
    declare_conversion(table, options);
    declare_view(table, options);
    table.group("Output");
    table.option("--json", options.json, "print JSON instead of the text");
    table.option("--quiet", options.quiet, "print no text and no progress; --json still prints");
    table.check([&options] { return check_action(options); });
    table.exit_code(nmk_shell::no_result,
                    "stopped by Ctrl-C, or no triangles to convert or draw; nothing was printed or "
                    "written");
    table.example("nmk model info samples/housing.stl");
    table.example("nmk model convert samples/housing.stl housing.nmt --normals");
    table.example("nmk model view samples/housing.stl --svg housing.svg");
}

}  // namespace nmk_model

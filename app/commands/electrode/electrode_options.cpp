// electrode_options: the command line of `nmk electrode`.

#include "commands/electrode/electrode_options.h"

#include <algorithm>
#include <filesystem>
#include <span>
#include <string_view>
#include <system_error>

#include "files/read_whole_file.h"
#include "shell/command_result.h"
#include "text/escaped_text.h"

namespace nmk_electrode {

namespace {

namespace fs = std::filesystem;

using nmk_shell::Argument;
using nmk_shell::Problem;

constexpr nmk_shell::Choice<Action> actions[] = {
    {"create", Action::create, "write FILE with the electrodes that follow"},
    {"add", Action::add, "add the electrodes that follow to FILE, which is written anew"},
    {"list", Action::list, "print the electrodes of FILE with the sizes of their files"},
    {"verify", Action::verify, "check the structure of FILE, and read all of its data"},
    {"extract", Action::extract, "write the files of the electrode NAME to the directory DIR"}};

/// One component of a file name on every system, and one line of a text.
bool is_plain_name(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && name.size() <= 200 &&
           name.find_first_of(std::string_view("/\\:\n\r\0", 6)) == name.npos;
}

constexpr const char* plain_name = "expected a name without slashes, colons and line ends";

Problem start_electrode(ElectrodeOptions& options, const std::string& name) {
    if (!is_plain_name(name)) return plain_name;
    const auto same = [&](const NewElectrode& each) { return each.name == name; };
    if (std::ranges::any_of(options.electrodes, same)) return "expected each name once";
    options.electrodes.push_back({name, {}, {}, {}, {}});
    return {};
}

Problem expect_file(const std::string& name) {
    std::error_code ignored;
    return fs::is_regular_file(name, ignored) ? Problem() : "expected a file that exists";
}

Problem expect_directory(const std::string& name) {
    std::error_code ignored;
    return fs::is_directory(name, ignored) ? Problem() : "expected a directory that exists";
}

/// Sets what belongs to the last --entry.
nmk_shell::Setter of_entry(ElectrodeOptions& options, Problem (*expect)(const std::string&),
                           void (*set)(NewElectrode&, const std::string&)) {
    return [&options, expect, set](const std::string& name) -> Problem {
        if (options.electrodes.empty()) return "expected --entry NAME before it";
        if (Problem problem = expect(name); !problem.empty()) return problem;
        set(options.electrodes.back(), name);
        return {};
    };
}

void declare_entries(nmk_shell::OptionTable& table, ElectrodeOptions& options) {
    table.group("Electrodes");
    table.ordered_option(
        "--entry", "NAME",
        [&options](const std::string& name) { return start_electrode(options, name); },
        "begin an electrode; what follows belongs to it");
    const auto file = [&](std::string name, void (*set)(NewElectrode&, const std::string&),
                          std::string about) {
        table
            .ordered_option(std::move(name), "FILE", of_entry(options, expect_file, set),
                            std::move(about))
            .completes = nmk_shell::Completes::files;
    };
    file(
        "--geometry", [](NewElectrode& each, const std::string& name) { each.geometry = name; },
        "its geometry");
    file(
        "--metadata", [](NewElectrode& each, const std::string& name) { each.metadata = name; },
        "its metadata, an XML document");
    table
        .ordered_option("--data", "DIR",
                        of_entry(options, expect_directory,
                                 [](NewElectrode& each, const std::string& name) {
                                     each.data_directories.push_back(name);
                                 }),
                        "a directory whose files become its data, subdirectories kept; may be "
                        "repeated")
        .completes = nmk_shell::Completes::files;
    file(
        "--additional",
        [](NewElectrode& each, const std::string& name) { each.additional_files.push_back(name); },
        "a file of additional geometry; may be repeated");
}

Problem set_data_name(ElectrodeOptions& options, const std::string& name) {
    if (!is_plain_name(name) || name == "additional") return plain_name;
    options.data_name = name;
    return {};
}

Problem check_electrodes(const ElectrodeOptions& options) {
    if (options.electrodes.empty()) return "expected --entry NAME";
    for (const NewElectrode& each : options.electrodes) {
        if (each.geometry.empty() || each.metadata.empty()) {
            return "--entry " + nmk_text::quoted(each.name) +
                   ": expected --geometry FILE and --metadata FILE";
        }
    }
    return {};
}

Problem check(const ElectrodeOptions& options) {
    const bool extracts = options.action == Action::extract;
    if (options.words.size() != (extracts ? 2U : 1U)) {
        return extracts ? "expected nmk electrode extract FILE NAME -o DIR" : "expected one FILE";
    }
    if (options.writes() && options.file_name() == nmk_files::standard_stream) {
        return "create and add need the name of a file";
    }
    if (options.writes()) return check_electrodes(options);
    if (!options.electrodes.empty()) return "--entry goes with create and add";
    if (extracts && options.output_directory.empty()) return "expected -o DIR";
    if (extracts && !is_plain_name(options.electrode_name())) {
        return "NAME " + nmk_text::quoted(options.electrode_name()) + ": " + plain_name;
    }
    return {};
}

Problem check_output(const ElectrodeOptions& options) {
    if (options.action != Action::extract && !options.output_directory.empty()) {
        return "--output goes with extract";
    }
    if (options.json && options.action != Action::list && options.action != Action::verify) {
        return "--json goes with list and verify";
    }
    return {};
}

}  // namespace

void declare_options(nmk_shell::OptionTable& table, ElectrodeOptions& options) {
    table.describe(
        "An electrode archive is a zip file with the geometry, the metadata, the data files and "
        "the additional geometry of electrodes. Ordinary zip tools can open it.");
    table.positional_choice("ACTION", options.action, std::span(actions), "what to do")
        .is_required = true;
    Argument& words = table.positional(
        "ARGUMENT",
        [&options](const std::string& word) {
            options.words.push_back(word);
            return Problem();
        },
        "FILE, and for extract NAME; - is standard input, for list, verify and extract");
    words.is_many = words.is_required = true;
    words.completes = nmk_shell::Completes::files;
    declare_entries(table, options);
    table.option(
        "--data-name", "NAME",
        [&options](const std::string& name) { return set_data_name(options, name); },
        "the name of the data directory in the archive, html unless given; the archive does not "
        "have it");
    table.group("Output");
    table.option("-o,--output", "DIR", nmk_shell::file_setter(options.output_directory),
                 "where extract writes; made where it is missing");
    table.option("--json", options.json, "print JSON; for list and verify");
    table.option("--quiet", options.quiet, "print no text; --json still prints");
    table.check([&options] { return check(options); });
    table.check([&options] { return check_output(options); });
    table.exit_code(nmk_shell::no_result, "verify found a problem, or Ctrl-C stopped the work");
    table.example("nmk electrode list samples/electrodes/electrodes.zip");
    table.example("nmk electrode verify samples/electrodes/electrodes.zip");
    table.example("nmk electrode extract samples/electrodes/electrodes.zip E101 -o E101");
}

}  // namespace nmk_electrode

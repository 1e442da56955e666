// electrode_command: `nmk electrode create`, `add`, `list`, `verify` and `extract`.

#include "commands/electrode/electrode_command.h"

#include <nmkprogressbreak/nmkTerminalProgress.h>

#include "commands/electrode/electrode_archive.h"
#include "commands/electrode/electrode_files.h"
#include "commands/electrode/electrode_report.h"
#include "shell/command_result.h"

namespace nmk_electrode {

namespace {

int list(const ElectrodeOptions& options, std::ostream& out, std::ostream& err) {
    const auto contents = read_contents(options);
    if (!contents) return nmk_shell::refuse(err, contents.error().text());
    if (contents->status == nmkTrodeArchiveNoVersion) {
        return nmk_shell::refuse(err, contents->file_name + ": " + contents->problem);
    }
    if (options.json) {
        out << list_json(*contents);
    } else if (!options.quiet) {
        out << list_text(*contents);
    }
    return nmk_shell::finish(out, err, "the list");
}

int verify(const ElectrodeOptions& options, std::ostream& out, std::ostream& err,
           nmkProgressBreak& progress) {
    auto contents = read_contents(options);
    if (!contents) return nmk_shell::refuse(err, contents.error().text());
    if (contents->problem.empty() && !read_data(*contents, progress)) {
        nmk_shell::refuse(err, "nmk electrode: stopped; not all data was read");
        return nmk_shell::no_result;
    }
    if (options.json) {
        out << verify_json(*contents);
    } else if (!options.quiet) {
        out << verify_text(*contents);
    }
    const int code = nmk_shell::finish(out, err, "the result");
    return code == nmk_shell::done && !contents->problem.empty() ? nmk_shell::no_result : code;
}

int run_on_terminal(const ElectrodeOptions& options, std::ostream& out, std::ostream& err) {
    // Draws on a terminal only, but handles Ctrl-C everywhere.
    nmkTerminalProgress progress(options.quiet ? nullptr : stderr);
    return run_electrode(options, out, err, progress);
}

}  // namespace

int run_electrode(const ElectrodeOptions& options, std::ostream& out, std::ostream& err,
                  nmkProgressBreak& progress) {
    switch (options.action) {
        case Action::list:
            return list(options, out, err);
        case Action::verify:
            return verify(options, out, err, progress);
        case Action::extract:
            return extract_electrode(options, out, err, progress);
        case Action::create:
        case Action::add:
            break;
    }
    return write_archive(options, out, err, progress);
}

nmk_shell::Run declare_electrode(nmk_shell::OptionTable& table) {
    return nmk_shell::declare_command<ElectrodeOptions>(table, declare_options, run_on_terminal);
}

}  // namespace nmk_electrode

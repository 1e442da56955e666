// electrode_command: `nmk electrode create`, `add`, `list`, `verify` and `extract`.

#include "commands/electrode/electrode_command.h"

#include <nmkprogressbreak/nmkTerminalProgress.h>

#include "commands/electrode/electrode_archive.h"
#include "commands/electrode/electrode_files.h"
#include "commands/electrode/electrode_report.h"
#include "files/read_whole_file.h"
#include "files/spooled_input.h"
#include "shell/command_result.h"

namespace nmk_electrode {

namespace {

int list(const ElectrodeOptions& options, const ArchiveFile& file, std::ostream& out,
         std::ostream& err) {
    const auto contents = read_contents(file, options.data_name);
    if (!contents) return nmk_shell::refuse(err, contents.error().text());
    if (contents->status == nmkTrodeArchiveNoVersion) {
        return nmk_shell::refuse(err, file.name + ": " + contents->problem);
    }
    if (options.json) {
        out << list_json(*contents);
    } else if (!options.quiet) {
        out << list_text(*contents);
    }
    return nmk_shell::finish(out, err, "the list");
}

int verify(const ElectrodeOptions& options, const ArchiveFile& file, std::ostream& out,
           std::ostream& err, nmkProgressBreak& progress) {
    auto contents = read_contents(file, options.data_name);
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

int read_archive(const ElectrodeOptions& options, const ArchiveFile& file, std::ostream& out,
                 std::ostream& err, nmkProgressBreak& progress) {
    if (options.action == Action::list) return list(options, file, out, err);
    if (options.action == Action::verify) return verify(options, file, out, err, progress);
    return extract_electrode(options, file, out, err, progress);
}

/// A zip is read from its end, so standard input is kept in a file before.
int read_standard_input(const ElectrodeOptions& options, std::ostream& out, std::ostream& err,
                        nmkProgressBreak& progress) {
    progress.send_progress_bar_to_0("Reading");
    const auto input = nmk_files::SpooledInput::read([&progress](std::int64_t bytes) {
        return progress.jump_to(static_cast<double>(bytes)) == 0;
    });
    progress.send_progress_bar_to_100();
    if (!input) return nmk_shell::refuse(err, input.error().text());
    if (!input->is_whole()) {
        nmk_shell::refuse(err, "nmk electrode: stopped; standard input was not read to its end");
        return nmk_shell::no_result;
    }
    const ArchiveFile file{input->name(), nmk_files::input_name(nmk_files::standard_stream)};
    return read_archive(options, file, out, err, progress);
}

int run_on_terminal(const ElectrodeOptions& options, std::ostream& out, std::ostream& err) {
    // Draws on a terminal only, but handles Ctrl-C everywhere.
    nmkTerminalProgress progress(options.quiet ? nullptr : stderr);
    return run_electrode(options, out, err, progress);
}

}  // namespace

int run_electrode(const ElectrodeOptions& options, std::ostream& out, std::ostream& err,
                  nmkProgressBreak& progress) {
    if (options.writes()) return write_archive(options, out, err, progress);
    const std::string& name = options.file_name();
    return name == nmk_files::standard_stream
               ? read_standard_input(options, out, err, progress)
               : read_archive(options, {name, name}, out, err, progress);
}

nmk_shell::Run declare_electrode(nmk_shell::OptionTable& table) {
    return nmk_shell::declare_command<ElectrodeOptions>(table, declare_options, run_on_terminal);
}

}  // namespace nmk_electrode

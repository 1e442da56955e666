// electrode_files: files on their way into an archive, and out of it.

#include "commands/electrode/electrode_files.h"

#include <nmktoolbox/archive/nmkTrodeArchive.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "commands/electrode/electrode_archive.h"
#include "shell/command_result.h"
#include "text/escaped_text.h"

namespace nmk_electrode {

namespace {

namespace fs = std::filesystem;

utString text(const std::string& name) { return utString(name); }

double bytes_of_file(const std::string& name) {
    std::error_code error;
    const auto bytes = fs::file_size(name, error);
    return error ? 0.0 : static_cast<double>(bytes);
}

double bytes_of_directory(const std::string& name) {
    std::error_code error;
    double bytes = 0;
    for (fs::recursive_directory_iterator entry(name, error), end; !error && entry != end;
         entry.increment(error)) {
        bytes += bytes_of_file(entry->path().string());
    }
    return bytes;
}

/// Bytes to insert, for the progress bar.
double bytes_to_insert(const ElectrodeOptions& options) {
    double bytes = options.action == Action::add ? bytes_of_file(options.file_name()) : 0.0;
    for (const NewElectrode& each : options.electrodes) {
        bytes += bytes_of_file(each.geometry) + bytes_of_file(each.metadata);
        for (const std::string& name : each.data_directories) bytes += bytes_of_directory(name);
        for (const std::string& name : each.additional_files) bytes += bytes_of_file(name);
    }
    return bytes;
}

void insert(nmkTrodeArchive& archive, const NewElectrode& electrode) {
    const int index = archive.create_entry(text(electrode.name));
    archive.insert_geometry(index, text(electrode.geometry));
    archive.insert_metadata(index, text(electrode.metadata));
    for (const std::string& name : electrode.data_directories) {
        archive.insert_data_directory(index, text(name));
    }
    for (const std::string& name : electrode.additional_files) {
        archive.insert_additional_geometry_file(index, text(name));
    }
}

/// The problem of a file to which electrodes are added; empty if it can take them.
std::string problem_of_present(const ElectrodeOptions& options) {
    const auto contents = read_contents(options);
    if (!contents) return contents.error().text();
    if (!contents->problem.empty()) return options.file_name() + ": " + contents->problem;
    for (const NewElectrode& added : options.electrodes) {
        if (std::ranges::find(contents->electrodes, added.name, &ListedElectrode::name) !=
            contents->electrodes.end()) {
            return options.file_name() + ": has an electrode " + nmk_text::quoted(added.name);
        }
    }
    return {};
}

int stopped(std::ostream& err, const std::string& what) {
    nmk_shell::refuse(err, "nmk electrode: stopped; " + what);
    return nmk_shell::no_result;
}

int end_writing(const ElectrodeOptions& options, nmkTrodeArchive& archive, std::ostream& out,
                std::ostream& err) {
    const bool is_sound = archive.failure() == 0 && archive.verify_structure() == nmkTrodeArchiveOk;
    const std::string& file_name = options.file_name();
    if (is_sound) {
        archive.close();
    } else {
        archive.abandon();
    }
    if (archive.failure() == ECANCELED) return stopped(err, file_name + " was not written");
    if (archive.failure() != 0) {
        return nmk_shell::refuse(err, file_name + ": not written: " + failure_text(archive));
    }
    if (!is_sound) {
        return nmk_shell::refuse(err, file_name + ": not written: a file of it is missing now");
    }
    if (!options.quiet) out << "Wrote " << nmk_text::line_text(file_name) << ".\n";
    return nmk_shell::finish(out, err, "the report");
}

/// Extracts what the electrode has.
bool extract_files(const nmkTrodeArchive& archive, const ListedElectrode& electrode,
                   const ElectrodeOptions& options) {
    const std::string& directory = options.output_directory;
    const std::string base = directory + "/" + electrode.name;
    const int index = archive.index(text(electrode.name));
    return (!electrode.geometry || archive.extract_geometry(index, text(base + ".ngk")) != 0) &&
           (!electrode.metadata || archive.extract_metadata(index, text(base + ".xml")) != 0) &&
           archive.extract_data_directory(index, text(directory + "/" + options.data_name)) != 0 &&
           archive.extract_all_additional_geometry(index, text(directory + "/additional")) != 0;
}

double bytes_of_electrode(const ListedElectrode& electrode) {
    double bytes = static_cast<double>(electrode.geometry.value_or(0)) +
                   static_cast<double>(electrode.metadata.value_or(0));
    for (const auto* const files : {&electrode.data, &electrode.additional}) {
        for (const ArchivedFile& file : *files) bytes += static_cast<double>(file.bytes);
    }
    return bytes;
}

/// Which file an electrode should have and lacks; empty: none.
std::string missing_file(const ListedElectrode& electrode) {
    if (!electrode.geometry) return "has no geometry; the rest was written";
    return electrode.metadata ? "" : "has no metadata; the rest was written";
}

int end_extracting(const ElectrodeOptions& options, const nmkTrodeArchive& archive,
                   const std::string& problem, std::ostream& out, std::ostream& err) {
    if (archive.failure() == ECANCELED) return stopped(err, "not all files were written");
    if (!problem.empty()) {
        return nmk_shell::refuse(err, options.file_name() + ": electrode " +
                                          nmk_text::quoted(options.electrode_name()) + ": " +
                                          problem);
    }
    if (!options.quiet) {
        out << "Wrote " << nmk_text::line_text(options.electrode_name()) << " to "
            << nmk_text::line_text(options.output_directory) << ".\n";
    }
    return nmk_shell::finish(out, err, "the report");
}

}  // namespace

int write_archive(const ElectrodeOptions& options, std::ostream& out, std::ostream& err,
                  nmkProgressBreak& progress) {
    if (options.action == Action::add) {
        const std::string problem = problem_of_present(options);
        if (!problem.empty()) return nmk_shell::refuse(err, problem);
    }
    nmkTrodeArchive archive;
    archive.set_data_directory(text(options.data_name));
    if (archive.create(text(options.file_name())) == 0) {
        return nmk_shell::refuse(err, options.file_name() + ": " + failure_text(archive));
    }
    progress.set_range(bytes_to_insert(options));
    progress.send_progress_bar_to_0("Packing");
    archive.set_progress(&progress);
    if (options.action == Action::add) archive.insert_archive(text(options.file_name()));
    for (const NewElectrode& each : options.electrodes) {
        if (archive.failure() == 0) insert(archive, each);
    }
    archive.set_progress(nullptr);
    progress.send_progress_bar_to_100();
    return end_writing(options, archive, out, err);
}

int extract_electrode(const ElectrodeOptions& options, std::ostream& out, std::ostream& err,
                      nmkProgressBreak& progress) {
    const auto contents = read_contents(options);
    if (!contents) return nmk_shell::refuse(err, contents.error().text());
    const auto found =
        std::ranges::find(contents->electrodes, options.electrode_name(), &ListedElectrode::name);
    if (found == contents->electrodes.end()) {
        return nmk_shell::refuse(err, options.file_name() + ": no electrode " +
                                          nmk_text::quoted(options.electrode_name()) +
                                          "; nmk electrode list prints those that there are");
    }
    nmkTrodeArchive archive;
    archive.open(text(options.file_name()));
    archive.set_data_directory(text(options.data_name));
    progress.set_range(bytes_of_electrode(*found));
    progress.send_progress_bar_to_0("Unpacking");
    archive.set_progress(&progress);
    const bool is_done = extract_files(archive, *found, options);
    progress.send_progress_bar_to_100();
    return end_extracting(options, archive, is_done ? missing_file(*found) : failure_text(archive),
                          out, err);
}

}  // namespace nmk_electrode

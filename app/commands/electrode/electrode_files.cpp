// electrode_files: files on their way into an archive, and out of it.

#include "commands/electrode/electrode_files.h"

#include <nmktoolbox/archive/nmkTrodeArchive.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

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

/// Inserts the files of an electrode, up to the first failure. Returns the name of the file or
/// directory that may not be read, or "".
std::string insert(nmkTrodeArchive& archive, const NewElectrode& electrode) {
    const int index = archive.create_entry(text(electrode.name));
    std::string unreadable;
    const auto put = [&](void (nmkTrodeArchive::*how)(int, const utString&),
                         const std::string& name) {
        if (archive.failure() != 0) return;
        (archive.*how)(index, text(name));
        if (archive.failure() == EACCES) unreadable = name;
    };
    put(&nmkTrodeArchive::insert_geometry, electrode.geometry);
    put(&nmkTrodeArchive::insert_metadata, electrode.metadata);
    for (const std::string& name : electrode.data_directories) {
        put(&nmkTrodeArchive::insert_data_directory, name);
    }
    for (const std::string& name : electrode.additional_files) {
        put(&nmkTrodeArchive::insert_additional_geometry_file, name);
    }
    return unreadable;
}

/// The problem of a file to which electrodes are added; empty if it can take them.
std::string problem_of_present(const ElectrodeOptions& options) {
    const auto contents =
        read_contents({options.file_name(), options.file_name()}, options.data_name);
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

/// Why an archive whose files could all be packed is not written; empty: it is sound.
std::string unsoundness(const nmkTrodeArchive& archive) {
    const utString repeated = archive.repeated_entry();
    if (!repeated.is_empty()) {
        return "two files for the entry " + nmk_text::quoted(repeated.view()) + "; expected one";
    }
    return archive.verify_structure() == nmkTrodeArchiveOk
               ? ""
               : "a file of it is missing now, or is the archive itself";
}

int end_writing(const ElectrodeOptions& options, nmkTrodeArchive& archive,
                const std::string& unreadable, std::ostream& out, std::ostream& err) {
    const std::string problem = unsoundness(archive);
    const std::string& file_name = options.file_name();
    if (archive.failure() == 0 && problem.empty()) {
        archive.close();
    } else {
        archive.abandon();
    }
    if (archive.failure() == ECANCELED) return stopped(err, file_name + " was not written");
    if (archive.failure() != 0) {
        const std::string input = unreadable.empty() ? "" : nmk_text::quoted(unreadable) + ": ";
        return nmk_shell::refuse(err,
                                 file_name + ": not written: " + input + failure_text(archive));
    }
    if (!problem.empty()) return nmk_shell::refuse(err, file_name + ": not written: " + problem);
    if (!options.quiet) out << "Wrote " << nmk_text::line_text(file_name) << ".\n";
    return nmk_shell::finish(out, err, "the report");
}

/// A file or directory of an electrode, below the output directory.
struct Part {
    std::string name;
    bool is_there;
    int (nmkTrodeArchive::*extract)(int index, const utString& target) const;
};

/// Extracts what the electrode has; returns the first problem, "E1.ngk: ...", or "".
std::string extract_parts(const nmkTrodeArchive& archive, const ListedElectrode& electrode,
                          const ElectrodeOptions& options) {
    const Part parts[] = {{electrode.name + ".ngk", electrode.geometry.has_value(),
                           &nmkTrodeArchive::extract_geometry},
                          {electrode.name + ".xml", electrode.metadata.has_value(),
                           &nmkTrodeArchive::extract_metadata},
                          {options.data_name, true, &nmkTrodeArchive::extract_data_directory},
                          {"additional", true, &nmkTrodeArchive::extract_all_additional_geometry}};
    const int index = archive.index(text(electrode.name));
    std::string problem;
    for (const Part& part : parts) {
        const utString target = text(options.output_directory + "/" + part.name);
        if (!part.is_there || (archive.*part.extract)(index, target) != 0) continue;
        if (problem.empty()) problem = part.name + ": " + failure_text(archive);
        if (archive.failure() == ECANCELED) break;
    }
    return problem;
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

int end_extracting(const ElectrodeOptions& options, const ArchiveFile& file,
                   const std::string& problem, std::ostream& out, std::ostream& err) {
    if (!problem.empty()) {
        return nmk_shell::refuse(err, file.name + ": electrode " +
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
    progress.send_progress_bar_to_0("Packing");
    progress.set_range(bytes_to_insert(options));
    archive.set_progress(&progress);
    if (options.action == Action::add) archive.insert_archive(text(options.file_name()));
    std::string unreadable;
    for (const NewElectrode& each : options.electrodes) {
        if (archive.failure() == 0) unreadable = insert(archive, each);
    }
    archive.set_progress(nullptr);
    progress.send_progress_bar_to_100();
    return end_writing(options, archive, unreadable, out, err);
}

int extract_electrode(const ElectrodeOptions& options, const ArchiveFile& file, std::ostream& out,
                      std::ostream& err, nmkProgressBreak& progress) {
    const auto contents = read_contents(file, options.data_name);
    if (!contents) return nmk_shell::refuse(err, contents.error().text());
    const auto found =
        std::ranges::find(contents->electrodes, options.electrode_name(), &ListedElectrode::name);
    if (found == contents->electrodes.end()) {
        return nmk_shell::refuse(err, file.name + ": no electrode " +
                                          nmk_text::quoted(options.electrode_name()) +
                                          "; nmk electrode list prints those that there are");
    }
    nmkTrodeArchive archive;
    archive.open(text(file.path));
    archive.set_data_directory(text(options.data_name));
    progress.send_progress_bar_to_0("Unpacking");
    progress.set_range(bytes_of_electrode(*found));
    archive.set_progress(&progress);
    const std::string problem = extract_parts(archive, *found, options);
    progress.send_progress_bar_to_100();
    if (archive.failure() == ECANCELED) return stopped(err, "not all files were written");
    return end_extracting(options, file, problem.empty() ? missing_file(*found) : problem, out,
                          err);
}

}  // namespace nmk_electrode

// nmkTrodeArchive_extract.cpp: entries listed, and written to files.
#include <compress/cmUnZip.h>
#include <compress/cmZip.h>
#include <nmktoolbox/archive/nmkTrodeArchive.h>
#include <nmktoolbox/files/nmkFileDir.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <vector>

#include "target_directory.h"

namespace {

constexpr int stream_block = 10240;  // bytes that are unpacked at once

/// Makes a directory for an entry that is one.
int make_directory(const utString& name) {
    const nmkFileDir directory(name, nullptr);
    return directory.mkdir() != 0 && directory.is_dir() != 0 ? 1 : 0;
}

bool is_directory_entry(const utString& listed) {
    return listed.is_empty() || listed.view().ends_with('/');
}

}  // namespace

int nmkTrodeArchive::extract_geometry(int index, const utString& target) const {
    return extract_zipentry(geometry_zipentry(name(index)), target);
}

int nmkTrodeArchive::extract_metadata(int index, const utString& target) const {
    return extract_zipentry(metadata_zipentry(name(index)), target);
}

int nmkTrodeArchive::extract_data_file(int index, const utString& entry_file,
                                       const utString& target) const {
    return extract_zipentry(datadir_zipprefix(name(index)) + entry_file, target);
}

int nmkTrodeArchive::extract_additional_geometry_file(int index, const utString& entry_file,
                                                      const utString& target) const {
    return extract_zipentry(additionaldir_zipprefix(name(index)) + entry_file, target);
}

int nmkTrodeArchive::extract_data_directory(int index, const utString& target_directory) const {
    return extract_directory(datadir_zipprefix(name(index)), target_directory);
}

int nmkTrodeArchive::extract_all_additional_geometry(int index,
                                                     const utString& target_directory) const {
    return extract_directory(additionaldir_zipprefix(name(index)), target_directory);
}

void nmkTrodeArchive::list_data_directory(int index, utStringcoDList& out) const {
    list_directory(datadir_zipprefix(name(index)), out);
}

void nmkTrodeArchive::list_additional_geometry(int index, utStringcoDList& out) const {
    list_directory(additionaldir_zipprefix(name(index)), out);
}

void nmkTrodeArchive::list_directory(const utString& prefix, utStringcoDList& out) const {
    // Deliberate: `out` is not cleared, so that callers can collect several directories.
    for (const utString& entry : m_zip_entries) {
        if (!entry.view().starts_with(prefix.view())) continue;
        out.insert_last(utString(entry.view().substr(prefix.view().size())));
    }
}

int nmkTrodeArchive::extract_directory(const utString& prefix,
                                       const utString& target_directory) const {
    utStringcoDList list;
    list_directory(prefix, list);
    // By name, so that files of one directory follow each other.
    std::vector<std::string_view> names;
    for (const utString& listed : list) names.push_back(listed.view());
    std::sort(names.begin(), names.end());
    nmk_archive::TargetDirectory directory;
    int failure = 0;
    for (auto name = names.begin(); name != names.end() && failure != ECANCELED; ++name) {
        if (extract_listed(prefix, utString(*name), target_directory, directory) == 0) {
            failure = m_failure == ECANCELED || failure == 0 ? m_failure : failure;
        }
    }
    m_failure = failure;
    return failure == 0 ? 1 : 0;
}

/// Extracts one listed name; sets the failure, and returns 1 or 0.
int nmkTrodeArchive::extract_listed(const utString& prefix, const utString& listed,
                                    const utString& target_directory,
                                    nmk_archive::TargetDirectory& directory) const {
    m_failure = 0;
    // An empty directory would lead to the root.
    if (m_reader == nullptr || target_directory.is_empty()) return fail(EINVAL);
    if (!nmk_archive::stays_below(listed.view())) return fail(EPERM);
    const utString target = target_directory + "/" + listed;
    if (is_directory_entry(listed)) return make_directory(target) != 0 ? 1 : fail(ENOTDIR);
    return extract_zipentry(prefix + listed, target, directory);
}

int nmkTrodeArchive::extract_zipentry(const utString& entry, const utString& target) const {
    nmk_archive::TargetDirectory directory;
    return extract_zipentry(entry, target, directory);
}

int nmkTrodeArchive::extract_zipentry(const utString& entry, const utString& target,
                                      nmk_archive::TargetDirectory& directory) const {
    m_failure = 0;
    if (m_reader == nullptr || target.is_empty()) return fail(EINVAL);
    if (m_reader->goto_file(entry) != 0) return fail(ENOENT);
    return extract_current(target, directory);
}

int nmkTrodeArchive::extract_current(const utString& target,
                                     nmk_archive::TargetDirectory& directory) const {
    nmk_archive::ExtractedFile file;
    if (const int error_number = directory.open_for(target); error_number != 0) {
        return fail(error_number);
    }
    if (m_reader->open_current_file() != 0) return fail(m_reader->failure());
    int error_number = file.create(directory);
    if (error_number == 0) {
        error_number = m_reader->unzip_current_file(file.stream(), stream_block);
        // The disk's own reason, where it is the disk that failed.
        error_number = file.failure() != 0 ? file.failure() : error_number;
    }
    m_reader->close_current_file();
    if (error_number == 0) error_number = file.commit();
    return error_number == 0 ? 1 : fail(error_number);
}

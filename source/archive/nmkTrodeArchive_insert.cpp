// nmkTrodeArchive_insert.cpp: files and directories on their way into an archive.
#include <compress/cmUnZip.h>
#include <compress/cmZip.h>
#include <fcntl.h>
#include <filesystem/safe_file.h>
#include <nmktoolbox/archive/nmkTrodeArchive.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <nmktoolbox/files/nmkFileDirIter.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utils/ut_date.h>

#include <cerrno>
#include <fstream>

#include "directory_identities.h"

namespace {

constexpr int stream_block = 10240;  // bytes that are packed at once

/// Reading a pipe or a device might never end.
bool is_regular(const utString& file) {
    struct stat record;
    return ::stat(file.c_str(), &record) == 0 && S_ISREG(record.st_mode);
}

/// The reason why the files of a directory cannot be listed: an errno, or 0.
int reason_not_to_list(const char* directory) {
    return ::faccessat(AT_FDCWD, directory, R_OK | X_OK, AT_EACCESS) == 0 ? 0 : errno;
}

utString name_in_directory(const utString& path) {
    return nmkFileDir(path, nullptr).basename_ext();
}

}  // namespace

void nmkTrodeArchive::insert_geometry(int index, const utString& file) {
    insert_zipentry(geometry_zipentry(name(index)), file);
}

void nmkTrodeArchive::insert_metadata(int index, const utString& file) {
    insert_zipentry(metadata_zipentry(name(index)), file);
}

void nmkTrodeArchive::insert_data_file(int index, const utString& file) {
    if (file.is_empty()) return;
    insert_zipentry(datadir_zipprefix(name(index)) + name_in_directory(file), file);
}

void nmkTrodeArchive::insert_additional_geometry_file(int index, const utString& file) {
    if (file.is_empty()) return;
    insert_zipentry(additionaldir_zipprefix(name(index)) + name_in_directory(file), file);
}

void nmkTrodeArchive::insert_data_directory(int index, const utString& directory) {
    insert_directory(datadir_zipprefix(name(index)), directory);
}

void nmkTrodeArchive::insert_zipentry(const utString& entry, const utString& file) {
    if (m_writer == nullptr || file.is_empty()) return;
    const nmkFileDir path(file, nullptr);
    if (path.is_file() == 0 || !is_regular(path.get())) return;
    if (m_writer->is_own_file(path.get().c_str())) return;
    insert_stream(entry, path.get());
}

void nmkTrodeArchive::insert_stream(const utString& entry, const utString& file) {
    int date[ut_date_size] = {};
    const bool has_date = fcdate(file, date) == 0;
    // Opened first: a file that may not be read leaves no empty entry.
    std::ifstream stream(file.c_str(), std::ios::binary);
    int error_number = stream ? 0 : errno;
    if (error_number == 0) {
        error_number = m_writer->open_new_file_in_zip(entry, cmZipMethodDeflate, -1,
                                                      has_date ? date : nullptr, utString());
    }
    if (error_number == 0) error_number = m_writer->zip_current_file(stream, stream_block);
    if (error_number == 0) error_number = m_writer->close_file_in_zip();
    fail(error_number);
    if (error_number != 0) return;
    if (m_repeated_entry.is_empty() && has_zipentry(entry)) m_repeated_entry = entry;
    m_zip_entries.add(entry);
}

void nmkTrodeArchive::insert_directory(const utString& prefix, const utString& directory) {
    if (m_writer == nullptr || directory.is_empty()) return;
    nmk_archive::DirectoryIdentities above;
    insert_directory(prefix, directory, above);
}

void nmkTrodeArchive::insert_directory(const utString& prefix, const utString& directory,
                                       nmk_archive::DirectoryIdentities& above) {
    const nmkFileDir top(directory, nullptr);
    const char* const name_of_top = top.get().is_empty() ? "/" : top.get().c_str();
    if (!above.enter(name_of_top)) return;
    fail(reason_not_to_list(name_of_top));
    nmkFileDirIter entries(top, nmkFileDirIterAll, nullptr);
    while (m_failure != ECANCELED && ++entries) {
        const nmkFileDir& entry = entries();
        // The whole name, what follows a dot included, for directories too.
        const utString name = prefix + entry.basename_ext();
        // Half a file that a killed process left, or one that is still being written.
        if (nmk_filesystem::is_temporary_name(entry.basename_ext().view())) continue;
        if (entry.is_file() != 0) {
            insert_zipentry(name, entry.get());
        } else if (entry.is_dir() != 0) {
            insert_directory(name + "/", entry.get(), above);
        }
    }
    above.leave();
}

int nmkTrodeArchive::insert_archive(const utString& file) {
    nmkTrodeArchive other;
    if (m_writer == nullptr) return fail(EINVAL);
    if (other.open(file) == 0) return fail(other.failure());
    cmUnZip& source = *other.m_reader;
    for (int end = source.goto_first_file(); end == 0; end = source.goto_next_file()) {
        if (copy_entry(source) == 0) return 0;
    }
    for (const utString& name : other.m_entry_names) create_entry(name);
    return 1;
}

/// Copies the current entry of another zip, unless this archive writes one of its own.
int nmkTrodeArchive::copy_entry(cmUnZip& source) {
    utString entry;
    int date[ut_date_size] = {};
    char block[stream_block];
    source.get_current_file_info(entry);
    if (entry == "version.txt" || entry == "contents.txt") return 1;
    const bool has_date = source.get_current_file_date(date) == 0;
    if (source.open_current_file() != 0) return fail(source.failure());
    int error_number = m_writer->open_new_file_in_zip(entry, cmZipMethodDeflate, -1,
                                                      has_date ? date : nullptr, utString());
    int count = stream_block;
    while (error_number == 0 && count == stream_block) {
        count = source.read_current_file(block, stream_block);
        error_number = count < 0 ? source.failure() : m_writer->write_in_file_in_zip(block, count);
    }
    if (error_number == 0) error_number = m_writer->close_file_in_zip();
    if (error_number != 0) return fail(error_number);
    m_zip_entries.add(entry);
    return 1;
}

// nmkFileDir_delete.cpp: creating and deleting; deletions are repeated while a file is held.
#include <apsl/apwait.h>
#include <filesystem/remove_rename.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <winapi/directories.h>
#include <winapi/last_error.h>

#include <cerrno>

#include "file_attributes.h"
#include "tree_removal.h"

namespace {

using nmk_files::attributes_of;
using nmk_files::is_directory;

// 1, or 0 with errno.
int result_of(int error_number) {
    if (error_number == 0) return 1;
    errno = error_number;
    return 0;
}

// Calls `is_done` until it returns true or all attempts are used: 1 or 0.
// Deliberate: with no attempts at all one is still made, and the result is 0 even if it succeeds.
template <class IsDone>
int in_attempts(int attempts, int wait, IsDone is_done) {
    int attempt = 1;
    while (!is_done()) {
        const bool is_last = attempt >= attempts;
        if (is_last) return 0;
        apwait(wait);
        ++attempt;
    }
    errno = 0;
    return attempt <= attempts ? 1 : 0;
}

// Clears the read-only attribute where it is set.
void make_writeable(const utString& path) {
    const DWORD attributes = attributes_of(path);
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_READONLY) == 0)
        return;
    SetFileAttributesA(path.c_str(), attributes & ~FILE_ATTRIBUTE_READONLY);
}

// Removes an empty directory, or a symlink to one; 0 or errno.
int remove_directory(const utString& path) {
    if (nmk_files::is_symlink(attributes_of(path))) {
        return nmk_filesystem::remove_file(path.c_str());
    }
    make_writeable(path);
    return RemoveDirectoryA(path.c_str()) != FALSE ? 0 : errno;
}

}  // namespace

int nmkFileDir::mkdir() const {
    if (m_path.is_null() || exist() != 0) return 1;
    return mkdir(m_path);
}

int nmkFileDir::mkdir(const utString& path) {
    utString parent;
    if (dirname(path, parent) != 0 && exist(parent) == 0) {
        // A name that is too long to be looked for is too long to be created; without this test
        // every one of its components would be tried.
        if (GetLastError() == ERROR_FILENAME_EXCED_RANGE || mkdir(parent) == 0) return 0;
    }
    if (CreateDirectoryA(path.c_str(), nullptr) != FALSE) return 1;
    // Another process may have created it meanwhile; a file of that name is a failure.
    const int reason = errno;
    const bool is_made =
        GetLastError() == ERROR_ALREADY_EXISTS && is_directory(attributes_of(path));
    return result_of(is_made ? 0 : reason);
}

int nmkFileDir::rmdir() const {
    if (m_path.is_null() || is_dir() == 0) return 1;
    return result_of(remove_directory(m_path));
}

int nmkFileDir::delete_file(utString path) {
    // Deliberate: a directory counts as deleted and is not touched.
    if (path.is_null() || is_directory(attributes_of(path)) || exist(path) == 0) return 1;
    return result_of(nmk_filesystem::remove_file(path.c_str()));
}

int nmkFileDir::delete_file() const { return delete_file(m_path); }

int nmkFileDir::delete_file(int attempts, int wait) const {
    return in_attempts(attempts, wait, [&] { return delete_file() != 0; });
}

int nmkFileDir::delete_tree() const {
    if (m_path.is_null() || is_dir() == 0) return 1;
    const bool is_symlink = nmk_files::is_symlink(attributes_of(m_path));
    const int error_number = is_symlink ? 0 : nmk_files::remove_entries(m_path);
    return result_of(error_number != 0 ? error_number : remove_directory(m_path));
}

int nmkFileDir::delete_tree(int attempts, int wait) const {
    return in_attempts(attempts, wait, [&] {
        delete_tree();
        return is_dir() == 0;
    });
}

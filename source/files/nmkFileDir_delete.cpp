// nmkFileDir_delete.cpp: making and deleting, with patience for who holds a file for a moment.
#include <apsl/apwait.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <winapi/directories.h>
#include <winapi/last_error.h>
#include <winapi/remove_rename.h>

#include "file_attributes.h"
#include "tree_removal.h"

namespace {

// Calls `is_done` until it holds or all attempts are used, and says which.
// Deliberate: with no attempts at all one is still made, and the answer is 0 whatever came of it.
template <class Is_done>
int in_attempts(int attempts, int wait, Is_done is_done) {
    int attempt = 1;
    while (!is_done()) {
        const bool is_last = attempt >= attempts;
        if (is_last) return 0;
        apwait(wait);
        ++attempt;
    }
    return attempt <= attempts ? 1 : 0;
}

// Clears the read-only attribute where it is set.
void let_write(const utString& path) {
    const DWORD attributes = attributes_of(path);
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_READONLY) == 0)
        return;
    SetFileAttributesA(path.c_str(), attributes & ~FILE_ATTRIBUTE_READONLY);
}

// Removes an empty directory, or the link to one.
bool remove_directory(const utString& path) {
    if (is_link(attributes_of(path))) return winapi_remove(path.c_str()) == 0;
    let_write(path);
    return RemoveDirectoryA(path.c_str()) != FALSE;
}

}  // namespace

int nmkFileDir::mkdir() const {
    if (m_path.is_null() || exist() != 0) return 1;
    return mkdir(m_path);
}

int nmkFileDir::mkdir(const utString& path) {
    utString parent;
    if (dirname(path, parent) != 0 && exist(parent) == 0) {
        // Too long to be looked for is too long to be made; else such a name would be gone down
        // component by component.
        if (GetLastError() == ERROR_FILENAME_EXCED_RANGE || mkdir(parent) == 0) return 0;
    }
    if (CreateDirectoryA(path.c_str(), nullptr) != FALSE) return 1;
    // Somebody else may have made it since it was looked for; a file there is no directory.
    return GetLastError() == ERROR_ALREADY_EXISTS && is_directory(attributes_of(path)) ? 1 : 0;
}

int nmkFileDir::rmdir() const {
    if (m_path.is_null() || is_dir() == 0) return 1;
    return remove_directory(m_path) ? 1 : 0;
}

int nmkFileDir::delete_file(utString path) {
    // Deliberate: a directory counts as deleted and is not touched.
    if (path.is_null() || is_directory(attributes_of(path)) || exist(path) == 0) return 1;
    return winapi_remove(path.c_str()) == 0 ? 1 : 0;
}

int nmkFileDir::delete_file() const { return delete_file(m_path); }

int nmkFileDir::delete_file(int attempts, int wait) const {
    return in_attempts(attempts, wait, [&] { return delete_file() != 0; });
}

int nmkFileDir::delete_tree() const {
    if (m_path.is_null() || is_dir() == 0) return 1;
    if (!is_link(attributes_of(m_path)) && !remove_entries(m_path)) return 0;
    return remove_directory(m_path) ? 1 : 0;
}

int nmkFileDir::delete_tree(int attempts, int wait) const {
    return in_attempts(attempts, wait, [&] {
        delete_tree();
        return is_dir() == 0;
    });
}

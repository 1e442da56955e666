// nmkFileDir_access.cpp: what is there, and what may be done with it.
#include <nmktoolbox/files/nmkFileDir.h>
#include <winapi/file_attributes.h>
#include <winapi/file_names.h>
#include <winapi/last_error.h>
#include <winapi/types.h>

#include <cerrno>
#include <cstdio>
#include <string_view>

#include "file_attributes.h"

namespace {

constexpr int access_for_writing = 2;  // mode of _access
constexpr int names_to_try = 100;      // for a new file; a name that is taken already is rare

bool is_on_remote_drive(const utString& path) {
    if (GetDriveTypeA(path.c_str()) == DRIVE_REMOTE) return true;
    char drive_root[] = "?:\\";
    drive_root[0] = path[0];  // the letter of a drive is one byte
    return path[1] == ':' && GetDriveTypeA(drive_root) == DRIVE_REMOTE;
}

}  // namespace

int nmkFileDir::exist(const utString& path) {
    if (path.is_null()) return 0;
    if (GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES) return 1;
    // What may not be looked at is taken to exist.
    return GetLastError() == ERROR_ACCESS_DENIED ? 1 : 0;
}

int nmkFileDir::exist() const { return exist(m_path); }

int nmkFileDir::is_file() const {
    if (m_path.is_null()) return 0;
    const DWORD attributes = nmk_files::attributes_of(m_path);
    return attributes != INVALID_FILE_ATTRIBUTES && !nmk_files::is_directory(attributes) ? 1 : 0;
}

int nmkFileDir::is_dir() const { return is_dir(m_path); }

int nmkFileDir::is_dir(const utString& path) const {
    if (m_path.is_null() || path.is_null()) return 0;
    return nmk_files::is_directory(nmk_files::attributes_of(path)) ? 1 : 0;
}

int nmkFileDir::is_writeable() const {
    if (exist() != 0) return is_dir() != 0 ? is_dir_writeable() : is_file_writeable();
    utString parent;
    if (dirname(m_path, parent) == 0 || exist(parent) == 0) return 0;
    return is_dir_writeable(parent);
}

int nmkFileDir::is_dir_writeable() const { return is_dir_writeable(m_path); }

int nmkFileDir::is_dir_writeable(const utString& directory) const {
    if (directory.is_null()) return 0;
    // By creating a file, as the mode of a directory does not decide alone.
    for (int i = 0; i < names_to_try; ++i) {
        const nmkFileDir unused(nmkFileDirTmpFilenameTag, utString(""), m_encoding);
        nmkFileDir made(*this);
        made.m_path = directory;
        made.add_one(unused.basename_ext().c_str());
        // "x": a new file or none, so that no symlink or file of that name is ever written through.
        if (std::FILE* stream = std::fopen(made.get().c_str(), "wx")) {
            std::fclose(stream);
            made.delete_file();
            return 1;
        }
        if (errno != EEXIST) return 0;
    }
    return 0;
}

int nmkFileDir::is_file_writeable() const { return is_file_writeable(m_path); }

int nmkFileDir::is_file_writeable(const utString& path) const {
    if (path.is_null()) return 0;
    return _access(path.c_str(), access_for_writing) == 0 ? 1 : 0;
}

int nmkFileDir::is_local_file() const {
    if (exist() == 0) return 0;
    nmkFileDir full(*this);
    full.set_full_path();
    return is_on_remote_drive(full.m_path) || full.m_path.view().starts_with("//") ? 0 : 1;
}

int nmkFileDir::size() const {
    const utString full = get_full_path();
    struct _stat64i32 state;
    if (full.is_null() || ::_stat64i32(full.c_str(), &state) != 0) return -1;
    return static_cast<int>(state.st_size);
}

long long nmkFileDir::modification_time() const {
    struct _stat64i32 state;
    if (exist() == 0 || ::_stat64i32(m_path.c_str(), &state) != 0) return 0;
    return state.st_mtime;
}

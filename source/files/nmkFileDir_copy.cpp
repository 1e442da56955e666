// nmkFileDir_copy.cpp: copies of files and directories, and the renaming of a file.
#include <filesystem/copy_file.h>
#include <filesystem/remove_rename.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <nmktoolbox/files/nmkFileDirIter.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>

#include "file_attributes.h"
#include "tree_copy.h"

namespace {

using nmk_filesystem::CopySettings;
using nmk_filesystem::SafeFile;

constexpr double whole_in_percent = 100.0;

// 0 to 100, rounded down; 0 when there is nothing to copy.
std::uint64_t percentage(std::uint64_t done, std::uint64_t total) {
    if (total == 0) return 0;
    const bool fits = done <= UINT64_MAX / 100;
    return fits ? done * 100 / total : done / (total / 100);
}

// Reports each whole percentage to the caller, who may stop the copy.
nmk_filesystem::CopyWatch reporting_to(nmkProgressBreak* progress) {
    if (progress == nullptr) return {};
    return [progress](std::int64_t total, std::int64_t done) {
        const auto percent =
            percentage(static_cast<std::uint64_t>(done), static_cast<std::uint64_t>(total));
        return progress->jump_to(static_cast<double>(percent)) == 0;
    };
}

// 1, or 0 with errno.
int result_of(int error_number) {
    if (error_number == 0) return 1;
    errno = error_number;
    return 0;
}

int copy_one(const utString& source, const utString& target, CopySettings settings) {
    settings.mode = nmk_files::mode_of_copies;
    const auto copied =
        nmk_filesystem::copy_file({AT_FDCWD, source.c_str()}, {AT_FDCWD, target.c_str()}, settings);
    return result_of(copied.error_number);
}

// True when `target`, which need not exist, is `directory` itself or in it, however either is
// spelt and whichever symlinks lead there.
bool is_in(const nmkFileDir& target, const nmkFileDir& directory) {
    namespace fs = std::filesystem;
    std::error_code failed;
    const fs::path inside(directory.get().c_str());
    fs::path path = fs::absolute(target.get().c_str(), failed);
    if (!failed) path = fs::weakly_canonical(path, failed);
    if (failed) return true;  // unknown: better nothing written than without end
    for (;;) {
        if (fs::equivalent(path, inside, failed) && !failed) return true;
        if (!path.has_relative_path()) return false;
        path = path.parent_path();
    }
}

bool has_subdirectory(const nmkFileDir& directory) {
    nmkFileDirIter directories(directory, nmkFileDirIterDirectories, nullptr);
    while (++directories) {
        if (!nmk_files::is_symlink(nmk_files::attributes_of(directories().get()))) return true;
    }
    return false;
}

}  // namespace

int nmkFileDir::make_local_file(nmkProgressBreak* progress) {
    if (exist() == 0) return 0;
    if (is_local_file() != 0) {
        errno = 0;
        return 0;
    }
    const utString name = basename_ext();
    const std::size_t dot = name.view().rfind('.');
    utString suffix;
    if (dot != std::string_view::npos) suffix = utString(name.view().substr(dot));
    const nmkFileDir copy(nmkFileDirTmpFilenameTag, suffix, m_encoding);

    if (progress != nullptr) progress->set_range(whole_in_percent);
    CopySettings settings;
    // A file or symlink that another process created under that name is left alone.
    settings.existing = SafeFile::Existing::kept;
    settings.watch = reporting_to(progress);
    const int copied = copy.m_path.is_null() ? result_of(ENOENT)
                                             : copy_one(m_path, copy.m_path, std::move(settings));
    // Deliberate: the name is that of the copy even when there is none.
    *this = copy;
    return copied;
}

int nmkFileDir::rename_file(const char* to) const {
    // Deliberate: a missing file counts as renamed.
    if (m_path.is_null() || is_dir() != 0 || exist() == 0) return 1;
    return result_of(nmk_filesystem::rename_file(m_path.c_str(), to));
}

int nmkFileDir::copy_file(const nmkFileDir& target) const {
    if (m_path.is_null() || target.m_path.is_null()) return result_of(ENOENT);
    if (exist() == 0) return 0;
    nmkFileDir copy(target);
    if (copy.is_dir() != 0) copy.add_one(basename_ext().c_str());
    return copy_one(m_path, copy.m_path, {});
}

void nmkFileDir::copy_dir(const nmkFileDir& target) const {
    if (m_path.is_null() || target.m_path.is_null()) return;
    const utString name = basename_ext();
    nmkFileDir made(target);
    made.add_one(name.c_str());
    // The name ".." would lead out of the target.
    if (name == ".." || is_in(made, *this)) return;
    target.mkdir();
    nmk_files::copy_tree(m_path, target.m_path, name);
}

void nmkFileDir::copy_dir_contents(const nmkFileDir& target) const {
    if (m_path.is_null() || target.m_path.is_null() || is_in(target, *this)) return;
    if (target.is_dir() == 0 && !has_subdirectory(*this)) {
        // Deliberate: only a subdirectory creates the target on its way; without one, each file is
        // copied to the target's name itself, as copy_file does.
        nmkFileDirIter files(*this, nmkFileDirIterFiles, nullptr);
        while (++files) files().copy_file(target);
        return;
    }
    target.mkdir();
    nmk_files::copy_tree(m_path, target.m_path, utString());
}

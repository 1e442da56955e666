// nmkFileDir_copy.cpp: copies of files and directories, and the renaming of a file.
#include <apsl/ap_chmod.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <nmktoolbox/files/nmkFileDirIter.h>
#include <winapi/copy_file.h>
#include <winapi/remove_rename.h>
#include <winapi/types.h>

#include <cstdint>
#include <filesystem>
#include <system_error>

#include "file_attributes.h"

namespace {

constexpr int owner_reads_and_writes = 0600;
constexpr double whole_in_percent = 100.0;

// 0 to 100, rounded down; 0 when there is nothing to copy.
std::uint64_t percentage(std::uint64_t done, std::uint64_t total) {
    if (total == 0) return 0;
    const bool fits = done <= UINT64_MAX / 100;
    return fits ? done * 100 / total : done / (total / 100);
}

// Told by the copy how far it is; `sink` is the caller's reporter, or null.
DWORD tell_progress(LARGE_INTEGER total, LARGE_INTEGER done, LARGE_INTEGER, LARGE_INTEGER, DWORD,
                    DWORD, HANDLE, HANDLE, void* sink) {
    if (sink == nullptr) return PROGRESS_CONTINUE;
    const auto percent = percentage(static_cast<std::uint64_t>(done.QuadPart),
                                    static_cast<std::uint64_t>(total.QuadPart));
    auto* progress = static_cast<nmkProgressBreak*>(sink);
    return progress->jump_to(static_cast<double>(percent)) != 0 ? PROGRESS_CANCEL
                                                                : PROGRESS_CONTINUE;
}

// Makes at `to` a link to the same place; what is there already stays.
void copy_link(const nmkFileDir& from, const nmkFileDir& to) {
    std::error_code failed;
    std::filesystem::copy_symlink(from.get().c_str(), to.get().c_str(), failed);
}

// True when `target`, which need not exist, is `directory` itself or in it, however either is
// spelt and whichever links lead there.
bool is_in(const nmkFileDir& target, const nmkFileDir& directory) {
    namespace fs = std::filesystem;
    std::error_code failed;
    const fs::path inside(directory.get().c_str());
    fs::path place = fs::absolute(target.get().c_str(), failed);
    if (!failed) place = fs::weakly_canonical(place, failed);
    if (failed) return true;  // unknown: better not written than without end
    while (true) {
        if (fs::equivalent(place, inside, failed) && !failed) return true;
        if (!place.has_relative_path()) return false;
        place = place.parent_path();
    }
}

}  // namespace

int nmkFileDir::make_local_file(nmkProgressBreak* progress) {
    if (exist() == 0 || is_local_file() != 0) return 0;
    const utString name = basename_ext();
    const std::size_t dot = name.view().rfind('.');
    utString suffix;
    if (dot != std::string_view::npos) suffix = utString(name.view().substr(dot));
    const nmkFileDir copy(nmkFileDirTmpFilenameTag, suffix, m_encoding);

    if (progress != nullptr) progress->set_range(whole_in_percent);
    // A new file or none: a file or link that somebody put there is not written through.
    const int copied = copy.m_path.is_null()
                           ? 0
                           : CopyFileExA(m_path.c_str(), copy.m_path.c_str(), &tell_progress,
                                         progress, nullptr, COPY_FILE_FAIL_IF_EXISTS);
    // Deliberate: the name is that of the copy even when there is none.
    *this = copy;
    if (copied != 0) ap_chmod(m_path.c_str(), owner_reads_and_writes);
    return copied != 0 ? 1 : 0;
}

int nmkFileDir::rename_file(const char* to) const {
    // Deliberate: a missing file counts as renamed.
    if (m_path.is_null() || is_dir() != 0 || exist() == 0) return 1;
    return to != nullptr && winapi_rename(m_path.c_str(), to) == 0 ? 1 : 0;
}

int nmkFileDir::copy_file(const nmkFileDir& target) const {
    if (exist() == 0 || target.m_path.is_null()) return 0;
    nmkFileDir place(target);
    if (place.is_dir() != 0) place.add_one(basename_ext().c_str());
    const int copied =
        CopyFileExA(m_path.c_str(), place.m_path.c_str(), nullptr, nullptr, nullptr, 0);
    if (copied != 0) ap_chmod(place.m_path.c_str(), owner_reads_and_writes);
    return copied != 0 ? 1 : 0;
}

void nmkFileDir::copy_dir(const nmkFileDir& target) const {
    if (m_path.is_null() || target.m_path.is_null()) return;
    nmkFileDir made(target);
    made.add_one(basename_ext().c_str());
    if (is_in(made, *this)) return;
    made.mkdir();
    copy_entries(made, *this);
}

void nmkFileDir::copy_dir_contents(const nmkFileDir& target) const {
    if (m_path.is_null() || target.m_path.is_null() || is_in(target, *this)) return;
    copy_entries(target, *this);
}

void nmkFileDir::copy_entries(const nmkFileDir& target, const nmkFileDir& top) const {
    nmkFileDirIter directories(*this, nmkFileDirIterDirectories, nullptr);
    while (++directories) {
        nmkFileDir made(target);
        made.add_one(directories().basename_ext().c_str());
        if (is_link(attributes_of(directories().get()))) {
            copy_link(directories(), made);
            continue;
        }
        // A link that stands in the target already may lead back to where the copy came from.
        if (is_link(attributes_of(made.get())) && is_in(made, top)) continue;
        made.mkdir();
        directories().copy_entries(made, top);
    }
    nmkFileDirIter files(*this, nmkFileDirIterFiles, nullptr);
    while (++files) files().copy_file(target);
}

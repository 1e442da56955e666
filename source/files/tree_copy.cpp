#include "tree_copy.h"

#include <filesystem/copy_file.h>
#include <filesystem/directory_walk.h>
#include <filesystem/faults.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace nmk_files {

namespace {

using nmk_filesystem::DirectoryListing;
using nmk_filesystem::DirectoryWalk;
using nmk_filesystem::EntryKind;
using nmk_filesystem::FileCopy;
using nmk_filesystem::SafeFile;

// Copies that are written before all of them are flushed at once; each holds a file open.
constexpr std::size_t max_pending_copies = 64;

// Files of one directory on their way: written, then flushed together, then named.
class PendingCopies {
  public:
    PendingCopies(int source, int target) : m_source(source), m_target(target) {
        m_settings.mode = mode_of_copies;
        m_settings.target_symlink = nmk_filesystem::TargetSymlink::replaced;
    }

    // `name` must stay valid until the next commit.
    void add(const char* name) {
        if (m_copies.size() == max_pending_copies) commit();
        if (write(name) == EMFILE && !m_copies.empty()) {
            commit();
            write(name);
        }
    }

    void commit() {
        std::vector<SafeFile*> files;
        for (const auto& copy : m_copies) files.push_back(&copy->file());
        SafeFile::flush_together(files);
        for (const auto& copy : m_copies) copy->commit();
        m_copies.clear();
    }

  private:
    int write(const char* name) {
        auto copy = std::make_unique<FileCopy>();
        const auto result = copy->write({m_source, name}, {m_target, name}, m_settings);
        if (result.error_number == 0) m_copies.push_back(std::move(copy));
        return result.error_number;
    }

    int m_source;
    int m_target;
    nmk_filesystem::CopySettings m_settings;
    std::vector<std::unique_ptr<FileCopy>> m_copies;
};

// The entries of one directory on the way down. Files wait until all subdirectories are done.
struct Level {
    DirectoryListing entries;
    std::size_t done = 0;
    std::vector<std::size_t> files;  // indices of the entries
};

class TreeCopy {
  public:
    bool start(const std::string& source, const std::string& target, const char* subdirectory) {
        using Symlink = DirectoryWalk::Symlink;
        if (m_target.open(target.c_str(), Symlink::followed) != 0) return false;
        if (*subdirectory != '\0' && !enter_target(subdirectory)) return false;
        m_top_of_target = m_target.identity();
        return m_source.open(source.c_str(), Symlink::followed) == 0;
    }

    void run() {
        start_level();
        while (!m_levels.empty()) {
            Level& level = m_levels.back();
            if (level.done < level.entries.size()) {
                copy_entry(level.done++);
            } else if (!finish_level()) {
                return;
            }
        }
    }

  private:
    // True when the target has a directory of that name, which is then the current one.
    bool enter_target(const char* name) {
        const int made = m_target.make_directory(name);
        return (made == 0 || made == EEXIST) && m_target.enter(name) == 0;
    }

    void start_level() {
        nmk_filesystem::remove_leftovers(m_target.descriptor());
        m_source.list(m_levels.emplace_back().entries);
    }

    // False when there is no way back up.
    bool finish_level() {
        PendingCopies copies(m_source.descriptor(), m_target.descriptor());
        const Level& level = m_levels.back();
        for (const std::size_t index : level.files) copies.add(level.entries[index].name);
        copies.commit();
        m_levels.pop_back();
        return m_levels.empty() || (m_source.leave() == 0 && m_target.leave() == 0);
    }

    void copy_entry(std::size_t index) {
        const DirectoryListing::Entry entry = m_levels.back().entries[index];
        if (nmk_filesystem::is_temporary_name(entry.name)) return;
        const EntryKind kind = kind_of(entry);
        if (kind == EntryKind::directory) {
            descend(entry.name);
        } else if (kind == EntryKind::symlink && leads_to_directory(entry.name)) {
            copy_symlink(entry.name);
        } else {
            m_levels.back().files.push_back(index);
        }
    }

    // Some file systems do not keep the kind in the directory.
    EntryKind kind_of(const DirectoryListing::Entry& entry) const {
        struct stat record;
        const int unknown = nmk_filesystem::injected_fault("entry kind", entry.name);
        if (entry.kind != EntryKind::unknown && unknown == 0) return entry.kind;
        if (::fstatat(m_source.descriptor(), entry.name, &record, AT_SYMLINK_NOFOLLOW) != 0) {
            return EntryKind::other;
        }
        if (S_ISDIR(record.st_mode)) return EntryKind::directory;
        return S_ISLNK(record.st_mode) ? EntryKind::symlink : EntryKind::other;
    }

    bool leads_to_directory(const char* name) const {
        struct stat record;
        return ::fstatat(m_source.descriptor(), name, &record, 0) == 0 && S_ISDIR(record.st_mode);
    }

    // Creates a symlink to the same place; what has the name already stays.
    void copy_symlink(const char* name) const {
        char text[PATH_MAX];
        const ssize_t length = ::readlinkat(m_source.descriptor(), name, text, sizeof text - 1);
        if (length <= 0) return;
        text[length] = '\0';
        [[maybe_unused]] const int made = ::symlinkat(text, m_target.descriptor(), name);
    }

    void descend(const char* name) {
        if (!enter_target(name)) return;
        if (m_source.enter(name) != 0) {
            if (m_target.leave() != 0) m_levels.clear();
            return;
        }
        // A target that was moved into the source meanwhile would be copied without end.
        if (m_source.identity() != m_top_of_target) {
            start_level();
        } else if (m_source.leave() != 0 || m_target.leave() != 0) {
            m_levels.clear();
        }
    }

    DirectoryWalk m_source{DirectoryWalk::Use::listing};
    DirectoryWalk m_target{DirectoryWalk::Use::writing};
    DirectoryWalk::Identity m_top_of_target{};
    std::vector<Level> m_levels;  // not by recursion: a tree may be deeper than the stack
};

}  // namespace

void copy_tree(const utString& source, const utString& target, const utString& subdirectory) {
    // Deliberate: a root has lost its slash in the normal form, and gets it back here.
    const auto directory = [](const utString& path) { return std::string(path.view()) + "/"; };
    TreeCopy copy;
    const char* const name = subdirectory.is_null() ? "" : subdirectory.c_str();
    if (copy.start(directory(source), directory(target), name)) copy.run();
}

}  // namespace nmk_files

// safe_file.h: a file that appears under its name only when it is whole.
//
// It is written under a hidden name beside the target, flushed, checked, and renamed. Whatever
// fails before the rename, the process being killed included, leaves the target as it was:
//
//     SafeFile file;
//     int error_number = file.create(target, 0666);
//     if (error_number == 0) error_number = file.write(bytes);
//     if (error_number == 0) error_number = file.commit(SafeFile::Existing::replaced);
//
// The hidden name is ".nmk_part_" and 16 hexadecimal digits. The process holds a lock (flock) on
// the file while it writes; a file of such a name without a lock was left behind by a process that
// was killed, and `create` removes what it finds of that kind in the directory. Names of this form
// are reserved: a target of such a name is refused (EPERM), because it would soon be removed.
//
// All calls return 0 or an errno. For one thread at a time.
#pragma once

#include <filesystem/descriptor.h>
#include <sys/types.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace nmk_filesystem {

class SafeFile {
  public:
    /// What `commit` does when the target's name is taken.
    enum class Existing {
        replaced,  // the new file takes its place in one step; a symlink itself is replaced
        kept,      // fails with EEXIST
    };

    SafeFile() = default;
    SafeFile(const SafeFile&) = delete;
    SafeFile& operator=(const SafeFile&) = delete;
    /// Removes the temporary file unless it was committed.
    ~SafeFile() { discard(); }

    /// Creates the temporary file in the directory of `target`, and removes what killed processes
    /// left there. `mode` is the mode that the file is to have, less the umask of the process; it
    /// has that mode from the start, so a later set_mode should only take permissions away.
    int create(const std::string& target, mode_t mode);

    /// The same for an entry `name` of a directory that is open (with O_PATH is enough). Nothing is
    /// removed: call remove_leftovers once for many files. `directory` must stay open until the
    /// file is committed or discarded.
    int create_in(int directory, const std::string& name, mode_t mode);

    /// The open file, for reading and writing; -1 when there is none.
    int descriptor() const { return m_file.number(); }

    /// Appends the bytes.
    int write(std::string_view bytes);

    /// Counts bytes that were appended through the descriptor; `commit` checks the sum.
    void count_written(std::int64_t bytes) { m_size += bytes; }

    /// Sets exactly this mode, whatever the umask.
    int set_mode(mode_t mode);

    /// Gives the file another owner and group, which may take the privileges of root.
    int set_owner(uid_t owner, gid_t group);

    /// Writes the file to the disk now, so that `commit` has only to check and rename it.
    int flush();

    /// Lets `commit` do without writing the file to the disk: for what can be made again easily. A
    /// power failure soon afterwards may leave the file without its bytes.
    void skip_flush() { m_is_flushed = true; }

    /// Writes the files to the disk together, which is far quicker than one by one. A failure is
    /// not reported here but by the `commit` of the file concerned.
    static void flush_together(std::span<SafeFile* const> files);

    /// Flushes the file, checks that it has every byte (EIO if not) and renames it. After a failure
    /// the target is as it was, and `commit` may be called again, with another choice.
    int commit(Existing existing);

    /// Writes the new name to the disk, so that it lasts through a power failure as well. Failures
    /// are ignored: some file systems cannot do it. After `commit`.
    void flush_directory() const;

    /// Removes the temporary file; nothing happens after `commit`.
    void discard();

  private:
    int create_temporary(mode_t mode);
    int lock_temporary();
    int check_size() const;
    bool is_still_named() const;

    Descriptor m_own_directory;  // when `create` opened it
    int m_directory = -1;
    std::string m_name;       // of the target, in the directory
    std::string m_temporary;  // in the directory; empty when there is none
    Descriptor m_file;
    std::int64_t m_size = 0;  // bytes that the file should have
    bool m_is_flushed = false;
};

/// True for ".nmk_part_" and 16 hexadecimal digits: a file that is being written, or was left.
bool is_temporary_name(std::string_view name);

/// Removes the temporary files in the directory on which no process holds a lock. Those that may
/// not be opened or removed stay.
void remove_leftovers(int directory);

}  // namespace nmk_filesystem

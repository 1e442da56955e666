// lock_file.h: a file whose locks the kernel takes back when its holder ends, however that comes.
//
// The locks are those of the open file description (F_OFD_SETLK). Unlike record locks of a process,
// they exclude threads that opened the file separately, and stay when another descriptor of the
// file is closed. Unlike those of flock, there are several for one file. A forked child would share
// the description and keep the locks of a parent that was killed, so it closes its descriptors at
// once: in the child every LockFile is closed.
//
// The first byte of the file is its mark. The calls return 0 or an errno.
#pragma once

#include <filesystem/descriptor.h>

#include <string>

namespace winapi {

class LockFile {
  public:
    /// What is locked: a byte of the file each.
    enum class Part { ownership, existence, creation };

    LockFile();
    LockFile(const LockFile&) = delete;
    LockFile& operator=(const LockFile&) = delete;
    /// Gives all its locks back.
    ~LockFile();

    /// Opens the file, and creates it for the user alone if it is missing; a symlink is refused.
    int open(const std::string& name);

    bool is_open() const { return m_file.is_open(); }

    /// Waits until nobody else has a lock on the part.
    int lock(Part part);

    /// The same without waiting; EAGAIN if somebody else has a lock.
    int try_lock(Part part);

    /// A lock that several may have, in place of the present one if there is one; EAGAIN if
    /// somebody else has the other kind.
    int try_share(Part part);

    int unlock(Part part);

    /// True while the file of that name is the open one: it may have been deleted.
    bool is_still_named(const std::string& name) const;

    /// Whether the mark is set.
    bool is_marked() const;

    /// Sets or clears the mark. A failure is ignored: an owner that ends without releasing its
    /// mutex is then not noticed.
    void mark(bool marked) const;

    /// Around fork: no file is opened or closed meanwhile, and in the child all are closed.
    static void before_fork();
    static void after_fork_in_parent();
    static void after_fork_in_child();

  private:
    int set(int command, short kind, Part part);

    nmk_filesystem::Descriptor m_file;
};

}  // namespace winapi

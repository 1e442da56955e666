// nmkFileDir: the name of a file or directory, and what is done with it on the disk.
//
// A name is one text in normal form: separators are "/", and one trailing "/" at most has been
// taken away. The null string means that there is no name, which is not the same as the empty text.
// Bytes that the encoding cannot decode are kept: such a name is worked on byte by byte, and is
// found, copied and deleted like any other.
//
// Nothing throws or prints (diagnose_file_deletion_failure apart). Operations return 1 when the
// state is as wanted, so that having nothing to delete is a success, and 0 when they failed. errno
// then has the reason, until the thread makes its next call: ENOENT, EACCES, EEXIST, ENOTEMPTY,
// ENOSPC and the other errors of the disk; ECANCELED when the progress reporter stopped a copy;
// EBUSY for a copy of a file onto itself; ENODATA when the file became shorter while it was copied.
// Questions (exist, is_dir, is_valid, ...) return 1 for yes and 0 for no, and leave no reason.
//
// A symlink to a directory counts as a directory; delete_tree takes away the symlink and
// never goes through it, and copies create the symlink again. No operation locks anything. An
// object is for one thread at a time; get_native and set_cwd concern the whole process.
#pragma once

#include <apsl/apIStringEncoding.h>
#include <apsl/apPathName.h>
#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/export.h>
#include <utils/utString.h>

#include <string>

/// Picks the constructor of a name that is to be set later. The value is not read.
enum nmkFileDirEncoding { nmkFileDirEncodingTag };

/// Picks the constructor of a temporary name. The value is not read.
enum nmkFileDirTmpFilename { nmkFileDirTmpFilenameTag };

class NMKTOOLBOX_EXPORT nmkFileDir {
  public:
    /// No name, and the default encoding, which is the C runtime's code page.
    nmkFileDir();

    /// No name. A null encoding gives the default; encodings are borrowed, here and everywhere.
    nmkFileDir(nmkFileDirEncoding, const apIStringEncoding* encoding);

    /// The normal form of `path`; a null or an empty text gives no name. A text that holds a NUL
    /// ends there.
    nmkFileDir(const utString& path, const apIStringEncoding* encoding);
    nmkFileDir(const char* path, const apIStringEncoding* encoding);

    /// A name that did not exist a moment ago, in the directory for temporary files (TMPDIR), with
    /// "nmk_" and the process number at the start of the file part and `suffix` at its very end.
    ///
    /// No two are alike, in this process or between processes. The file is not created: create it
    /// so that an existing file is refused. No name when there is no such directory.
    nmkFileDir(nmkFileDirTmpFilename, const utString& suffix, const apIStringEncoding* encoding);

    nmkFileDir(const nmkFileDir&) = default;
    nmkFileDir& operator=(const nmkFileDir&) = default;

    /// Takes the normal form of `path`. A null encoding keeps the present one, not the default.
    void set(const utString& path, const apIStringEncoding* encoding);
    void set(const char* path, const apIStringEncoding* encoding);

    const utString& get() const { return m_path; }

    /// The name; empty when there is none, where get().c_str() is null.
    std::string str() const { return std::string(m_path.view()); }

    /// The name with backslashes as separators, in one text that all objects share: the next call,
    /// on any object and any thread, overwrites it. Not for two threads at the same time.
    const utString& get_native() const;

    /// The name as wide text; empty when it cannot be decoded exactly, or there is none.
    apPathName get_ap_path_name() const;

    /// Appends "/" and `name` unchanged. A null name becomes the rooted "/name".
    void add_one(const char* name);

    /// Puts `base` and "/" in front. A name that starts with "." or "/", or has ":" as its second
    /// character, counts as rooted and stays, so ./x and .hidden are not joined. Nothing happens
    /// when either is null. The result may have any length; it is never cut.
    void add_pathname(const utString& base);

    /// The name of the parent; 1 when there is one, 0 when the name was or became null. A single
    /// component has no parent, nor has one after a single "/".
    int up_one();

    /// Gives the last component the extension (without its dot); an empty one takes the present
    /// extension away. A name that ends in those letters, whatever their case, stays. A name
    /// without a directory becomes a rooted one: a.txt changed to tri is /a.tri.
    void change_extension(utString extension);

    /// The last component, without and with its extension.
    utString basename() const;
    utString basename_ext() const;

    /// The extension of a file that exists, without its dot; null for anything else.
    utString file_ext() const;

    /// What follows the last "." of the last component: empty when there is no dot or nothing
    /// behind it, null when there is no last component.
    utString file_ext_without_check() const;

    /// 1 when the name starts with "//" or has ":" as its second character.
    int is_full_path() const;

    /// The same of any text, put in normal form first; a null or empty one gives 0.
    static int is_full_path(const char* path);

    /// 1 when a full path can be made of it: one of at most 260 bytes, or a relative one that takes
    /// no more than 259 once made full.
    int is_valid() const;

    /// Becomes the full path where is_valid says 1; else stays.
    void set_full_path();

    /// Becomes the current directory; no name when that takes more than 259 bytes.
    void set_cwd();

    /// Replaces short components (LONGNA~1) by the long ones that the file system reports, in names
    /// with a drive or a server; any other name stays, as does one without "~".
    void make_long_pathname();

    /// 1 when something has that name, also a dangling symlink, and when access to it is denied.
    int exist() const;

    /// 1 when it exists, can be looked at, and is not a directory.
    int is_file() const;

    /// 1 when it exists, can be looked at, and is a directory.
    int is_dir() const;

    /// For a directory, is_dir_writeable; for a file, is_file_writeable; for a name that does not
    /// exist, is_dir_writeable of its parent.
    int is_writeable() const;

    /// 1 when a new file could really be made in the directory; it is deleted at once.
    int is_dir_writeable() const;

    /// 1 when the file's mode allows writing it; a read-only file is refused also to root.
    int is_file_writeable() const;

    /// 1 when the file exists and is not on a network drive. A name with two leading slashes is a
    /// network name.
    int is_local_file() const;

    /// Replaces the name of a network file by that of a copy among the temporary files, readable
    /// and writeable for the owner alone.
    ///
    ///   progress  null, or receives percentages of 0 to 100; it may stop the copy
    ///   returns   1 when a copy was made; 0 when it failed, and when none was needed (errno is 0
    ///   then)
    ///
    /// The name is that of the copy even when the copy failed, which leaves no file behind.
    int make_local_file(nmkProgressBreak* progress);

    /// Creates the directory, and its parents where they are missing. 1 when the name exists
    /// already, also as a file, or is null.
    int mkdir() const;

    /// Removes an empty directory, read-only or not; of a symlink to one, the symlink. 1 when no
    /// directory has that name.
    int rmdir() const;

    /// Renames a file, never onto something that exists. 1 without doing anything for no name, a
    /// directory, and a file that is missing.
    int rename_file(const char* to) const;

    /// Copies the file to `target`, or into it when that is a directory; the copy is readable and
    /// writeable for the owner alone. An existing file is overwritten, except
    /// by itself; a symlink to a file means that file. The copy gets its name when it is whole:
    /// after a failure, and when the process is killed, the target is as it was.
    int copy_file(const nmkFileDir& target) const;

    /// Copies the directory into `target` under its own name, and continues past what cannot be
    /// copied. Nothing at all is done when the copy would be the directory itself or in it.
    ///
    /// A symlink to a directory becomes a symlink to the same place, unless its name is taken; of
    /// other symlinks the file is copied. The copy never leaves the target, even when another
    /// process puts a symlink there meanwhile: one in the place of a file is replaced by the copy,
    /// one in the place of a directory is left alone, with what would be copied below it.
    void copy_dir(const nmkFileDir& target) const;

    /// The same with what is in the directory, straight into `target`. A missing target is created
    /// when a subdirectory is copied; with files alone, each is copied onto the target's name.
    void copy_dir_contents(const nmkFileDir& target) const;

    /// Deletes a file. 1 without doing anything for no name, a directory, and a missing file; 0 for
    /// one that its owner may not write, or when the system refuses.
    int delete_file() const;

    /// Tries up to `attempts` times (at least 1) with `wait` milliseconds between. With 0 attempts
    /// one try is still made, and the result is 0 even if it worked.
    int delete_file(int attempts, int wait) const;

    /// Deletes the directory and all that is in it, and stops at the first entry that cannot be
    /// deleted. 1 when no directory has that name.
    ///
    /// Symlinks are deleted, never followed, even when another process puts one in the place of a
    /// directory meanwhile.
    int delete_tree() const;

    /// The same with attempts and waiting as for delete_file.
    int delete_tree(int attempts, int wait) const;

    /// Bytes of the file; -1, with errno, when it cannot be read or needs more than 32 bits.
    int size() const;

    /// Seconds since 1970 of the last change; 0 when it cannot be read.
    long long modification_time() const;

  private:
    static const apIStringEncoding* choose_ut_encoding(const apIStringEncoding* encoding);
    void set_ut_encoding(const apIStringEncoding* encoding) { m_encoding = encoding; }

    /// The one place where text becomes a name; with `native`, separators become backslashes.
    utString normalise(const char* path, int native) const;
    void normalise(const char* path) { m_path = normalise(path, 0); }

    static int dirname(const utString& path, utString& parent);
    utString get_full_path() const;

    static int exist(const utString& path);
    int is_dir(const utString& path) const;
    int is_dir_writeable(const utString& directory) const;
    int is_file_writeable(const utString& path) const;
    static int mkdir(const utString& path);
    static int delete_file(utString path);

    /// Where NMK_DIAGNOSE_UNLINK is set in the environment, writes to the standard output when and
    /// what could not be deleted, and which processes hold it. Nothing here calls it: it is for
    /// finding out why a file cannot be deleted.
    void diagnose_file_deletion_failure() const;

    utString m_path;
    const apIStringEncoding* m_encoding;  // never null
};

#include <fcntl.h>
#include <filesystem/copy_file.h>
#include <filesystem/faults.h>
#include <filesystem/remove_rename.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace nmk_filesystem {

namespace {

bool is_missing_name(const char* name) { return name == nullptr || *name == '\0'; }

int renameat2_without_replacing(const Location& from, const Location& to) {
    if (const int fault = injected_fault("renameat2", from.name); fault != 0) return fault;
    const int result =
        ::renameat2(from.directory, from.name, to.directory, to.name, RENAME_NOREPLACE);
    return result == 0 ? 0 : errno;
}

// The end of a rename in two steps. If the old name has to stay, the new one is removed again; an
// old name that another process removed meanwhile is a success.
int remove_old_name(const Location& from, const Location& to) {
    if (::unlinkat(from.directory, from.name, 0) == 0 || errno == ENOENT) return 0;
    const int error_number = errno;
    ::unlinkat(to.directory, to.name, 0);
    return error_number;
}

// For file systems that cannot rename without replacing. A hard link never replaces; where there
// are none, looking first is the best that is possible.
int rename_by_looking(const Location& from, const Location& to) {
    if (::linkat(from.directory, from.name, to.directory, to.name, 0) == 0) {
        return remove_old_name(from, to);
    }
    struct stat record;
    if (errno == EEXIST || ::fstatat(to.directory, to.name, &record, AT_SYMLINK_NOFOLLOW) == 0) {
        return EEXIST;
    }
    return rename_replacing(from, to);
}

int move_to_another_disk(const char* old_name, const char* new_name) {
    struct stat record;
    if (::lstat(old_name, &record) != 0 || !S_ISREG(record.st_mode)) return EXDEV;
    CopySettings settings;
    settings.existing = SafeFile::Existing::kept;
    const CopyResult copied = copy_file({AT_FDCWD, old_name}, {AT_FDCWD, new_name}, settings);
    if (copied.error_number != 0) return copied.error_number;
    return remove_old_name({AT_FDCWD, old_name}, {AT_FDCWD, new_name});
}

}  // namespace

int remove_file(const char* name) {
    if (is_missing_name(name)) return ENOENT;
    if (const int fault = injected_fault("remove", name); fault != 0) return fault;
    struct stat record;
    if (::lstat(name, &record) != 0) return errno;
    const bool is_protected = !S_ISLNK(record.st_mode) && (record.st_mode & S_IWUSR) == 0;
    if (S_ISDIR(record.st_mode) || is_protected) return EACCES;
    if (::unlink(name) == 0) return 0;
    return errno == EISDIR ? EACCES : errno;  // a directory took its place meanwhile
}

int rename_replacing(const Location& old_name, const Location& new_name) {
    const int result =
        ::renameat(old_name.directory, old_name.name, new_name.directory, new_name.name);
    return result == 0 ? 0 : errno;
}

int rename_without_replacing(const Location& old_name, const Location& new_name) {
    const int error_number = renameat2_without_replacing(old_name, new_name);
    const bool is_unsupported = error_number == EINVAL || error_number == ENOSYS;
    return is_unsupported ? rename_by_looking(old_name, new_name) : error_number;
}

int rename_file(const char* old_name, const char* new_name) {
    if (is_missing_name(old_name) || is_missing_name(new_name)) return ENOENT;
    if (const int fault = injected_fault("rename", old_name); fault != 0) return fault;
    const int error_number = rename_without_replacing({AT_FDCWD, old_name}, {AT_FDCWD, new_name});
    return error_number == EXDEV ? move_to_another_disk(old_name, new_name) : error_number;
}

}  // namespace nmk_filesystem

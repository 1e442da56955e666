#include <apsl/ap_chmod.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

int ap_chmod(const char* name, int mode) noexcept {
    if (name == nullptr) {
        errno = EINVAL;
        return -1;
    }
    // The C library opens the file and sets the mode of what it opened; a symlink is refused.
    return ::fchmodat(AT_FDCWD, name, static_cast<mode_t>(mode), AT_SYMLINK_NOFOLLOW);
}

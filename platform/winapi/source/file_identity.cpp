#include "file_identity.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace winapi {

namespace {

std::optional<FileIdentity> identity_at(int directory, const char* name, int flags) {
    struct statx record;
    if (::statx(directory, name, flags, STATX_INO, &record) != 0) return std::nullopt;
    return FileIdentity{record.stx_dev_major, record.stx_dev_minor, record.stx_ino};
}

}  // namespace

std::optional<FileIdentity> identity_of(const std::string& name, bool follow) {
    return identity_at(AT_FDCWD, name.c_str(), follow ? 0 : AT_SYMLINK_NOFOLLOW);
}

std::optional<FileIdentity> identity_of(int descriptor) {
    return identity_at(descriptor, "", AT_EMPTY_PATH);
}

}  // namespace winapi

// file_identity.h: which file a name or a descriptor means.
#pragma once

#include <optional>
#include <string>

#include <sys/types.h>

namespace winapi {

struct FileIdentity {
    unsigned device_major;
    unsigned device_minor;
    unsigned long long inode;

    bool operator==(const FileIdentity&) const = default;
};

/// The file that the name means, or where `follow` is false the symlink; nothing if it is missing.
///
/// Times are not asked for: a kernel that gives a file a new time with each change after the last
/// one was read would write it with the next flush.
std::optional<FileIdentity> identity_of(const std::string& name, bool follow = true);

/// The open file.
std::optional<FileIdentity> identity_of(int descriptor);

}  // namespace winapi

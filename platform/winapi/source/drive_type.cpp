#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/sysmacros.h>
#include <winapi/file_names.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include "failure.h"

namespace {

struct FileSystem {
    std::uint32_t type;  // as statfs reports it
    UINT kind;
};

// Numbers of the kernel, which has no one header for all of them.
constexpr FileSystem file_systems[] = {
    {0x00006969, DRIVE_REMOTE},   // nfs
    {0x0000517B, DRIVE_REMOTE},   // smb
    {0xFF534D42, DRIVE_REMOTE},   // cifs
    {0xFE534D42, DRIVE_REMOTE},   // smb2
    {0x01021997, DRIVE_REMOTE},   // 9p
    {0x5346414F, DRIVE_REMOTE},   // afs
    {0x6B414653, DRIVE_REMOTE},   // kafs
    {0x73757245, DRIVE_REMOTE},   // coda
    {0x0000564C, DRIVE_REMOTE},   // ncp
    {0x00C36400, DRIVE_REMOTE},   // ceph
    {0x0BD00BD0, DRIVE_REMOTE},   // lustre
    {0x47504653, DRIVE_REMOTE},   // gpfs
    {0x20030528, DRIVE_REMOTE},   // orangefs
    {0x01161970, DRIVE_REMOTE},   // gfs2, on a disk that several machines share
    {0x7461636F, DRIVE_REMOTE},   // ocfs2, the same
    {0x786F4256, DRIVE_REMOTE},   // a directory shared by the host of a virtual machine
    {0x00009660, DRIVE_CDROM},    // iso9660
    {0x15013346, DRIVE_CDROM},    // udf
    {0x01021994, DRIVE_RAMDISK},  // tmpfs
    {0x858458F6, DRIVE_RAMDISK},  // ramfs
};

constexpr std::uint32_t fuse = 0x65735546;

// File systems in user space that bring another machine's files; the rest are local.
constexpr std::string_view remote_in_user_space[] = {
    "sshfs",    "rclone",    "s3fs",      "gcsfuse",    "curlftpfs", "davfs",   "davfs2",
    "smbnetfs", "glusterfs", "ceph-fuse", "gvfsd-fuse", "mfs",       "juicefs", "afp"};

// The type of the file system with that device number, "fuse.sshfs" say, from the kernel's table
// of mounts: "36 35 98:0 /root /mount options fields - type source options".
std::string type_of_mount(dev_t device) {
    const std::string wanted =
        std::to_string(gnu_dev_major(device)) + ":" + std::to_string(gnu_dev_minor(device));
    std::ifstream mounts("/proc/self/mountinfo");
    std::string line;
    while (std::getline(mounts, line)) {
        std::istringstream fields(line);
        std::string mount, parent, number;
        fields >> mount >> parent >> number;
        const auto separator = line.find(" - ");
        if (number == wanted && separator != line.npos) {
            std::istringstream rest(line.substr(separator + 3));
            std::string type;
            rest >> type;
            return type;
        }
    }
    return "";
}

UINT kind_in_user_space(const char* name) {
    struct stat record;
    if (::stat(name, &record) != 0) {
        return DRIVE_UNKNOWN;
    }
    const std::string whole = type_of_mount(record.st_dev);
    std::string_view type(whole);
    if (type.starts_with("fuse.")) {
        type.remove_prefix(5);
    }
    const bool remote = std::find(std::begin(remote_in_user_space), std::end(remote_in_user_space),
                                  type) != std::end(remote_in_user_space);
    return remote ? DRIVE_REMOTE : DRIVE_FIXED;
}

UINT kind_of(std::uint32_t type, const char* name) {
    if (type == fuse) {
        return kind_in_user_space(name);
    }
    for (const FileSystem& system : file_systems) {
        if (system.type == type) {
            return system.kind;
        }
    }
    return DRIVE_FIXED;
}

bool is_the_root_of_a_letter(std::string_view name) {
    const auto is_letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    return name.size() == 3 && is_letter(name[0]) && name[1] == ':' && name[2] == '\\';
}

}  // namespace

UINT GetDriveTypeA(LPCSTR name) {
    std::string asked = name == nullptr ? "." : name;
    if (asked.starts_with("//") && !asked.starts_with("///")) {
        return DRIVE_REMOTE;
    }
    if (is_the_root_of_a_letter(asked)) {
        asked.pop_back();
    }
    struct statfs record;
    if (winapi::injected_fault("GetDriveTypeA", asked.c_str()) != 0 ||
        ::statfs(asked.c_str(), &record) != 0) {
        return DRIVE_NO_ROOT_DIR;
    }
    if (nmk_filesystem::is_in_remote_directory(asked.c_str())) {
        return DRIVE_REMOTE;
    }
    return kind_of(static_cast<std::uint32_t>(record.f_type), asked.c_str());
}

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <winapi/held_folder.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string_view>

#include "attributes_of.h"
#include "failure.h"

namespace {

constexpr int open_folder_itself = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

// 0, or the errno for which the call named so is to fail.
int fault_in(const char* call, const std::string& name) {
    return winapi::injected_fault(call, name.c_str());
}

bool refuse(int error_number, const std::string& name) {
    winapi::fail(error_number, name.c_str());
    return false;
}

// What is gone already is as good as deleted.
bool deleted(int result, const std::string& name) {
    return result == 0 || errno == ENOENT || refuse(errno, name);
}

}  // namespace

winapi_held_folder::winapi_held_folder(const char* name) {
    if (winapi::is_nothing(name)) {
        winapi::fail(ENOENT, name);
        return;
    }
    m_descriptor = ::open(name, open_folder_itself);
    if (m_descriptor < 0) winapi::fail(errno, name);
}

winapi_held_folder::~winapi_held_folder() { hold(-1); }

void winapi_held_folder::hold(int descriptor) {
    if (m_descriptor >= 0) ::close(m_descriptor);
    m_descriptor = descriptor;
}

winapi_held_folder::Identity winapi_held_folder::identity_of(int descriptor) {
    struct stat record {};
    ::fstat(descriptor, &record);
    return {record.st_dev, record.st_ino};
}

bool winapi_held_folder::list(std::vector<std::string>& names) const {
    names.clear();
    const int again = ::openat(m_descriptor, ".", open_folder_itself);
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(again < 0 ? nullptr : ::fdopendir(again),
                                                     &::closedir);
    if (!folder) return refuse(errno, ".");
    while (const dirent* entry = ::readdir(folder.get())) {
        const std::string_view name(entry->d_name);
        if (name != "." && name != "..") names.emplace_back(name);
    }
    std::sort(names.begin(), names.end());
    return true;
}

bool winapi_held_folder::exists(const std::string& name) const {
    struct stat record;
    return ::fstatat(m_descriptor, name.c_str(), &record, AT_SYMLINK_NOFOLLOW) == 0 ||
           errno != ENOENT;
}

bool winapi_held_folder::enter(const std::string& name) {
    if (const int fault = fault_in("enter folder", name); fault != 0) return refuse(fault, name);
    const int inner = ::openat(m_descriptor, name.c_str(), open_folder_itself);
    if (inner < 0) return refuse(errno, name);
    m_above.push_back(identity_of(m_descriptor));
    hold(inner);
    return true;
}

bool winapi_held_folder::leave() {
    const int outer = ::openat(m_descriptor, "..", open_folder_itself);
    const int reason = errno;
    hold(outer);
    if (outer < 0) return refuse(reason, "..");
    const Identity expected = m_above.back();
    m_above.pop_back();
    return identity_of(outer) == expected || refuse(ENOENT, "..");
}

void winapi_held_folder::let_write() const {
    struct stat record;
    if (::fstat(m_descriptor, &record) != 0 || !winapi::is_read_only(record)) return;
    ::fchmod(m_descriptor, (record.st_mode & 07777) | S_IWUSR);
}

winapi_held_folder::Removal winapi_held_folder::remove_file(const std::string& name) const {
    const auto told = [](bool is_gone) { return is_gone ? Removal::done : Removal::refused; };
    struct stat record;
    if (::fstatat(m_descriptor, name.c_str(), &record, AT_SYMLINK_NOFOLLOW) != 0) {
        return told(deleted(-1, name));
    }
    if (S_ISDIR(record.st_mode)) return Removal::is_folder;
    if (const int fault = fault_in("remove", name); fault != 0) return told(refuse(fault, name));
    if (!S_ISLNK(record.st_mode) && winapi::is_read_only(record)) return told(refuse(EACCES, name));
    return told(deleted(::unlinkat(m_descriptor, name.c_str(), 0), name));
}

bool winapi_held_folder::remove_folder(const std::string& name) const {
    if (const int fault = fault_in("RemoveDirectoryA", name); fault != 0) {
        return refuse(fault, name);
    }
    return deleted(::unlinkat(m_descriptor, name.c_str(), AT_REMOVEDIR), name);
}

#include <fcntl.h>
#include <filesystem/descriptor.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <winapi/configuration_directory.h>

#include <cerrno>
#include <cstdlib>
#include <mutex>
#include <string>
#include <vector>

#include "make_directories.h"

namespace winapi {

namespace {

constexpr std::size_t account_record_size = 16384;

std::mutex guard;
std::string directory_of_the_host;  // under guard

std::string without_slash_at_end(std::string name) {
    while (name.size() > 1 && name.ends_with('/')) name.pop_back();
    return name;
}

// An absolute name from the environment, else empty.
std::string directory_from(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value == '/' ? without_slash_at_end(value) : "";
}

std::string home_directory() {
    std::string home = directory_from("HOME");
    if (!home.empty()) return home;
    passwd account = {};
    passwd* found = nullptr;
    std::vector<char> texts(account_record_size);
    ::getpwuid_r(::geteuid(), &account, texts.data(), texts.size(), &found);
    return found != nullptr && *found->pw_dir == '/' ? without_slash_at_end(found->pw_dir) : "";
}

void flush_directory(const std::string& name) {
    const nmk_filesystem::Descriptor directory(
        ::open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.is_open()) ::fsync(directory.number());
}

// 0 or errno; a new directory is written to the disk.
int make_directory(const std::string& name) {
    if (::mkdir(name.c_str(), 0700) != 0) return errno;
    const auto slash = name.rfind('/');
    flush_directory(slash == name.npos ? "." : name.substr(0, slash + 1));
    return 0;
}

}  // namespace

void set_configuration_directory(const char* directory) {
    const std::lock_guard lock(guard);
    directory_of_the_host = directory == nullptr ? "" : without_slash_at_end(directory);
}

std::string configuration_directory() {
    {
        const std::lock_guard lock(guard);
        if (!directory_of_the_host.empty()) return directory_of_the_host;
    }
    const std::string configuration = directory_from("XDG_CONFIG_HOME");
    if (!configuration.empty()) return configuration + "/nmktoolbox";
    const std::string home = home_directory();
    return home.empty() ? "" : home + "/.config/nmktoolbox";
}

int make_directories(const std::string& name) {
    int error_number = make_directory(name);
    const auto slash = name.rfind('/');
    if (error_number == ENOENT && slash != name.npos && slash > 0) {
        error_number = make_directories(name.substr(0, slash));
        if (error_number == 0) error_number = make_directory(name);
    }
    return error_number == EEXIST ? 0 : error_number;
}

}  // namespace winapi

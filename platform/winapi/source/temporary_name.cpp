#include <filesystem/random_number.h>
#include <limits.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <winapi/file_names.h>

#include <atomic>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include "failure.h"

namespace {

// Tries before a directory is given up. A second one is needed once in 2^64 files.
constexpr int tries = 100;

bool is_a_directory(const char* name) {
    struct stat record;
    return !winapi::is_nothing(name) && ::stat(name, &record) == 0 && S_ISDIR(record.st_mode);
}

// The directory for temporary names; null if a directory was asked for that does not exist.
const char* directory_for_names(const char* asked) {
    for (const char* variable : {"TMPDIR", "TMP"}) {
        // The secure form: a program with raised privileges does not let its caller choose.
        if (const char* directory = ::secure_getenv(variable); is_a_directory(directory)) {
            return directory;
        }
    }
    if (!winapi::is_nothing(asked)) {
        return is_a_directory(asked) ? asked : nullptr;
    }
    return is_a_directory(P_tmpdir) ? P_tmpdir : ".";
}

// A number of its own for each call in this process, so that two threads differ for certain; the
// random part keeps it from other processes and from being guessed.
bool number_text(std::string& text) {
    static std::atomic<std::uint32_t> calls = 0;
    std::uint64_t random;
    if (!nmk_filesystem::random_number(random)) {
        return false;
    }
    char digits[40];
    std::snprintf(digits, sizeof digits, "%020" PRIu64 "%u", random, calls.fetch_add(1));
    text = digits;
    return true;
}

bool exists(const std::string& name) {
    struct stat record;
    return ::lstat(name.c_str(), &record) == 0 || errno == EACCES;
}

char* fail_to_name(int error_number) {
    errno = error_number;
    return nullptr;
}

}  // namespace

char* _tempnam(const char* directory, const char* prefix) {
    const std::string_view start = prefix == nullptr ? "" : prefix;
    if (start.find('/') != start.npos) {
        return fail_to_name(EINVAL);
    }
    const char* chosen = directory_for_names(directory);
    if (chosen == nullptr) {
        return fail_to_name(ENOENT);
    }
    std::string base(chosen);
    if (!base.ends_with('/')) {
        base += '/';
    }
    for (int i = 0; i < tries; ++i) {
        std::string number;
        if (!number_text(number)) {
            return nullptr;
        }
        // The prefix is never cut to fit: callers find their files by it.
        if (start.size() + number.size() > NAME_MAX) {
            return fail_to_name(ENAMETOOLONG);
        }
        const std::string name = base + std::string(start) + number;
        if (!exists(name)) {
            return ::strdup(name.c_str());
        }
    }
    return fail_to_name(EEXIST);
}

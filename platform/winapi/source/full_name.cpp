#include <stdlib.h>
#include <unistd.h>
#include <winapi/file_names.h>
#include <winapi/last_error.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "failure.h"

namespace {

using Characters = std::unique_ptr<char, decltype(&::free)>;

// The current directory, however long; null with errno.
Characters current_directory() { return {::getcwd(nullptr, 0), &::free}; }

std::vector<std::string_view> components_of(std::string_view name) {
    std::vector<std::string_view> components;
    while (!name.empty()) {
        const auto length = std::min(name.find('/'), name.size());
        if (length > 0) {
            components.push_back(name.substr(0, length));
        }
        name.remove_prefix(std::min(length + 1, name.size()));
    }
    return components;
}

bool has_two_slashes(std::string_view name) {
    return name.starts_with("//") && !name.starts_with("///");
}

// Folds a name that starts at a root. Server and share behind two slashes belong to the root.
std::string folded(std::string_view name) {
    const bool on_a_server = has_two_slashes(name);
    const std::size_t fixed = on_a_server ? 2 : 0;
    std::vector<std::string_view> kept;
    for (const std::string_view component : components_of(name)) {
        if (kept.size() < fixed) {
            kept.push_back(component);
        } else if (component == "..") {
            kept.resize(std::max(fixed, kept.size() - (kept.empty() ? 0 : 1)));
        } else if (component != ".") {
            kept.push_back(component);
        }
    }
    std::string result = on_a_server ? "/" : "";
    for (const std::string_view component : kept) {
        result.append("/").append(component);
    }
    if (kept.empty() || name.ends_with('/')) {
        result += '/';
    }
    return result;
}

}  // namespace

DWORD GetFullPathNameA(LPCSTR name, DWORD size, LPSTR buffer, LPSTR* part) {
    if (winapi::is_nothing(name)) {
        winapi::fail_with(ERROR_INVALID_NAME);
        return 0;
    }
    std::string whole(name);
    if (whole.front() != '/') {
        const Characters directory = current_directory();
        if (!directory) {
            winapi::fail(errno, ".");
            return 0;
        }
        whole = std::string(directory.get()) + "/" + whole;
    }
    const std::string result = folded(whole);
    if (buffer == nullptr || result.size() >= size) {
        return static_cast<DWORD>(result.size() + 1);
    }
    std::copy_n(result.c_str(), result.size() + 1, buffer);
    if (part != nullptr) {
        *part = result.ends_with('/') ? nullptr : buffer + result.rfind('/') + 1;
    }
    return static_cast<DWORD>(result.size());
}

char* _getcwd(char* buffer, int size) {
    if (buffer == nullptr) {
        const Characters directory = current_directory();
        if (!directory) {
            return nullptr;
        }
        const std::string_view name(directory.get());
        const auto room = std::max(name.size() + 1, static_cast<std::size_t>(std::max(size, 0)));
        auto* const copy = static_cast<char*>(std::malloc(room));
        if (copy != nullptr) {
            std::copy_n(name.data(), name.size() + 1, copy);
        }
        return copy;
    }
    if (size <= 0) {
        errno = EINVAL;
        return nullptr;
    }
    return ::getcwd(buffer, static_cast<std::size_t>(size));
}

#include <fcntl.h>
#include <filesystem/descriptor.h>
#include <filesystem/directory_listing.h>
#include <sys/stat.h>
#include <winapi/file_attributes.h>
#include <winapi/find_file.h>
#include <winapi/last_error.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

#include "attributes_of.h"
#include "failure.h"
#include "handle_table.h"
#include "wildcard.h"

namespace {

void fill(WIN32_FIND_DATAA& entry, const char* name, const struct stat* record) {
    std::memset(&entry, 0, offsetof(WIN32_FIND_DATAA, cFileName));
    entry.cAlternateFileName[0] = '\0';
    const std::size_t length = std::min(std::strlen(name), sizeof entry.cFileName - 1);
    std::memcpy(entry.cFileName, name, length);
    entry.cFileName[length] = '\0';
    if (record == nullptr) {
        return;
    }
    entry.dwFileAttributes = winapi::attributes_of(*record);
    entry.ftCreationTime = winapi::file_time_of(record->st_mtim);
    entry.ftLastAccessTime = winapi::file_time_of(record->st_atim);
    entry.ftLastWriteTime = winapi::file_time_of(record->st_mtim);
    const auto size = static_cast<std::uint64_t>(S_ISREG(record->st_mode) ? record->st_size : 0);
    entry.nFileSizeHigh = static_cast<DWORD>(size >> 32);
    entry.nFileSizeLow = static_cast<DWORD>(size);
}

// "." and "..", then the entries of the directory by byte value.
class Search : public winapi::HandleObject {
  public:
    Search(const std::string& directory, std::string_view pattern)
        : m_pattern(pattern == "*.*" ? "*" : pattern),
          m_name(directory),
          m_directory(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

    bool closes_by_close_handle() const override { return false; }

    // Reads the directory; 0 or errno.
    int read() { return m_directory.is_open() ? m_entries.read(m_name.c_str()) : errno; }

    bool give_next(WIN32_FIND_DATAA& entry) {
        while (const char* name = next_name()) {
            if (winapi::fits_wildcards(name, m_pattern) && give(name, entry)) return true;
        }
        return false;
    }

  private:
    static constexpr std::array<const char*, 2> dots = {".", ".."};

    const char* next_name() {
        const std::size_t index = m_next++;
        if (index < dots.size()) return dots[index];
        const std::size_t entry = index - dots.size();
        return entry < m_entries.size() ? m_entries[entry].name : nullptr;
    }

    // False for an entry that vanished since the directory was read.
    bool give(const char* name, WIN32_FIND_DATAA& entry) const {
        struct stat record;
        int error_number = winapi::injected_fault("FindNextFileA", name);
        if (error_number == 0 &&
            ::fstatat(m_directory.number(), name, &record, AT_SYMLINK_NOFOLLOW) != 0) {
            error_number = errno;
        }
        if (error_number == ENOENT) return false;
        fill(entry, name, error_number == 0 ? &record : nullptr);
        return true;
    }

    std::string m_pattern;
    std::string m_name;
    nmk_filesystem::Descriptor m_directory;
    nmk_filesystem::DirectoryListing m_entries;
    std::size_t m_next = 0;
};

// A search for one entry, which has been given already.
class SingleSearch : public winapi::HandleObject {
  public:
    bool closes_by_close_handle() const override { return false; }
};

HANDLE fail_to_find(int error_number, const char* name) {
    winapi::fail(error_number, name);
    return INVALID_HANDLE_VALUE;
}

HANDLE fail_to_find_because(DWORD reason) {
    winapi::fail_with(reason);
    return INVALID_HANDLE_VALUE;
}

HANDLE find_one(const char* name, std::string_view last_component, WIN32_FIND_DATAA& entry) {
    struct stat record;
    if (::lstat(name, &record) != 0) {
        return fail_to_find(errno, name);
    }
    fill(entry, std::string(last_component).c_str(), &record);
    return winapi::open_handle(std::make_shared<SingleSearch>());
}

HANDLE find_many(const std::string& directory, std::string_view pattern, WIN32_FIND_DATAA& entry) {
    const auto search = std::make_shared<Search>(directory, pattern);
    if (const int error_number = search->read(); error_number != 0) {
        if (error_number == ENOENT || error_number == ENOTDIR) {
            return fail_to_find_because(ERROR_PATH_NOT_FOUND);
        }
        return fail_to_find(error_number, directory.c_str());
    }
    if (!search->give_next(entry)) {
        return fail_to_find_because(ERROR_FILE_NOT_FOUND);
    }
    return winapi::open_handle(search);
}

}  // namespace

HANDLE FindFirstFileA(LPCSTR pattern, WIN32_FIND_DATAA* entry) {
    if (entry == nullptr) {
        return fail_to_find_because(ERROR_INVALID_PARAMETER);
    }
    if (winapi::is_nothing(pattern)) {
        return fail_to_find_because(ERROR_PATH_NOT_FOUND);
    }
    if (const int fault = winapi::injected_fault("FindFirstFileA", pattern); fault != 0) {
        return fail_to_find(fault, pattern);
    }
    const std::string_view whole(pattern);
    const auto slash = whole.rfind('/');
    const std::string_view last = whole.substr(slash == whole.npos ? 0 : slash + 1);
    if (last.empty()) {
        return fail_to_find_because(ERROR_FILE_NOT_FOUND);
    }
    if (!winapi::has_wildcard(last)) {
        return find_one(pattern, last, *entry);
    }
    const std::string directory(slash == whole.npos ? "." : whole.substr(0, slash + 1));
    return find_many(directory, last, *entry);
}

BOOL FindNextFileA(HANDLE search, WIN32_FIND_DATAA* entry) {
    if (entry == nullptr) {
        return winapi::fail_with(ERROR_INVALID_PARAMETER);
    }
    const auto object = winapi::object_of(search);
    if (const auto many = std::dynamic_pointer_cast<Search>(object)) {
        return many->give_next(*entry) ? TRUE : winapi::fail_with(ERROR_NO_MORE_FILES);
    }
    const bool single = std::dynamic_pointer_cast<SingleSearch>(object) != nullptr;
    return winapi::fail_with(single ? ERROR_NO_MORE_FILES : ERROR_INVALID_HANDLE);
}

BOOL FindClose(HANDLE search) {
    const auto object = winapi::object_of(search);
    if (object == nullptr || object->closes_by_close_handle() || !winapi::close_handle(search)) {
        return winapi::fail_with(ERROR_INVALID_HANDLE);
    }
    return TRUE;
}

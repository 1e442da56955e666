#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <winapi/find_file.h>
#include <winapi/last_error.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "attributes_of.h"
#include "failure.h"
#include "handle_table.h"
#include "wildcard.h"

namespace {

class Folder {
  public:
    explicit Folder(const char* name) : m_stream(::opendir(name)) {}
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        if (m_stream != nullptr) {
            ::closedir(m_stream);
        }
    }
    bool is_open() const { return m_stream != nullptr; }
    int descriptor() const { return ::dirfd(m_stream); }

    // The name of the next entry; null at the end or, with errno set, for a failure.
    const char* next() {
        errno = 0;
        const dirent* entry = ::readdir(m_stream);
        return entry == nullptr ? nullptr : entry->d_name;
    }

  private:
    DIR* m_stream;
};

// Names one behind the other, each with its NUL, and where each starts, in the order to give them.
class SortedNames {
  public:
    void add(const char* name) {
        m_starts.push_back(m_bytes.size());
        m_bytes.append(name, std::strlen(name) + 1);
    }

    void sort() {
        std::sort(m_starts.begin(), m_starts.end(), [this](std::size_t a, std::size_t b) {
            return precedes(m_bytes.c_str() + a, m_bytes.c_str() + b);
        });
    }

    const char* next() {
        return m_given < m_starts.size() ? m_bytes.c_str() + m_starts[m_given++] : nullptr;
    }

  private:
    static int rank(const char* name) {
        return std::strcmp(name, ".") == 0 ? 0 : std::strcmp(name, "..") == 0 ? 1 : 2;
    }
    static bool precedes(const char* a, const char* b) {
        // The dots can only be out of order against names that start with a byte up to theirs.
        if (*a <= '.' || *b <= '.') {
            const int rank_of_a = rank(a), rank_of_b = rank(b);
            if (rank_of_a != rank_of_b) {
                return rank_of_a < rank_of_b;
            }
        }
        return std::strcmp(a, b) < 0;
    }

    std::string m_bytes;
    std::vector<std::size_t> m_starts;
    std::size_t m_given = 0;
};

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

class Search : public winapi::HandleObject {
  public:
    Search(std::string folder, std::string pattern)
        : m_folder_name(std::move(folder)),
          m_pattern(pattern == "*.*" ? "*" : std::move(pattern)),
          m_folder(m_folder_name.c_str()) {}

    bool closes_by_close_handle() const override { return false; }

    // Reads the folder; 0 or errno.
    int read() {
        if (!m_folder.is_open()) {
            return errno;
        }
        const char* name;
        while ((name = m_folder.next()) != nullptr) {
            if (winapi::fits_wildcards(name, m_pattern)) {
                m_names.add(name);
            }
        }
        const int error_number = errno;
        m_names.sort();
        return error_number;
    }

    bool give_next(WIN32_FIND_DATAA& entry) {
        while (const char* name = m_names.next()) {
            if (give(name, entry)) {
                return true;
            }
        }
        return false;
    }

  private:
    bool give(const char* name, WIN32_FIND_DATAA& entry) const {
        struct stat record;
        int error_number = winapi::injected_fault("FindNextFileA", name);
        if (error_number == 0 &&
            ::fstatat(m_folder.descriptor(), name, &record, AT_SYMLINK_NOFOLLOW) != 0) {
            error_number = errno;
        }
        if (error_number == ENOENT) {
            return false;  // vanished since the folder was read
        }
        fill(entry, name, error_number == 0 ? &record : nullptr);
        return true;
    }

    std::string m_folder_name;
    std::string m_pattern;
    Folder m_folder;
    SortedNames m_names;
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

HANDLE find_many(std::string folder, std::string_view pattern, WIN32_FIND_DATAA& entry) {
    const auto search = std::make_shared<Search>(folder, std::string(pattern));
    if (const int error_number = search->read(); error_number != 0) {
        if (error_number == ENOENT || error_number == ENOTDIR) {
            return fail_to_find_because(ERROR_PATH_NOT_FOUND);
        }
        return fail_to_find(error_number, folder.c_str());
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
    std::string folder(slash == whole.npos ? "." : whole.substr(0, slash + 1));
    return find_many(std::move(folder), last, *entry);
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

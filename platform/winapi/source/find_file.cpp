#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <winapi/file_attributes.h>
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

    // The next entry; null at the end or, with errno set, for a failure.
    const dirent* next() {
        errno = 0;
        return ::readdir(m_stream);
    }

  private:
    DIR* m_stream;
};

// Names one behind the other, each with its NUL and the kind of the entry in front, and where each
// starts, in the order to give them.
class SortedNames {
  public:
    void add(const dirent& entry) {
        m_bytes += static_cast<char>(entry.d_type);
        m_starts.push_back(m_bytes.size());
        m_bytes.append(entry.d_name, std::strlen(entry.d_name) + 1);
    }

    void sort() {
        std::sort(m_starts.begin(), m_starts.end(), [this](std::size_t a, std::size_t b) {
            return precedes(m_bytes.c_str() + a, m_bytes.c_str() + b);
        });
    }

    const char* next() {
        return m_given < m_starts.size() ? m_bytes.c_str() + m_starts[m_given++] : nullptr;
    }

    // The kind of the entry whose name `next` gave, as the folder tells it.
    static unsigned char kind_of(const char* name) { return static_cast<unsigned char>(name[-1]); }

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

// The attributes that the kind of an entry tells of; 0 where it tells none.
DWORD attributes_of_kind(unsigned char kind) {
    switch (kind) {
        case DT_DIR:
            return FILE_ATTRIBUTE_DIRECTORY;
        case DT_REG:
            return FILE_ATTRIBUTE_ARCHIVE;
        case DT_LNK:
            return FILE_ATTRIBUTE_REPARSE_POINT;
        default:
            return 0;
    }
}

class Search : public winapi::HandleObject {
  public:
    Search(std::string folder, std::string pattern, bool only_kinds)
        : m_only_kinds(only_kinds),
          m_folder_name(std::move(folder)),
          m_pattern(pattern == "*.*" ? "*" : std::move(pattern)),
          m_folder(m_folder_name.c_str()) {}

    bool closes_by_close_handle() const override { return false; }

    // Reads the folder; 0 or errno.
    int read() {
        if (!m_folder.is_open()) {
            return errno;
        }
        // Who may not search the folder may not be told of its entries either.
        m_only_kinds =
            m_only_kinds && ::faccessat(m_folder.descriptor(), ".", X_OK, AT_EACCESS) == 0;
        while (const dirent* entry = m_folder.next()) {
            if (winapi::fits_wildcards(entry->d_name, m_pattern)) {
                m_names.add(*entry);
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
        const DWORD kind = m_only_kinds ? attributes_of_kind(SortedNames::kind_of(name)) : 0;
        if (kind != 0) {
            fill(entry, name, nullptr);
            entry.dwFileAttributes = kind;
            return true;
        }
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

    bool m_only_kinds;
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

HANDLE find_many(const std::string& folder, std::string_view pattern, bool only_kinds,
                 WIN32_FIND_DATAA& entry) {
    const auto search = std::make_shared<Search>(folder, std::string(pattern), only_kinds);
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

HANDLE find_first(LPCSTR pattern, bool only_kinds, WIN32_FIND_DATAA* entry) {
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
    const std::string folder(slash == whole.npos ? "." : whole.substr(0, slash + 1));
    return find_many(folder, last, only_kinds, *entry);
}

}  // namespace

HANDLE FindFirstFileA(LPCSTR pattern, WIN32_FIND_DATAA* entry) {
    return find_first(pattern, false, entry);
}

HANDLE winapi_find_first_kind(LPCSTR pattern, WIN32_FIND_DATAA* entry) {
    return find_first(pattern, true, entry);
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

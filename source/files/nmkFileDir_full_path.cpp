// nmkFileDir_full_path.cpp: parents, full paths and long names.
#include <nmktoolbox/files/nmkFileDir.h>
#include <winapi/code_page.h>
#include <winapi/file_names.h>
#include <winapi/find_file.h>
#include <winapi/types.h>

#include <string>
#include <string_view>

#include "drive_letter.h"

namespace {

constexpr int longest_full_path = 260;       // bytes of a full path that is still taken
constexpr DWORD relative_path_room = 260;    // bytes, with the NUL, for a relative path made full
constexpr int current_directory_room = 260;  // bytes, with the NUL

constexpr UINT thread_code_page = 0;
constexpr DWORD refuse_invalid_bytes = 8;  // of MultiByteToWideChar

// Wide text of all of `bytes`; empty when the conversion is not exact.
std::wstring wide_text(std::string_view bytes) {
    const int length = static_cast<int>(bytes.size());
    const int room = MultiByteToWideChar(thread_code_page, refuse_invalid_bytes, bytes.data(),
                                         length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(room > 0 ? room : 0), L'\0');
    if (!wide.empty()) {
        MultiByteToWideChar(thread_code_page, refuse_invalid_bytes, bytes.data(), length,
                            wide.data(), room);
    }
    return wide;
}

std::string narrow_text(std::wstring_view wide) {
    const int length = static_cast<int>(wide.size());
    const int room =
        WideCharToMultiByte(thread_code_page, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(room > 0 ? room : 0), '\0');
    if (!bytes.empty()) {
        WideCharToMultiByte(thread_code_page, 0, wide.data(), length, bytes.data(), room, nullptr,
                            nullptr);
    }
    return bytes;
}

// The position of the last "/", from the last character down to index 1; 0 when there is none.
// Deliberate: index 0 is never looked at, so /a has no parent.
template <class Text>
std::size_t last_slash(const Text& text, typename Text::value_type slash) {
    const std::size_t position = text.rfind(slash);
    return position == Text::npos ? 0 : position;
}

bool has_wildcard(const utString& component) {
    return component.view().find_first_of("*?") != std::string_view::npos;
}

// The name that the file system reports for `query`, or `component` when it reports none.
utString reported_name(const utString& query, const utString& component) {
    // A name with a wildcard in it is not a short name, and would find another file.
    if (has_wildcard(component)) return component;
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA(query.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return component;
    FindClose(search);
    return utString(found.cFileName);
}

}  // namespace

int nmkFileDir::dirname(const utString& path, utString& parent) {
    const std::wstring wide = wide_text(path.view());
    if (!wide.empty()) {
        const std::size_t slash = last_slash(wide, L'/');
        parent = slash > 0 ? utString(narrow_text(std::wstring_view(wide).substr(0, slash)))
                           : utString();
    } else {
        // Empty, or bytes that cannot be decoded: a slash is one byte in them all the same.
        const std::size_t slash = last_slash(path.view(), '/');
        parent = slash > 0 ? utString(path.view().substr(0, slash)) : utString();
    }
    return parent.is_null() ? 0 : 1;
}

int nmkFileDir::up_one() {
    if (m_path.is_null()) return 0;
    utString parent;
    const int has_parent = dirname(m_path, parent);
    m_path = parent;
    return has_parent;
}

int nmkFileDir::is_full_path() const {
    if (m_path.is_null()) return 0;
    return m_path.view().starts_with("//") || nmk_files::second_is_colon(m_path, *m_encoding) ? 1
                                                                                              : 0;
}

int nmkFileDir::is_full_path(const char* path) { return nmkFileDir(path, nullptr).is_full_path(); }

int nmkFileDir::is_valid() const { return get_full_path().is_null() ? 0 : 1; }

utString nmkFileDir::get_full_path() const {
    if (m_path.is_null()) return utString();
    if (is_full_path() != 0) {
        return m_path.length() <= longest_full_path ? m_path : utString();
    }
    char full[relative_path_room] = "";
    const DWORD needed = GetFullPathNameA(m_path.c_str(), relative_path_room, full, nullptr);
    return needed > 0 && needed < relative_path_room ? utString(full) : utString();
}

void nmkFileDir::set_full_path() {
    const utString full = get_full_path();
    if (!full.is_null()) normalise(full.c_str());
}

void nmkFileDir::set_cwd() {
    char directory[current_directory_room] = "";
    normalise(_getcwd(directory, current_directory_room));
}

void nmkFileDir::make_long_pathname() {
    if (m_path.view().find('~') == std::string_view::npos) return;
    const bool has_drive = m_path.locate_substring(":/") >= 0;
    const bool has_server = m_path.view().starts_with("//");
    // Asked first, as taking components eats the path.
    if (!has_drive && !has_server) return;

    utString query;
    utString component;
    m_path.extract_string('/', component);
    query = has_drive ? "" : "//";
    query += component;
    utString result = query;
    while (m_path.extract_string('/', component) != 0) {
        query += '/';
        query += component;
        result += '/';
        result += reported_name(query, component);
    }
    m_path = result;
}

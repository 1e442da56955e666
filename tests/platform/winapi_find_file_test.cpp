// Listing directories.
#include <fcntl.h>
#include <winapi/find_file.h>
#include <winapi/processes.h>

#include <cerrno>
#include <cstring>
#include <random>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/winapi_fixtures.h"

namespace {

std::vector<std::string> names_for(const std::string& pattern) {
    std::vector<std::string> names;
    WIN32_FIND_DATAA entry;
    HANDLE search = FindFirstFileA(pattern.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) {
        return {"failed", std::to_string(GetLastError())};
    }
    do {
        names.emplace_back(entry.cFileName);
    } while (FindNextFileA(search, &entry));
    EXPECT_EQ(GetLastError(), 18u);
    EXPECT_TRUE(FindClose(search));
    return names;
}

std::vector<std::string> failure(int reason) { return {"failed", std::to_string(reason)}; }

using Names = std::vector<std::string>;

// The same rule, one byte a character, by trying every length for each star.
bool plainly_fits(std::string_view name, std::string_view pattern) {
    if (pattern.empty()) {
        return name.empty();
    }
    if (pattern[0] == '*') {
        return plainly_fits(name, pattern.substr(1)) ||
               (!name.empty() && plainly_fits(name.substr(1), pattern));
    }
    return !name.empty() && (pattern[0] == '?' || pattern[0] == name[0]) &&
           plainly_fits(name.substr(1), pattern.substr(1));
}

std::string random_text(std::mt19937& random, const char* letters, std::size_t longest) {
    std::string text(1 + random() % longest, ' ');
    for (char& letter : text) {
        letter = letters[random() % std::strlen(letters)];
    }
    return text;
}

}  // namespace

TEST(FindFirstFileA, lists_by_byte_value_with_the_dots_first) {
    const OpenScratchDirectory scratch;
    for (const char* name : {"b", "a", "B", "\xC3\xA9", "\x01", "-", ".hidden", "...", "..a", ".-",
                             "a.b", "a b", "\xFF"}) {
        scratch.file(name, "");
    }
    EXPECT_EQ(names_for(scratch.in("*")),
              (Names{".", "..", "\x01", "-", ".-", "...", "..a", ".hidden", "B", "a", "a b", "a.b",
                     "b", "\xC3\xA9", "\xFF"}));
}

TEST(FindFirstFileA, an_empty_directory_has_its_dots) {
    const OpenScratchDirectory scratch;
    EXPECT_EQ(names_for(scratch.in("*")), (Names{".", ".."}));
    EXPECT_EQ(names_for(scratch.in("*.*")), (Names{".", ".."}));
}

TEST(FindFirstFileA, wildcards_match_runs_and_one_character) {
    const OpenScratchDirectory scratch;
    for (const char* name : {"a.txt", "ab.txt", "\xC3\xA9.txt", "a.dat", "txt", "abcabcabd"}) {
        scratch.file(name, "");
    }
    EXPECT_EQ(names_for(scratch.in("*.txt")), (Names{"a.txt", "ab.txt", "\xC3\xA9.txt"}));
    EXPECT_EQ(names_for(scratch.in("?.txt")), (Names{"a.txt", "\xC3\xA9.txt"}));
    EXPECT_EQ(names_for(scratch.in("a*.*t")), (Names{"a.dat", "a.txt", "ab.txt"}));
    EXPECT_EQ(names_for(scratch.in("*abd")), (Names{"abcabcabd"}));
    EXPECT_EQ(names_for(scratch.in("*.*")).size(), 8u);  // also names without a dot
    EXPECT_EQ(names_for(scratch.in("*.TXT")), failure(2));
    EXPECT_EQ(names_for(scratch.in("*x*x*")), failure(2));
}

TEST(FindFirstFileA, wildcards_agree_with_trying_every_length) {
    constexpr unsigned seed = 7;
    std::mt19937 random(seed);
    const OpenScratchDirectory scratch;
    std::set<std::string> files;
    for (int i = 0; i < 60; ++i) {
        files.insert("n" + random_text(random, "abn", 7));
    }
    for (const std::string& file : files) {
        scratch.file(file, "");
    }
    for (int i = 0; i < 300; ++i) {
        const std::string pattern = random_text(random, "n*", 1) + random_text(random, "abn*?", 6);
        if (pattern.find_first_of("*?") == pattern.npos) {
            continue;
        }
        Names expected;
        for (const std::string name : {".", ".."}) {
            if (plainly_fits(name, pattern)) {
                expected.push_back(name);
            }
        }
        for (const std::string& file : files) {
            if (plainly_fits(file, pattern)) {
                expected.push_back(file);
            }
        }
        EXPECT_EQ(names_for(scratch.in(pattern)), expected.empty() ? failure(2) : expected)
            << pattern << ", seed " << seed;
    }
}

TEST(FindFirstFileA, many_stars_take_no_time) {
    const OpenScratchDirectory scratch;
    scratch.file(std::string(255, 'a'), "");
    std::string pattern;
    for (int i = 0; i < 100; ++i) {
        pattern += "*a";
    }
    EXPECT_EQ(names_for(scratch.in(pattern)).size(), 1u);
    EXPECT_EQ(names_for(scratch.in(pattern + "*b")), failure(2));
}

TEST(FindFirstFileA, a_plain_name_gives_that_entry_directories_too) {
    const OpenScratchDirectory scratch;
    scratch.directory("directory");
    scratch.file("directory/inside", "");
    WIN32_FIND_DATAA entry;
    HANDLE search = FindFirstFileA(scratch.in("directory").c_str(), &entry);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    EXPECT_STREQ(entry.cFileName, "directory");
    EXPECT_EQ(entry.dwFileAttributes, 0x10u);
    EXPECT_FALSE(FindNextFileA(search, &entry));
    EXPECT_EQ(GetLastError(), 18u);
    EXPECT_TRUE(FindClose(search));
}

TEST(FindFirstFileA, reports_why_it_found_nothing) {
    const OpenScratchDirectory scratch;
    scratch.file("file", "");
    EXPECT_EQ(names_for(scratch.in("missing")), failure(2));
    EXPECT_EQ(names_for(scratch.in("missing*")), failure(2));
    EXPECT_EQ(names_for(scratch.in("missing/*")), failure(3));
    EXPECT_EQ(names_for(scratch.in("missing/x")), failure(3));
    EXPECT_EQ(names_for(scratch.in("file/*")), failure(3));
    EXPECT_EQ(names_for(scratch.path() + "/"), failure(2));
    EXPECT_EQ(names_for("/"), failure(2));
    EXPECT_EQ(names_for(""), failure(3));
    EXPECT_EQ(names_for(scratch.in(std::string(10000, 'x'))), failure(206));
    EXPECT_EQ(names_for(scratch.in(std::string(10000, 'x') + "/*")), failure(206));
    EXPECT_EQ(FindFirstFileA(nullptr, nullptr), INVALID_HANDLE_VALUE);
}

TEST(FindFirstFileA, lists_the_current_directory_and_the_root) {
    EXPECT_EQ(names_for("/*").front(), ".");
    EXPECT_EQ(names_for("*").front(), ".");
}

TEST(FindFirstFileA, reports_size_time_and_kind) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "12345");
    ASSERT_EQ(::truncate(file.c_str(), 0x100000003), 0);
    const timespec times[2] = {{0, 0}, {1, 500}};
    ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    WIN32_FIND_DATAA entry;
    HANDLE search = FindFirstFileA(file.c_str(), &entry);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(FindClose(search));
    EXPECT_EQ(entry.nFileSizeHigh, 1u);
    EXPECT_EQ(entry.nFileSizeLow, 3u);
    EXPECT_EQ(entry.dwFileAttributes, 0x21u);
    const std::uint64_t ticks = (std::uint64_t{entry.ftLastWriteTime.dwHighDateTime} << 32) |
                                entry.ftLastWriteTime.dwLowDateTime;
    EXPECT_EQ(ticks, 116444736000000000u + 10000000u + 5u);
    EXPECT_STREQ(entry.cAlternateFileName, "");
}

TEST(FindFirstFileA, a_symlink_is_described_itself) {
    const OpenScratchDirectory scratch;
    scratch.symlink("link", ".");
    WIN32_FIND_DATAA entry;
    HANDLE search = FindFirstFileA(scratch.in("l*").c_str(), &entry);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(FindClose(search));
    EXPECT_EQ(entry.dwFileAttributes, 0x400u);
    EXPECT_EQ(entry.nFileSizeLow, 0u);
}

TEST(FindFirstFileA, an_entry_that_vanishes_before_its_turn_is_left_out) {
    const OpenScratchDirectory scratch;
    scratch.file("a", "");
    const std::string second = scratch.file("b", "");
    scratch.file("c", "");
    WIN32_FIND_DATAA entry;
    HANDLE search = FindFirstFileA(scratch.in("*").c_str(), &entry);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    ASSERT_EQ(::unlink(second.c_str()), 0);
    scratch.file("bb", "");  // came too late
    Names names;
    while (FindNextFileA(search, &entry)) {
        names.emplace_back(entry.cFileName);
    }
    EXPECT_TRUE(FindClose(search));
    EXPECT_EQ(names, (Names{"..", "a", "c"}));
}

TEST(FindFirstFileA, a_directory_that_may_not_be_read_denies_access) {
    const OpenScratchDirectory scratch;
    const std::string closed = scratch.directory("closed");
    ASSERT_EQ(::chmod(closed.c_str(), 0300), 0);
    EXPECT_EQ(without_rights([&] { return names_for(closed + "/*") == failure(5) ? 0 : 1; }), 0);
    ASSERT_EQ(::chmod(closed.c_str(), 0700), 0);
}

TEST(FindFirstFileA, a_directory_that_may_be_read_but_not_searched_gives_names_without_attributes) {
    const OpenScratchDirectory scratch;
    const std::string closed = scratch.directory("closed");
    scratch.file("closed/file", "x");
    ASSERT_EQ(::chmod(closed.c_str(), 0744), 0);
    if (::geteuid() != 0) {
        ASSERT_EQ(::chmod(closed.c_str(), 0400), 0);
    }
    EXPECT_EQ(without_rights([&] {
                  WIN32_FIND_DATAA entry;
                  HANDLE search = FindFirstFileA((closed + "/f*").c_str(), &entry);
                  return search != INVALID_HANDLE_VALUE && entry.dwFileAttributes == 0 &&
                                 std::strcmp(entry.cFileName, "file") == 0
                             ? 0
                             : 1;
              }),
              0);
    ASSERT_EQ(::chmod(closed.c_str(), 0700), 0);
}

TEST(FindFirstFileA, names_of_255_bytes_come_whole) {
    const OpenScratchDirectory scratch;
    const std::string longest(255, 'n');
    scratch.file(longest, "");
    EXPECT_EQ(names_for(scratch.in("n*")), Names{longest});
}

TEST(FindClose, refuses_other_handles) {
    const OpenScratchDirectory scratch;
    WIN32_FIND_DATAA entry;
    HANDLE search = FindFirstFileA(scratch.in("*").c_str(), &entry);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    EXPECT_FALSE(CloseHandle(search));
    EXPECT_EQ(GetLastError(), 6u);
    EXPECT_TRUE(FindClose(search));
    SetLastError(untouched);
    EXPECT_FALSE(FindClose(search));
    EXPECT_EQ(GetLastError(), 6u);
    EXPECT_FALSE(FindNextFileA(search, &entry));
    EXPECT_EQ(GetLastError(), 6u);
    EXPECT_FALSE(FindClose(INVALID_HANDLE_VALUE));
    EXPECT_FALSE(FindClose(nullptr));
}

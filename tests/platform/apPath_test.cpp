// Names of files, and the small services around them: access bits, comparison, waiting.

#include <apsl/apCodePage.h>
#include <apsl/apHighResTime.h>
#include <apsl/apPath.h>
#include <apsl/ap_chmod.h>
#include <apsl/apstrcasecmp.h>
#include <apsl/apwait.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "scoped_code_page.h"
#include "scratch_directory.h"

namespace {

/// A file of this process, with letters beyond ASCII in its name; removed at the end.
struct ScratchFile {
    std::filesystem::path path = std::filesystem::temp_directory_path() /
                                 ("apPath_\xC3\xA9\xE4\xB8\xAD_" + std::to_string(::getpid()));
    ScratchFile() { std::ofstream(path) << "x"; }
    ~ScratchFile() { std::filesystem::remove(path); }

    unsigned mode() const {
        struct stat record {};
        return ::stat(path.c_str(), &record) == 0 ? record.st_mode & 0777U : 0U;
    }
};

apString wide(const std::string& name) {
    int status = 0;
    return apString(ap_decode(ap_code_page_utf8, name, status));
}

}  // namespace

TEST(apPathName, the_default_name_is_empty) {
    EXPECT_TRUE(apPathName().is_empty());
    EXPECT_TRUE(apPathName(apString(L"")).is_empty());
    EXPECT_FALSE(apPathName(apString(L"a")).is_empty());
    EXPECT_EQ(apPathName(apString(L"a/b")).text(), apString(L"a/b"));
}

TEST(apPath, a_name_that_cannot_be_is_not_valid) {
    EXPECT_FALSE(apPath().is_valid());
    EXPECT_FALSE(apPath(apString(L"")).is_valid());
    EXPECT_FALSE(apPath(apString(std::wstring(L"a\0b", 3))).is_valid());
    EXPECT_TRUE(apPath(apString(L"a")).is_valid());
    EXPECT_TRUE(apPath().narrow().is_null());
    EXPECT_FALSE(apPath().exists());
}

TEST(apPath, knows_whether_a_name_exists) {
    std::string name;
    {
        const ScratchFile file;
        name = file.path.string();
        EXPECT_TRUE(apPath(wide(name)).exists());
        EXPECT_EQ(apPath(wide(name)).narrow(), utString(name));
        EXPECT_FALSE(apPath(wide(name + "/below")).exists());
    }
    EXPECT_FALSE(apPath(wide(name)).exists());
    EXPECT_TRUE(apPath(apString(L".")).exists());
}

TEST(apPath, never_takes_another_name_for_one_that_the_code_page_lacks) {
    const ScratchDirectory scratch;
    scratch.file("?", "");
    const std::wstring directory(scratch.path().begin(), scratch.path().end());
    const apPath lacking(apString(directory + L"/\u65E5"));
    EXPECT_FALSE(lacking.narrow().is_null());
    const wchar_t half_a_pair[] = {0xD83D, 0};
    EXPECT_TRUE(apPath(apString(half_a_pair)).narrow().is_null());
    const ScopedCodePage western(ap_code_page_western);
    EXPECT_TRUE(apPath(apString(directory + L"/?")).exists());
    EXPECT_FALSE(lacking.exists());
    EXPECT_TRUE(lacking.narrow().is_null());
}

TEST(ap_chmod, sets_the_access_bits) {
    const ScratchFile file;
    EXPECT_EQ(ap_chmod(file.path.c_str(), 0600), 0);
    EXPECT_EQ(file.mode(), 0600U);
    EXPECT_EQ(ap_chmod(file.path.c_str(), 0444), 0);
    EXPECT_EQ(file.mode(), 0444U);
}

TEST(ap_chmod, fails_where_there_is_nothing) {
    EXPECT_EQ(ap_chmod("/there/is/no/such/file", 0600), -1);
    EXPECT_EQ(ap_chmod(nullptr, 0600), -1);
}

TEST(apstrcasecmp, takes_capital_letters_for_small_ones) {
    EXPECT_EQ(apstrcasecmp("File.TXT", "fILE.txt"), 0);
    EXPECT_EQ(apstrcasecmp("", ""), 0);
    EXPECT_LT(apstrcasecmp("abc", "ABD"), 0);
    EXPECT_GT(apstrcasecmp("ABD", "abc"), 0);
    EXPECT_LT(apstrcasecmp("ab", "ABC"), 0);
    EXPECT_LT(apstrcasecmp("_", "A"), 0);  // as it does before the small letter
}

TEST(apstrcasecmp, folds_the_letters_of_ascii_and_nothing_else) {
    for (int first = 1; first < 256; ++first) {
        for (int second = 1; second < 256; ++second) {
            const char left[] = {static_cast<char>(first), '\0'};
            const char right[] = {static_cast<char>(second), '\0'};
            const bool letters = (first | 32) == (second | 32) && (first | 32) >= 'a' &&
                                 (first | 32) <= 'z' && first < 128 && second < 128;
            ASSERT_EQ(apstrcasecmp(left, right) == 0, first == second || letters)
                << first << " " << second;
        }
    }
}

TEST(apstrcasecmp, bytes_beyond_ascii_sort_behind_it) {
    EXPECT_GT(apstrcasecmp("\xC3\xA9", "z"), 0);
    EXPECT_NE(apstrcasecmp("\xC3\xA9", "\xC3\x89"), 0);
}

TEST(apstrcasecmp, null_sorts_before_every_text) {
    EXPECT_EQ(apstrcasecmp(nullptr, nullptr), 0);
    EXPECT_LT(apstrcasecmp(nullptr, ""), 0);
    EXPECT_GT(apstrcasecmp("", nullptr), 0);
}

TEST(apwait, lets_at_least_that_time_pass) {
    const double start = apHighResTime::time();
    apwait(20);
    EXPECT_GE(apHighResTime::time() - start, 0.020);
}

TEST(apwait, returns_at_once_for_nothing_or_less) {
    const double start = apHighResTime::time();
    apwait(0);
    apwait(-1000000);
    EXPECT_LT(apHighResTime::time() - start, 10.0);
}

#include <nmktoolbox/files/nmkBaseNameExt.h>

#include "files/text_samples.h"

#include <apsl/apStringEncodings.h>

#include <gtest/gtest.h>

namespace {

struct Names {
    const char* name;
    std::string path;
    std::string base;
    std::string with_extension;
};

const Names names_cases[] = {
    {"plain", "file", "file", "file"},
    {"extension", "file.ext", "file", "file.ext"},
    {"last_dot_counts", "a.b.c", "a.b", "a.b.c"},
    {"directory", "dir/file.ext", "file", "file.ext"},
    {"directory_of_the_other_system", "C:\\dir\\file.ext", "file", "file.ext"},
    {"later_of_both_separators", "a\\b/c\\d.e", "d", "d.e"},
    {"dot_in_the_directory", "dir.d/file", "file", "file"},
    {"only_dot_first", "dir/.profile", "", ".profile"},
    {"dot_first_and_last", "dir/.a.b", ".a", ".a.b"},
    {"dot_at_the_end", "file.", "file", "file."},
    {"directory_alone", "dir.d/", "", ""},
    {"separator_alone", "/", "", ""},
    {"empty", "", "", ""},
    {"one_character", "x", "x", "x"},
    {"wide_and_pairs", "\xE2\x82\xAC/\xF0\x9F\x98\x80.\xC3\xA4", "\xF0\x9F\x98\x80",
     "\xF0\x9F\x98\x80.\xC3\xA4"},
    {"ill_formed", "\xFF/a\xE2\x82.\xFE", "a\xE2\x82", "a\xE2\x82.\xFE"},
    {"ill_formed_without_directory", "\xFF\xFE", "\xFF\xFE", "\xFF\xFE"},
    {"nul_inside", std::string("d/a\0b.c", 7), std::string("a\0b", 3), std::string("a\0b.c", 5)},
};

/// Narrow text of two bytes for each character, the second of which can look like a separator.
class PairEncoding : public apIStringEncoding {
  public:
    apString decode(const utString& text, int& status) const override {
        std::wstring wide;
        const std::string_view bytes = text.view();
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
            wide += static_cast<wchar_t>(static_cast<unsigned char>(bytes[i]) * 256 +
                                         static_cast<unsigned char>(bytes[i + 1]));
        }
        status = 1;
        return apString(wide);
    }
    utString encode(const apString& text, int& status) const override {
        std::string bytes;
        for (const wchar_t unit : text.view()) {
            bytes += static_cast<char>(unit / 256);
            bytes += static_cast<char>(unit % 256);
        }
        status = 1;
        return utString(bytes);
    }
};

}  // namespace

TEST(nmkBaseNameExt, is_the_whole_name) {
    for (const Names& each : names_cases) {
        EXPECT_EQ(nmkBaseNameExt(utString(each.path), nullptr), utString(each.with_extension))
            << each.name;
    }
}

TEST(nmkBaseName, stops_at_the_last_dot) {
    for (const Names& each : names_cases) {
        EXPECT_EQ(nmkBaseName(utString(each.path), nullptr), utString(each.base)) << each.name;
    }
}

TEST(nmkBaseNameExt, keeps_the_null_string_null) {
    EXPECT_TRUE(nmkBaseName(utString(), nullptr).is_null());
    EXPECT_TRUE(nmkBaseNameExt(utString(), nullptr).is_null());
}

TEST(nmkBaseNameExt, reads_the_path_in_the_encoding_given) {
    const apString1252Encoding western;
    EXPECT_EQ(nmkBaseName("\xE4/\x80.\xFF", &western).view(), "\x80");
    const PairEncoding pairs;
    // The code units are a / U+2F2F U+5C5C . b, whose bytes hold "/" and backslash.
    const utString path(std::string("\0a\0/\x2F\x2F\x5C\x5C\0.\0b", 12));
    EXPECT_EQ(nmkBaseNameExt(path, &pairs).view(), std::string("\x2F\x2F\x5C\x5C\0.\0b", 8));
    EXPECT_EQ(nmkBaseName(path, &pairs).view(), "\x2F\x2F\x5C\x5C");
}

// The names themselves: normal form, and what is computed on the text.
#include <apsl/apStringEncodings.h>
#include <gtest/gtest.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <nmktoolbox/files/nmkFileDircoSList.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "name_samples.h"
#include "scratch_directory.h"

namespace {

// Decodes and encodes like the runtime, and counts its calls.
class CountingEncoding : public apStringCRTEncoding {
  public:
    apString decode(const utString& text, int& status) const override {
        ++decoded;
        return apStringCRTEncoding::decode(text, status);
    }
    mutable int decoded = 0;
};

// An encoding in which nothing can be said.
class MuteEncoding : public apIStringEncoding {
  public:
    apString decode(const utString&, int& status) const override {
        status = 0;
        return apString();
    }
    utString encode(const apString&, int& status) const override {
        status = 0;
        return utString();
    }
};

utString name_of(const char* text) { return nmkFileDir(text, nullptr).get(); }
utString name_of(const std::string& text) { return name_of(text.c_str()); }

struct NormalForm {
    const char* given;
    const char* expected;
};

}  // namespace

TEST(nmkFileDir, has_no_base_and_no_virtual_operations) {
    EXPECT_FALSE(std::is_polymorphic_v<nmkFileDir>);
}

TEST(nmkFileDir, a_null_and_an_empty_text_both_give_no_name) {
    EXPECT_TRUE(nmkFileDir().get().is_null());
    EXPECT_TRUE(nmkFileDir(static_cast<const char*>(nullptr), nullptr).get().is_null());
    EXPECT_TRUE(nmkFileDir("", nullptr).get().is_null());
    EXPECT_TRUE(nmkFileDir(utString(), nullptr).get().is_null());
    EXPECT_TRUE(nmkFileDir(utString(""), nullptr).get().is_null());
    EXPECT_TRUE(nmkFileDir(nmkFileDirEncodingTag, nullptr).get().is_null());
}

TEST(nmkFileDir, the_normal_form_has_forward_slashes_and_loses_one_at_the_end) {
    const NormalForm cases[] = {
        {"C:\\dir\\", "C:/dir"},
        {"C:\\", "C:"},
        {"C:/", "C:"},
        {"\\\\srv\\sh", "//srv/sh"},
        {"a//", "a/"},
        {"a/", "a"},
        {"a\\/", "a/"},
        {"a/b\\c", "a/b/c"},
        {"//", "/"},
        {" /", " "},
        {"\xC3\xA9\\\xE6\x97\xA5\\", "\xC3\xA9/\xE6\x97\xA5"},
        {"\xF0\x9F\x98\x80/", "\xF0\x9F\x98\x80"},
    };
    for (const NormalForm& c : cases) {
        EXPECT_EQ(name_of(c.given).view(), c.expected) << c.given;
        EXPECT_EQ(nmkFileDir(utString(c.given), nullptr).get().view(), c.expected) << c.given;
    }
}

TEST(nmkFileDir, a_lone_slash_becomes_the_empty_text_and_not_no_name) {
    EXPECT_EQ(shown(name_of("/")), "\"\"");
    EXPECT_EQ(shown(name_of("\\")), "\"\"");
}

TEST(nmkFileDir, the_root_gets_its_slash_back_from_add_one) {
    nmkFileDir root("/", nullptr);
    root.add_one("tmp");
    EXPECT_EQ(root.get(), "/tmp");
}

TEST(nmkFileDir, bytes_that_cannot_be_decoded_are_kept) {
    EXPECT_EQ(name_of("d\\" + bad_byte + "/" + cut_off + "\\").view(),
              "d/" + bad_byte + "/" + cut_off);
    nmkFileDir name("x", nullptr);
    name.set((bad_byte + "/").c_str(), nullptr);
    EXPECT_EQ(name.get().view(), bad_byte);
    EXPECT_EQ(name.get_native().view(), bad_byte);
    EXPECT_EQ(name_of(bad_byte + "//").view(), bad_byte + "/") << "one slash at the end goes";
}

TEST(nmkFileDir, every_pair_of_bytes_keeps_all_but_separators) {
    for (int first = 1; first < 256; ++first) {
        for (int second = 1; second < 256; ++second) {
            const std::string text{static_cast<char>(first), static_cast<char>(second), 'x'};
            std::string expected = text;
            for (char& c : expected) c = c == '\\' ? '/' : c;
            ASSERT_EQ(name_of(text).view(), expected) << first << ' ' << second;
        }
    }
}

TEST(nmkFileDir, a_text_with_a_nul_inside_ends_there) {
    EXPECT_EQ(nmkFileDir(utString(std::string("ab\0cd", 5)), nullptr).get(), "ab");
}

TEST(nmkFileDir, goes_through_the_encoding_that_it_was_given) {
    const CountingEncoding encoding;
    nmkFileDir name("a\\b", &encoding);
    EXPECT_EQ(encoding.decoded, 1);
    const nmkFileDir copy(name);
    (void)copy.get_native();
    EXPECT_EQ(encoding.decoded, 2);
}

TEST(nmkFileDir, set_with_a_null_encoding_keeps_the_present_one) {
    const CountingEncoding encoding;
    nmkFileDir name(nmkFileDirEncodingTag, &encoding);
    name.set("a/b", nullptr);
    EXPECT_EQ(encoding.decoded, 1);
    const CountingEncoding other;
    name.set(utString("a/b"), &other);
    name.set(utString("a/c"), nullptr);
    EXPECT_EQ(encoding.decoded, 1);
    EXPECT_EQ(other.decoded, 2);
}

TEST(nmkFileDir, an_encoding_that_decodes_nothing_leaves_the_steps_to_the_bytes) {
    const MuteEncoding mute;
    EXPECT_EQ(nmkFileDir("a\\b\\", &mute).get(), "a/b");
    EXPECT_TRUE(nmkFileDir("a", &mute).get_ap_path_name().is_empty());
}

TEST(nmkFileDir, a_copy_takes_path_and_encoding) {
    const CountingEncoding encoding;
    const nmkFileDir name("a", &encoding);
    nmkFileDir other("b", nullptr);
    other = name;
    EXPECT_EQ(other.get(), "a");
    other.set("c", nullptr);
    EXPECT_EQ(encoding.decoded, 2);
}

TEST(nmkFileDir, the_native_form_has_backslashes_and_a_second_call_overwrites_it) {
    const nmkFileDir first("a/b", nullptr);
    const nmkFileDir second("c/d/e", nullptr);
    const utString& native = first.get_native();
    EXPECT_EQ(native, "a\\b");
    EXPECT_EQ(second.get_native(), "c\\d\\e");
    EXPECT_EQ(native, "c\\d\\e");
}

TEST(nmkFileDir, the_native_form_keeps_a_final_separator) {
    nmkFileDir name("a//", nullptr);
    EXPECT_EQ(name.get_native(), "a\\");
    EXPECT_TRUE(nmkFileDir().get_native().is_null());
}

TEST(nmkFileDir, the_wide_name_is_empty_when_it_cannot_be_decoded) {
    const apPathName wide = nmkFileDir("\xC3\xA9/x", nullptr).get_ap_path_name();
    EXPECT_EQ(wide.text().view(), L"\u00E9/x");
    EXPECT_TRUE(nmkFileDir(bad_byte.c_str(), nullptr).get_ap_path_name().is_empty());
    EXPECT_TRUE(nmkFileDir().get_ap_path_name().is_empty());
}

TEST(nmkFileDir, add_one_does_not_normalise) {
    nmkFileDir name("a", nullptr);
    name.add_one("b\\c/");
    EXPECT_EQ(name.get(), "a/b\\c/");
}

TEST(nmkFileDir, add_one_of_a_part_of_itself_is_safe) {
    nmkFileDir name("a/b", nullptr);
    for (int i = 0; i < 8; ++i) name.add_one(name.get().c_str());
    EXPECT_EQ(name.get().length(), 4 * 256 - 1);
}

TEST(nmkFileDir, up_one_gives_the_parent) {
    nmkFileDir name("a/b", nullptr);
    EXPECT_EQ(name.up_one(), 1);
    EXPECT_EQ(name.get(), "a");
    EXPECT_EQ(name.up_one(), 0);
    EXPECT_TRUE(name.get().is_null());
    EXPECT_EQ(name.up_one(), 0);
}

TEST(nmkFileDir, a_single_component_after_a_slash_has_no_parent) {
    nmkFileDir name("/a", nullptr);
    EXPECT_EQ(name.up_one(), 0);
    EXPECT_TRUE(name.get().is_null());
}

TEST(nmkFileDir, add_one_after_up_one_fell_to_null_gives_a_rooted_name) {
    nmkFileDir name("a", nullptr);
    name.up_one();
    name.add_one("b");
    EXPECT_EQ(name.get(), "/b");
}

TEST(nmkFileDir, the_parent_is_the_text_before_the_last_slash) {
    const std::string directory = "d" + bad_byte + "/" + cut_off;
    const std::pair<std::string, utString> parents[] = {
        {"//srv", "/"},
        {"a//b", "a/"},
        {"\xC3\xA9/x", "\xC3\xA9"},
        {"", utString()},
        {directory + "/" + bad_byte, utString(directory)},
        {"/" + bad_byte, utString()},
    };
    for (const auto& [path, parent] : parents) {
        nmkFileDir name(path.c_str(), nullptr);
        EXPECT_EQ(name.up_one(), parent.is_null() ? 0 : 1) << path;
        EXPECT_EQ(name.get(), parent) << path;
    }
}

TEST(nmkFileDir, add_pathname_puts_the_base_in_front) {
    nmkFileDir name("a/b", nullptr);
    name.add_pathname("C:\\base\\");
    EXPECT_EQ(name.get(), "C:/base//a/b");
    nmkFileDir short_name("x", nullptr);
    short_name.add_pathname("base");
    EXPECT_EQ(short_name.get(), "base/x");
}

TEST(nmkFileDir, add_pathname_leaves_rooted_names_and_those_with_a_leading_dot) {
    for (const char* path : {"/a", "//s/h", "C:/x", "C:", "./x", ".hidden", "../x", "\xC3\xA9:x",
                             "\xF0\x9F\x98\x80:x"}) {
        nmkFileDir name(path, nullptr);
        name.add_pathname("base");
        EXPECT_EQ(name.get(), path);
    }
}

TEST(nmkFileDir, the_second_character_is_not_the_second_byte) {
    // Its first character has two bytes, its second is "x".
    nmkFileDir name("\xC3\xA9x:", nullptr);
    name.add_pathname("base");
    EXPECT_EQ(name.get(), "base/\xC3\xA9x:");
}

TEST(nmkFileDir, add_pathname_with_a_null_on_either_side_does_nothing) {
    nmkFileDir name("a", nullptr);
    name.add_pathname(utString());
    EXPECT_EQ(name.get(), "a");
    nmkFileDir none;
    none.add_pathname("base");
    EXPECT_TRUE(none.get().is_null());
}

TEST(nmkFileDir, add_pathname_never_cuts_a_long_result) {
    for (int length : {1, 260, 261, 500, 1022, 1023, 1024, 1025, 5000, 10000}) {
        const std::string path(static_cast<std::size_t>(length), 'p');
        const std::string base(static_cast<std::size_t>(length), 'b');
        nmkFileDir name(path.c_str(), nullptr);
        name.add_pathname(utString(base));
        ASSERT_EQ(name.get().view(), base + "/" + path) << length;
    }
}

TEST(nmkFileDir, changes_and_removes_the_extension) {
    const struct {
        const char *path, *extension, *expected;
    } cases[] = {
        {"d/a.txt", "tri", "d/a.tri"},   {"d/a", "tri", "d/a.tri"},
        {"d/a.b.c", "tri", "d/a.b.tri"}, {"d/a.txt", "", "d/a"},
        {"d/a.TRI", "tri", "d/a.TRI"},   {"d/antri", "tri", "d/antri"},
        {"d.e/a", "tri", "d.e/a.tri"},   {"d/.x", "tri", "d/.tri"},
    };
    for (const auto& c : cases) {
        nmkFileDir name(c.path, nullptr);
        name.change_extension(c.extension);
        EXPECT_EQ(name.get().view(), c.expected) << c.path << ' ' << c.extension;
    }
}

TEST(nmkFileDir, a_change_of_extension_roots_a_name_without_directory) {
    nmkFileDir name("a.txt", nullptr);
    name.change_extension("tri");
    EXPECT_EQ(name.get(), "/a.tri");
    nmkFileDir rooted("/a.txt", nullptr);
    rooted.change_extension(utString());
    EXPECT_EQ(rooted.get(), "/a");
}

TEST(nmkFileDir, a_change_of_extension_keeps_bytes_that_cannot_be_decoded) {
    nmkFileDir name(("d" + bad_byte + "/" + cut_off + ".txt").c_str(), nullptr);
    name.change_extension("tri");
    EXPECT_EQ(name.get().view(), "d" + bad_byte + "/" + cut_off + ".tri");
}

TEST(nmkFileDir, the_last_component_with_and_without_extension) {
    const nmkFileDir name("d.e/a.b.c", nullptr);
    EXPECT_EQ(name.basename(), "a.b");
    EXPECT_EQ(name.basename_ext(), "a.b.c");
    const nmkFileDir undecodable(("d/" + bad_byte + ".x").c_str(), nullptr);
    EXPECT_EQ(undecodable.basename().view(), bad_byte);
    EXPECT_EQ(undecodable.basename_ext().view(), bad_byte + ".x");
    EXPECT_TRUE(nmkFileDir().basename().is_null());
    EXPECT_TRUE(nmkFileDir().basename_ext().is_null());
}

TEST(nmkFileDir, the_extension_is_what_follows_the_last_dot) {
    const struct {
        const char *path, *expected;
    } cases[] = {{"a", ""}, {"a.", ""}, {"a.b.c", "c"}, {".x", "x"}, {"d.e/a", ""}};
    for (const auto& c : cases) {
        EXPECT_EQ(shown(nmkFileDir(c.path, nullptr).file_ext_without_check()),
                  shown(utString(c.expected)))
            << c.path;
    }
    EXPECT_TRUE(nmkFileDir().file_ext_without_check().is_null());
    EXPECT_TRUE(nmkFileDir("/", nullptr).file_ext_without_check().is_null());
}

TEST(nmkFileDir, the_extension_of_a_directory_is_empty_though_its_dot_can_be_read) {
    const ScratchDirectory scratch;
    nmkFileDir directory((scratch.path() + "/dir.ext").c_str(), nullptr);
    ASSERT_EQ(directory.mkdir(), 1);
    EXPECT_EQ(directory.file_ext().length(), 0);
    EXPECT_EQ(directory.file_ext_without_check(), "ext");
    const nmkFileDir file(scratch.file("file.tri", "").c_str(), nullptr);
    EXPECT_EQ(file.file_ext(), "tri");
    const nmkFileDir missing((scratch.path() + "/missing.tri").c_str(), nullptr);
    EXPECT_EQ(missing.file_ext().length(), 0);
}

TEST(nmkFileDir, names_of_every_length_survive_every_operation_on_the_text) {
    for (int length = 1; length <= 10000; length += length < 1100 ? 1 : 89) {
        const std::string text(static_cast<std::size_t>(length), 'n');
        nmkFileDir name(("d\\" + text).c_str(), nullptr);
        ASSERT_EQ(name.get().view(), "d/" + text);
        ASSERT_EQ(name.get_native().view(), "d\\" + text);
        ASSERT_EQ(name.basename_ext().view(), text);
        (void)name.is_valid();
        (void)name.exist();
        name.make_long_pathname();
        name.change_extension("x");
        ASSERT_EQ(name.get().view(), "d/" + text + ".x");
        ASSERT_EQ(name.up_one(), 1);
        ASSERT_EQ(name.get(), "d");
    }
}

TEST(nmkFileDir, names_are_kept_in_a_singly_linked_list) {
    nmkFileDircoSList list;
    list.insert_last(nmkFileDir("a", nullptr));
    EXPECT_EQ(list.size(), 1);
}

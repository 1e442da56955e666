// Full paths and long names.
#include <gtest/gtest.h>
#include <nmktoolbox/files/nmkFileDir.h>

#include <filesystem>
#include <string>

#include "name_samples.h"
#include "scratch_directory.h"
#include "working_directory.h"

namespace {

std::string of_length(int length) { return std::string(static_cast<std::size_t>(length), 'x'); }

nmkFileDir named(const std::string& text) { return nmkFileDir(text.c_str(), nullptr); }

}  // namespace

TEST(nmkFileDir_full_path, starts_with_two_slashes_or_has_a_colon_second) {
    for (const char* path : {"//srv/sh", "\\\\srv", "C:/x", "C:", "C:\\", "\xC3\xA9:/x",
                             "\xF0\x9F\x98\x80:", "\xFF:x", "\xC3:"}) {
        EXPECT_EQ(nmkFileDir(path, nullptr).is_full_path(), 1) << path;
        EXPECT_EQ(nmkFileDir::is_full_path(path), 1) << path;
    }
    for (const char* path : {"/x", "x", ":", "ab:", "", "//", "\xC3\xA9x:"}) {
        EXPECT_EQ(nmkFileDir::is_full_path(path), 0) << path;
    }
    EXPECT_EQ(nmkFileDir::is_full_path(nullptr), 0);
    EXPECT_EQ(nmkFileDir().is_full_path(), 0);
}

TEST(nmkFileDir_full_path, of_261_or_more_bytes_is_not_valid) {
    EXPECT_EQ(named("C:/" + of_length(257)).is_valid(), 1);
    EXPECT_EQ(named("C:/" + of_length(258)).is_valid(), 0);
    EXPECT_EQ(named("//" + of_length(258)).is_valid(), 1);
    EXPECT_EQ(named("//" + of_length(259)).is_valid(), 0);
    EXPECT_EQ(nmkFileDir().is_valid(), 0);
}

TEST(nmkFileDir_full_path, of_a_relative_name_needs_less_than_260_bytes) {
    const ScratchDirectory scratch;
    const WorkingDirectory here(scratch.path());
    const int room = 259 - static_cast<int>(std::filesystem::current_path().string().size()) - 1;
    EXPECT_EQ(named(of_length(room)).is_valid(), 1);
    EXPECT_EQ(named(of_length(room + 1)).is_valid(), 0);
    for (int length = 250; length < 10000; length += length < 270 ? 1 : 487) {
        EXPECT_EQ(named(of_length(length)).is_valid(), 0) << length;
    }
}

TEST(nmkFileDir_full_path, is_taken_where_there_is_one) {
    const ScratchDirectory scratch;
    const WorkingDirectory here(scratch.path());
    const std::string cwd = std::filesystem::current_path().string();
    nmkFileDir name("a/../b", nullptr);
    name.set_full_path();
    EXPECT_EQ(name.get().view(), cwd + "/b");
    nmkFileDir too_long(of_length(300).c_str(), nullptr);
    too_long.set_full_path();
    EXPECT_EQ(too_long.get().view(), of_length(300));
    nmkFileDir full("C:/a/../b", nullptr);
    full.set_full_path();
    EXPECT_EQ(full.get(), "C:/a/../b");
    nmkFileDir none;
    none.set_full_path();
    EXPECT_TRUE(none.get().is_null());
}

TEST(nmkFileDir_full_path, is_brought_to_the_normal_form) {
    nmkFileDir root("/..", nullptr);
    root.set_full_path();
    EXPECT_EQ(root.get(), utString(""));
}

TEST(nmkFileDir_full_path, keeps_bytes_that_cannot_be_decoded) {
    const ScratchDirectory scratch;
    const WorkingDirectory here(scratch.path());
    nmkFileDir name(bad_byte.c_str(), nullptr);
    name.set_full_path();
    EXPECT_EQ(name.get().view(), std::filesystem::current_path().string() + "/" + bad_byte);
}

TEST(nmkFileDir_full_path, set_cwd_takes_the_current_directory) {
    const ScratchDirectory scratch;
    const WorkingDirectory here(scratch.path());
    nmkFileDir name("anything", nullptr);
    name.set_cwd();
    EXPECT_EQ(name.get().view(), std::filesystem::current_path().string());
}

TEST(nmkFileDir_full_path, a_current_directory_of_260_or_more_bytes_gives_a_null_name) {
    const ScratchDirectory scratch;
    const WorkingDirectory there(scratch.path());
    const std::string top = std::filesystem::current_path().string() + "/";
    for (const int length : {258, 259, 260, 261}) {
        const std::string directory = top + of_length(length - static_cast<int>(top.size()));
        std::filesystem::create_directory(directory);
        const WorkingDirectory here(directory);
        nmkFileDir name("anything", nullptr);
        name.set_cwd();
        EXPECT_EQ(name.get(), length < 260 ? utString(directory) : utString()) << length;
    }
}

TEST(nmkFileDir_long_name, of_a_relative_or_rooted_name_is_left_alone) {
    for (const char* path : {"a~1/b~1", "/a~1/b", "~", "./a~1", "C:a~1//b"}) {
        nmkFileDir name(path, nullptr);
        name.make_long_pathname();
        EXPECT_EQ(name.get(), path);
    }
    nmkFileDir none;
    none.make_long_pathname();
    EXPECT_TRUE(none.get().is_null());
}

TEST(nmkFileDir_long_name, without_a_tilde_is_left_alone) {
    nmkFileDir name("C:/a//b", nullptr);
    name.make_long_pathname();
    EXPECT_EQ(name.get(), "C:/a//b");
}

TEST(nmkFileDir_long_name, keeps_components_that_are_not_found) {
    nmkFileDir drive("Q:/missi~1//b~2/c", nullptr);
    drive.make_long_pathname();
    EXPECT_EQ(drive.get(), "Q:/missi~1/b~2/c");
    nmkFileDir server("//srv/missi~1/b", nullptr);
    server.make_long_pathname();
    EXPECT_EQ(server.get(), "//srv/missi~1/b");
    // A drive is looked for first, wherever it is in the name, and has no slashes in front.
    nmkFileDir both("//srv/d:/missi~1", nullptr);
    both.make_long_pathname();
    EXPECT_EQ(both.get(), "srv/d:/missi~1");
}

TEST(nmkFileDir_long_name, asks_for_each_component_and_never_takes_another_file_for_it) {
    const ScratchDirectory scratch;
    const WorkingDirectory here(scratch.path());
    std::filesystem::create_directories("C:/a~1/b");
    std::filesystem::create_directories("C:/axx~1");
    nmkFileDir name("C:/a~1/b/c", nullptr);
    name.make_long_pathname();
    EXPECT_EQ(name.get(), "C:/a~1/b/c");
    nmkFileDir wildcard("C:/a*~1", nullptr);
    wildcard.make_long_pathname();
    EXPECT_EQ(wildcard.get(), "C:/a*~1");
}

#include <gtest/gtest.h>
#include <nmktoolbox/files/nmkFileDirIter.h>

#include <cerrno>
#include <filesystem>
#include <iterator>
#include <string>
#include <type_traits>
#include <vector>

#include "disk_fault.h"
#include "name_samples.h"
#include "scratch_directory.h"

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

Names listed(nmkFileDirIter& entries) {
    Names names;
    while (++entries) names.emplace_back(entries().basename_ext().view());
    return names;
}

Names listed(const std::string& directory, nmkFileDirIterType type,
             const char* extension = nullptr) {
    nmkFileDirIter entries(nmkFileDir(directory.c_str(), nullptr), type, extension);
    return listed(entries);
}

}  // namespace

static_assert(std::is_base_of_v<nmkFileDircoPageArr, nmkFileDirIter>);

TEST(nmkFileDirIter, lists_every_entry_by_byte_value_but_not_the_dots) {
    const ScratchDirectory scratch;
    for (const char* name : {"b", "a", ".hidden", "B", "\xC3\xA9"}) scratch.file(name, "");
    fs::create_directory(scratch.path() + "/c");
    EXPECT_EQ(listed(scratch.path(), nmkFileDirIterAll),
              (Names{".hidden", "B", "a", "b", "c", "\xC3\xA9"}));
}

TEST(nmkFileDirIter, entries_are_whole_names) {
    const ScratchDirectory scratch;
    const std::string file = scratch.file("a", "");
    nmkFileDirIter entries(nmkFileDir(scratch.path().c_str(), nullptr), nmkFileDirIterAll, nullptr);
    ASSERT_EQ(++entries, 1);
    EXPECT_EQ(entries().get().view(), file);
    EXPECT_EQ(++entries, 0);
    EXPECT_EQ(++entries, 0);
    EXPECT_TRUE(entries().get().is_null());
}

TEST(nmkFileDirIter, is_before_the_first_entry_at_the_start) {
    const ScratchDirectory scratch;
    scratch.file("a", "");
    const nmkFileDirIter entries(nmkFileDir(scratch.path().c_str(), nullptr), nmkFileDirIterAll,
                                 nullptr);
    EXPECT_TRUE(entries().get().is_null());
}

TEST(nmkFileDirIter, lists_files_or_directories_alone) {
    const ScratchDirectory scratch;
    scratch.file("file", "");
    fs::create_directory(scratch.path() + "/directory");
    EXPECT_EQ(listed(scratch.path(), nmkFileDirIterFiles), (Names{"file"}));
    EXPECT_EQ(listed(scratch.path(), nmkFileDirIterDirectories), (Names{"directory"}));
}

TEST(nmkFileDirIter, the_extension_filters_files_without_case_or_dot) {
    const ScratchDirectory scratch;
    for (const char* name : {"a.tri", "b.TRI", "c.tri2", "dtri", "tri"}) scratch.file(name, "");
    fs::create_directory(scratch.path() + "/e.tri");
    EXPECT_EQ(listed(scratch.path(), nmkFileDirIterFiles, "tri"),
              (Names{"a.tri", "b.TRI", "dtri", "tri"}));
}

TEST(nmkFileDirIter, the_extension_does_not_filter_the_other_types) {
    const ScratchDirectory scratch;
    scratch.file("a", "");
    fs::create_directory(scratch.path() + "/d");
    EXPECT_EQ(listed(scratch.path(), nmkFileDirIterAll, "tri"), (Names{"a", "d"}));
    EXPECT_EQ(listed(scratch.path(), nmkFileDirIterDirectories, "tri"), (Names{"d"}));
}

TEST(nmkFileDirIter, another_type_accepts_nothing) {
    const ScratchDirectory scratch;
    scratch.file("a", "");
    EXPECT_EQ(listed(scratch.path(), static_cast<nmkFileDirIterType>(3)), Names{});
}

TEST(nmkFileDirIter, a_rejected_entry_leaves_its_slot_to_the_next) {
    const ScratchDirectory scratch;
    for (const char* name : {"a.x", "b.y", "c.x", "d.y"}) scratch.file(name, "");
    nmkFileDirIter entries(nmkFileDir(scratch.path().c_str(), nullptr), nmkFileDirIterFiles, "y");
    EXPECT_EQ(listed(entries), (Names{"b.y", "d.y"}));
    const nmkFileDircoPageArr& array = entries;
    EXPECT_EQ(array[0].basename_ext(), "b.y");
    EXPECT_EQ(array[1].basename_ext(), "d.y");
}

TEST(nmkFileDirIter, a_directory_that_is_missing_or_a_file_gives_nothing) {
    const ScratchDirectory scratch;
    EXPECT_EQ(listed(scratch.path() + "/missing", nmkFileDirIterAll), Names{});
    EXPECT_EQ(listed(scratch.file("file", ""), nmkFileDirIterAll), Names{});
}

TEST(nmkFileDirIter, a_directory_that_may_not_be_read_gives_nothing) {
    const ScratchDirectory scratch;
    scratch.file("a", "");
    const Fault fault("list directory", scratch.path() + "/", EACCES);
    EXPECT_EQ(listed(scratch.path(), nmkFileDirIterAll), Names{});
}

TEST(nmkFileDirIter, no_name_lists_the_root_as_the_root_does) {
    // What add_one makes of no name is a rooted one.
    nmkFileDirIter of_null(nmkFileDir(), nmkFileDirIterAll, nullptr);
    nmkFileDirIter of_root(nmkFileDir("/", nullptr), nmkFileDirIterAll, nullptr);
    const Names names = listed(of_null);
    EXPECT_FALSE(names.empty());
    EXPECT_EQ(names, listed(of_root));
}

TEST(nmkFileDirIter, reset_lists_another_directory_even_an_entry_of_its_own) {
    const ScratchDirectory scratch;
    fs::create_directories(scratch.path() + "/d/inner");
    nmkFileDirIter entries(nmkFileDir(scratch.path().c_str(), nullptr), nmkFileDirIterAll, nullptr);
    ASSERT_EQ(++entries, 1);
    entries.reset(entries(), nmkFileDirIterDirectories, nullptr);
    EXPECT_EQ(listed(entries), (Names{"inner"}));
    entries.reset(nmkFileDir((scratch.path() + "/missing").c_str(), nullptr), nmkFileDirIterAll,
                  nullptr);
    EXPECT_EQ(entries.size(), 0);
    EXPECT_EQ(++entries, 0);
}

TEST(nmkFileDirIter, lists_names_that_cannot_be_decoded_and_names_with_wildcards) {
    const ScratchDirectory scratch;
    const std::string odd = scratch.path() + "/a*" + bad_byte + "?";
    fs::create_directory(scratch.path() + "/axx");
    fs::create_directory(odd);
    for (const std::string& name :
         {bad_byte, cut_off + ".tri", std::string("*"), std::string("\\x")}) {
        std::ofstream(odd + "/" + name) << "x";
    }
    EXPECT_EQ(listed(odd, nmkFileDirIterAll).size(), 4U);
    EXPECT_EQ(listed(odd, nmkFileDirIterFiles, "tri"), (Names{cut_off + ".tri"}));
    nmkFileDirIter entries(nmkFileDir(odd.c_str(), nullptr), nmkFileDirIterFiles, nullptr);
    int found = 0;
    while (++entries) found += entries().is_file();
    EXPECT_EQ(found, 4);
}

TEST(nmkFileDirIter, a_cycle_of_symlinks_ends) {
    const ScratchDirectory scratch;
    fs::create_directory(scratch.path() + "/d");
    fs::create_directory_symlink("..", scratch.path() + "/d/up");
    fs::create_symlink("loop", scratch.path() + "/d/loop");
    EXPECT_EQ(listed(scratch.path() + "/d", nmkFileDirIterAll), (Names{"loop", "up"}));
    EXPECT_EQ(listed(scratch.path() + "/d", nmkFileDirIterDirectories), (Names{"up"}));
    EXPECT_EQ(listed(scratch.path() + "/d", nmkFileDirIterFiles), (Names{"loop"}));
}

TEST(nmkFileDirIter, more_entries_than_one_page_keep_their_order) {
    const ScratchDirectory scratch;
    for (int i = 0; i < 700; ++i) scratch.file(std::to_string(1000 + i), "");
    const Names names = listed(scratch.path(), nmkFileDirIterFiles);
    ASSERT_EQ(names.size(), 700U);
    for (int i = 0; i < 700; ++i) {
        ASSERT_EQ(names[static_cast<std::size_t>(i)], std::to_string(1000 + i));
    }
}

TEST(nmkFileDirIter, keeps_no_directory_open) {
    const ScratchDirectory scratch;
    scratch.file("f", "");
    const auto open_files = [] {
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    };
    const auto before = open_files();
    nmkFileDirIter entries(nmkFileDir(scratch.path().c_str(), nullptr), nmkFileDirIterAll, nullptr);
    EXPECT_EQ(open_files(), before);
    EXPECT_EQ(++entries, 1);
}

// Copies of files and directories, local copies, and the renaming of a file.
#include <gtest/gtest.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "child_process.h"
#include "disk_fault.h"
#include "name_samples.h"
#include "scratch_folder.h"
#include "tree_samples.h"
#include "working_folder.h"

namespace fs = std::filesystem;

namespace {

using Tree = std::map<std::string, std::string>;

// Notes what it is told, and asks for a stop at a percentage.
class Recorder : public nmkProgressBreak {
  public:
    explicit Recorder(double stop_at = 1000.0) : m_stop_at(stop_at) {}
    void set_range(double range) override { ranges.push_back(range); }
    int jump_to(double position) override {
        positions.push_back(position);
        return position >= m_stop_at ? 1 : 0;
    }
    std::vector<double> ranges;
    std::vector<double> positions;

  private:
    double m_stop_at;
};

unsigned rights_of(const std::string& file) {
    return static_cast<unsigned>(fs::status(file).permissions()) & 07777U;
}

// A fault in the middle of the data of one file.
winapi_fault_hook fail_at_part(std::string source, int part, int error_number) {
    auto parts = std::make_shared<std::atomic<int>>(0);
    return [=](std::string_view call, std::string_view name) {
        return call == "copy part" && name == source && ++*parts == part ? error_number : 0;
    };
}

// More than the copy takes at once.
std::string long_contents() { return std::string(std::size_t{9} << 20, 'x'); }

}  // namespace

TEST(nmkFileDir_copy, makes_a_file_that_only_its_owner_reads_and_writes) {
    const ScratchFolder scratch;
    const std::string source = scratch.file("a", std::string("1\0\n\r2", 5));
    fs::permissions(source, fs::perms::all);
    EXPECT_EQ(named(source).copy_file(named(scratch.path() + "/b")), 1);
    EXPECT_EQ(contents(scratch.path() + "/b"), contents(source));
    EXPECT_EQ(rights_of(scratch.path() + "/b"), 0600U);
    EXPECT_EQ(rights_of(source), 0777U);
}

TEST(nmkFileDir_copy, of_a_read_only_file_can_be_written) {
    const ScratchFolder scratch;
    const std::string source = scratch.file("a", "x");
    fs::permissions(source, fs::perms::owner_read);
    EXPECT_EQ(named(source).copy_file(named(scratch.path() + "/b")), 1);
    EXPECT_EQ(rights_of(scratch.path() + "/b"), 0600U);
}

TEST(nmkFileDir_copy, into_a_directory_keeps_the_name) {
    const ScratchFolder scratch;
    const std::string source = scratch.file("a.b", "x");
    fs::create_directory(scratch.path() + "/d");
    fs::create_directory_symlink("d", scratch.path() + "/to_d");
    EXPECT_EQ(named(source).copy_file(named(scratch.path() + "/d")), 1);
    EXPECT_EQ(contents(scratch.path() + "/d/a.b"), "x");
    fs::remove(scratch.path() + "/d/a.b");
    EXPECT_EQ(named(source).copy_file(named(scratch.path() + "/to_d")), 1);
    EXPECT_EQ(contents(scratch.path() + "/d/a.b"), "x");
}

TEST(nmkFileDir_copy, overwrites_a_file) {
    const ScratchFolder scratch;
    const std::string source = scratch.file("a", "new");
    const std::string target = scratch.file("b", "much older");
    EXPECT_EQ(named(source).copy_file(named(target)), 1);
    EXPECT_EQ(contents(target), "new");
}

TEST(nmkFileDir_copy, onto_itself_fails_and_leaves_it_whole) {
    const ScratchFolder scratch;
    const std::string file = scratch.file("a", "whole");
    fs::create_hard_link(file, scratch.path() + "/hard");
    fs::create_symlink("a", scratch.path() + "/soft");
    for (const char* name : {"/a", "/hard", "/soft", "/./a", ""}) {
        EXPECT_EQ(named(file).copy_file(named(scratch.path() + name)), 0) << name;
        EXPECT_EQ(contents(file), "whole") << name;
    }
    EXPECT_EQ(scratch.file_count(), 3U);
}

TEST(nmkFileDir_copy, of_nothing_to_nothing_or_into_a_missing_directory_fails) {
    const ScratchFolder scratch;
    const nmkFileDir target = named(scratch.path() + "/t");
    EXPECT_EQ(nmkFileDir().copy_file(target), 0);
    EXPECT_EQ(named(scratch.path() + "/missing").copy_file(target), 0);
    EXPECT_EQ(named(scratch.path()).copy_file(target), 0);
    const nmkFileDir source = named(scratch.file("a", ""));
    EXPECT_EQ(source.copy_file(nmkFileDir()), 0);
    EXPECT_EQ(source.copy_file(named(scratch.path() + "/missing/t")), 0);
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST(nmkFileDir_copy, that_fails_half_way_leaves_no_half_file) {
    const ScratchFolder scratch;
    const std::string source = scratch.file("a", long_contents());
    const std::string target = scratch.path() + "/b";
    for (const int reason : {ENOSPC, EIO, EACCES}) {
        const Fault fault("copy part", source, reason);
        EXPECT_EQ(named(source).copy_file(named(target)), 0);
        EXPECT_EQ(scratch.file_count(), 1U);
    }
}

TEST(nmkFileDir_copy, to_a_disk_that_fills_leaves_no_half_file_and_what_was_there) {
    const ScratchFolder scratch;
    const std::string source = scratch.file("a", long_contents());
    const std::string older = scratch.file("older", "before");
    const int answer = with_little_room(1 << 20, [&] {
        return named(source).copy_file(named(scratch.path() + "/new")) * 2 +
               named(source).copy_file(named(older));
    });
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(contents(older), "before");
    EXPECT_EQ(scratch.file_count(), 2U);
}

TEST(nmkFileDir_copy, of_a_file_that_becomes_shorter_meanwhile_leaves_no_half_file) {
    const ScratchFolder scratch;
    const std::string source = scratch.file("a", long_contents());
    const Fault fault([&](std::string_view call, std::string_view) {
        if (call == "copy part") fs::resize_file(source, 1000);
        return 0;
    });
    EXPECT_EQ(named(source).copy_file(named(scratch.path() + "/b")), 0);
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST(nmkFileDir_copy, keeps_names_that_cannot_be_decoded) {
    const ScratchFolder scratch;
    put(scratch.path() + "/from/" + bad_byte + "/" + cut_off, "x");
    fs::create_directory(scratch.path() + "/to");
    const nmkFileDir file = named(scratch.path() + "/from/" + bad_byte + "/" + cut_off);
    EXPECT_EQ(file.copy_file(named(scratch.path() + "/to")), 1);
    named(scratch.path() + "/from/" + bad_byte).copy_dir(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/to"),
              (Tree{{cut_off, "=x"}, {bad_byte, "/"}, {bad_byte + "/" + cut_off, "=x"}}));
}

TEST(nmkFileDir_copy, of_a_directory_goes_into_the_target_under_its_name) {
    const ScratchFolder scratch;
    put(scratch.path() + "/from/a", "1");
    put(scratch.path() + "/from/d/e/b", "2");
    fs::create_directory(scratch.path() + "/from/empty");
    const Tree whole = tree(scratch.path() + "/from");
    named(scratch.path() + "/from").copy_dir(named(scratch.path() + "/deep/to"));
    EXPECT_EQ(tree(scratch.path() + "/deep/to/from"), whole);
    EXPECT_EQ(tree(scratch.path() + "/from"), whole);
}

TEST(nmkFileDir_copy, of_the_contents_goes_straight_into_the_target) {
    const ScratchFolder scratch;
    put(scratch.path() + "/from/a", "1");
    put(scratch.path() + "/from/d/b", "2");
    put(scratch.path() + "/to/a", "older");
    put(scratch.path() + "/to/c", "3");
    named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/to"),
              (Tree{{"a", "=1"}, {"c", "=3"}, {"d", "/"}, {"d/b", "=2"}}));
}

TEST(nmkFileDir_copy, of_contents_into_a_missing_directory_copies_only_what_makes_its_own) {
    const ScratchFolder scratch;
    put(scratch.path() + "/from/a", "1");
    put(scratch.path() + "/from/d/b", "2");
    named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/to"), (Tree{{"a", "=1"}, {"d", "/"}, {"d/b", "=2"}}));
}

TEST(nmkFileDir_copy, of_a_directory_goes_on_past_what_cannot_be_copied) {
    const ScratchFolder scratch;
    for (const char* name : {"a", "b", "c"}) put(scratch.path() + "/from/" + name, name);
    const Fault fault("CopyFileExA", scratch.path() + "/from/b", EACCES);
    named(scratch.path() + "/from").copy_dir(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/to/from"), (Tree{{"a", "=a"}, {"c", "=c"}}));
}

TEST(nmkFileDir_copy, goes_on_past_a_file_that_vanishes_after_the_listing) {
    const ScratchFolder scratch;
    for (const char* name : {"a", "b", "c"}) put(scratch.path() + "/from/" + name, name);
    const std::string second = scratch.path() + "/from/b";
    const Fault fault([=](std::string_view call, std::string_view name) {
        if (call == "CopyFileExA" && name == second) fs::remove(second);
        return 0;
    });
    named(scratch.path() + "/from").copy_dir(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/to/from"), (Tree{{"a", "=a"}, {"c", "=c"}}));
}

TEST(nmkFileDir_copy, of_a_directory_into_its_own_subtree_writes_nothing) {
    const ScratchFolder scratch;
    const std::string from = scratch.path() + "/from";
    put(from + "/d/a", "1");
    fs::create_directory_symlink("from/d", scratch.path() + "/link");
    const Tree before = tree(scratch.path());
    const WorkingFolder here(scratch.path());
    for (const std::string& target : {from, from + "/d", from + "/new/deeper", from + "/./d",
                                      scratch.path() + "/link", scratch.path() + "/link/new",
                                      scratch.path(), std::string("from/d"), std::string("from")}) {
        named(from).copy_dir(named(target));
        EXPECT_EQ(tree(scratch.path()), before) << target;
    }
    for (const std::string& target : {from, from + "/d", from + "/new", scratch.path() + "/link"}) {
        named(from).copy_dir_contents(named(target));
        EXPECT_EQ(tree(scratch.path()), before) << target;
    }
}

TEST(nmkFileDir_copy, beside_a_directory_of_similar_name_is_no_subtree) {
    const ScratchFolder scratch;
    put(scratch.path() + "/from/a", "1");
    fs::create_directory(scratch.path() + "/from2");
    named(scratch.path() + "/from").copy_dir(named(scratch.path() + "/from2"));
    EXPECT_EQ(tree(scratch.path() + "/from2"), (Tree{{"from", "/"}, {"from/a", "=1"}}));
}

TEST(nmkFileDir_copy, makes_links_to_directories_again_and_copies_what_links_to_files_say) {
    const ScratchFolder scratch;
    put(scratch.path() + "/from/d/a", "1");
    fs::create_directory_symlink("..", scratch.path() + "/from/d/up");
    fs::create_directory_symlink(".", scratch.path() + "/from/self");
    fs::create_symlink("d/a", scratch.path() + "/from/file");
    fs::create_symlink("nowhere", scratch.path() + "/from/broken");
    named(scratch.path() + "/from").copy_dir(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/to/from"),
              (Tree{{"d", "/"}, {"d/a", "=1"}, {"d/up", "->.."}, {"self", "->."}, {"file", "=1"}}));
}

TEST(nmkFileDir_copy, ends_when_a_link_in_the_target_leads_back_to_the_source) {
    const ScratchFolder scratch;
    put(scratch.path() + "/from/d/e/a", "1");
    fs::create_directory(scratch.path() + "/to");
    fs::create_directory_symlink("../from/d/e", scratch.path() + "/to/d");
    const Tree before = tree(scratch.path() + "/from");
    named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/from"), before);
}

TEST(nmkFileDir_copy,
     never_goes_through_a_link_deeper_in_the_target_to_another_part_of_the_source) {
    const ScratchFolder scratch;
    put(scratch.path() + "/from/d/e/a", "1");
    put(scratch.path() + "/from/other/b", "2");
    fs::create_directories(scratch.path() + "/to/d");
    fs::create_directory_symlink("../../from/other", scratch.path() + "/to/d/e");
    const Tree before = tree(scratch.path() + "/from");
    named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/from"), before);
}

TEST(nmkFileDir_copy, of_no_name_or_to_no_name_does_nothing) {
    const ScratchFolder scratch;
    put(scratch.path() + "/from/a", "1");
    nmkFileDir().copy_dir(named(scratch.path() + "/to"));
    nmkFileDir().copy_dir_contents(named(scratch.path() + "/to"));
    named(scratch.path() + "/from").copy_dir(nmkFileDir());
    named(scratch.path() + "/from").copy_dir_contents(nmkFileDir());
    EXPECT_EQ(tree(scratch.path()), (Tree{{"from", "/"}, {"from/a", "=1"}}));
}

TEST(nmkFileDir_local_copy, of_a_local_file_is_not_needed_and_changes_nothing) {
    const ScratchFolder scratch;
    nmkFileDir file = named(scratch.file("a", "x"));
    Recorder recorder;
    EXPECT_EQ(file.make_local_file(&recorder), 0);
    EXPECT_EQ(file.get().view(), scratch.path() + "/a");
    EXPECT_TRUE(recorder.ranges.empty());
    nmkFileDir missing = named(scratch.path() + "/missing");
    EXPECT_EQ(missing.make_local_file(nullptr), 0);
    EXPECT_EQ(missing.get().view(), scratch.path() + "/missing");
    nmkFileDir none;
    EXPECT_EQ(none.make_local_file(nullptr), 0);
}

TEST(nmkFileDir_local_copy, of_a_remote_file_takes_its_place) {
    const ScratchFolder scratch;
    const std::string source = scratch.file("a.b.tri", "contents");
    const RemoteFolder remote(scratch.path());
    nmkFileDir file = named(source);
    EXPECT_EQ(file.make_local_file(nullptr), 1);
    EXPECT_NE(file.get().view(), source);
    EXPECT_TRUE(file.basename_ext().view().starts_with("nmk_"));
    EXPECT_EQ(file.file_ext(), "tri");
    EXPECT_EQ(file.basename().view().find('.'), std::string_view::npos) << "the last dot counts";
    EXPECT_EQ(contents(file.get().c_str()), "contents");
    EXPECT_EQ(rights_of(file.get().c_str()), 0600U);
    EXPECT_EQ(file.is_local_file(), 1);
    EXPECT_EQ(contents(source), "contents");
    EXPECT_EQ(file.delete_file(), 1);
}

TEST(nmkFileDir_local_copy, of_a_file_without_extension_has_none) {
    const ScratchFolder scratch;
    const RemoteFolder remote(scratch.path());
    nmkFileDir file = named(scratch.file("plain", "x"));
    EXPECT_EQ(file.make_local_file(nullptr), 1);
    EXPECT_EQ(file.basename_ext().view().find('.'), std::string_view::npos);
    EXPECT_EQ(file.delete_file(), 1);
}

TEST(nmkFileDir_local_copy, tells_whole_percentages_of_100) {
    const ScratchFolder scratch;
    const RemoteFolder remote(scratch.path());
    nmkFileDir file = named(scratch.file("a", long_contents() + "and one odd part"));
    Recorder recorder;
    EXPECT_EQ(file.make_local_file(&recorder), 1);
    EXPECT_EQ(recorder.ranges, std::vector<double>{100.0});
    ASSERT_GT(recorder.positions.size(), 2U);
    EXPECT_EQ(recorder.positions.front(), 0.0);
    EXPECT_EQ(recorder.positions.back(), 100.0);
    EXPECT_TRUE(std::is_sorted(recorder.positions.begin(), recorder.positions.end()));
    for (const double position : recorder.positions) EXPECT_EQ(position, std::floor(position));
    EXPECT_EQ(file.delete_file(), 1);
}

TEST(nmkFileDir_local_copy, of_an_empty_file_stands_at_0_percent) {
    const ScratchFolder scratch;
    const RemoteFolder remote(scratch.path());
    nmkFileDir file = named(scratch.file("a", ""));
    Recorder recorder;
    EXPECT_EQ(file.make_local_file(&recorder), 1);
    for (const double position : recorder.positions) EXPECT_EQ(position, 0.0);
    EXPECT_EQ(file.size(), 0);
    EXPECT_EQ(file.delete_file(), 1);
}

TEST(nmkFileDir_local_copy, counts_in_64_bits) {
    // The low 32 bits of this size are 0, and would never come to one percent.
    const ScratchFolder scratch;
    const std::string source = scratch.file("a", "");
    fs::resize_file(source, std::uintmax_t{1} << 32);
    const RemoteFolder remote(scratch.path());
    nmkFileDir file = named(source);
    Recorder recorder(1.0);
    EXPECT_EQ(file.make_local_file(&recorder), 0);
    EXPECT_EQ(recorder.positions.back(), 1.0);
    EXPECT_EQ(file.exist(), 0);
}

TEST(nmkFileDir_local_copy, that_is_stopped_leaves_the_name_and_no_file) {
    const ScratchFolder scratch;
    const std::string source = scratch.file("a", long_contents());
    const RemoteFolder remote(scratch.path());
    for (const double stop_at : {0.0, 1.0, 50.0}) {
        nmkFileDir file = named(source);
        Recorder recorder(stop_at);
        EXPECT_EQ(file.make_local_file(&recorder), 0);
        EXPECT_TRUE(file.basename_ext().view().starts_with("nmk_"));
        EXPECT_EQ(file.exist(), 0);
    }
}

TEST(nmkFileDir_local_copy, never_goes_through_a_link_that_was_put_there) {
    const ScratchFolder scratch;
    const std::string kept = scratch.file("kept", "kept");
    const std::string source = scratch.path() + "/remote/a.tri";
    put(source, "new");
    const RemoteFolder remote(scratch.path() + "/remote");
    std::string chosen;
    const Fault fault([&](std::string_view call, std::string_view about) {
        if (call == "GetFileAttributesA" && about.ends_with(".tri") && about != source) {
            chosen = about;
        }
        if (call == "CopyFileExA") fs::create_symlink(kept, chosen);
        return 0;
    });
    nmkFileDir file = named(source);
    EXPECT_EQ(file.make_local_file(nullptr), 0);
    EXPECT_EQ(file.get().view(), chosen);
    EXPECT_EQ(contents(kept), "kept");
    EXPECT_TRUE(fs::is_symlink(chosen));
    fs::remove(chosen);
}

TEST(nmkFileDir_local_copy, that_fails_half_way_leaves_no_half_file) {
    const ScratchFolder scratch;
    const std::string source = scratch.file("a", long_contents());
    const RemoteFolder remote(scratch.path());
    nmkFileDir file = named(source);
    const Fault fault(fail_at_part(source, 2, ENOSPC));
    EXPECT_EQ(file.make_local_file(nullptr), 0);
    EXPECT_NE(file.get().view(), source);
    EXPECT_EQ(file.exist(), 0);
}

TEST(nmkFileDir_rename, gives_a_file_another_name) {
    const ScratchFolder scratch;
    const nmkFileDir file = named(scratch.file("a", "x"));
    EXPECT_EQ(file.rename_file((scratch.path() + "/b").c_str()), 1);
    EXPECT_EQ(tree(scratch.path()), (Tree{{"b", "=x"}}));
}

TEST(nmkFileDir_rename, onto_an_existing_file_is_refused) {
    const ScratchFolder scratch;
    const nmkFileDir file = named(scratch.file("a", "x"));
    const std::string other = scratch.file("b", "y");
    EXPECT_EQ(file.rename_file(other.c_str()), 0);
    EXPECT_EQ(file.rename_file(nullptr), 0);
    EXPECT_EQ(tree(scratch.path()), (Tree{{"a", "=x"}, {"b", "=y"}}));
}

TEST(nmkFileDir_rename, of_a_missing_file_counts_as_done) {
    const ScratchFolder scratch;
    EXPECT_EQ(named(scratch.path() + "/missing").rename_file("anything"), 1);
    EXPECT_EQ(nmkFileDir().rename_file("anything"), 1);
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST(nmkFileDir_rename, of_a_directory_counts_as_done_and_does_nothing) {
    const ScratchFolder scratch;
    fs::create_directory(scratch.path() + "/d");
    EXPECT_EQ(named(scratch.path() + "/d").rename_file((scratch.path() + "/e").c_str()), 1);
    EXPECT_EQ(tree(scratch.path()), (Tree{{"d", "/"}}));
}

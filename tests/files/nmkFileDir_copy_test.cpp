// Copies of files and directories, local copies, and the renaming of a file.
#include <gtest/gtest.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

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
#include "scratch_directory.h"
#include "tree_samples.h"
#include "working_directory.h"

namespace fs = std::filesystem;

namespace {

using Tree = std::map<std::string, std::string>;

// Records what is reported to it, and asks for a stop at a percentage.
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

unsigned mode_of(const std::string& file) {
    return static_cast<unsigned>(fs::status(file).permissions()) & 07777U;
}

// A fault in the middle of the data of one file.
nmk_filesystem::FaultHook fail_at_part(std::string source, int part, int error_number) {
    auto parts = std::make_shared<std::atomic<int>>(0);
    return [=](std::string_view call, std::string_view name) {
        return call == "copy part" && name == source && ++*parts == part ? error_number : 0;
    };
}

// More than the copy takes at once.
std::string long_contents() { return std::string(std::size_t{9} << 20, 'x'); }

}  // namespace

TEST(nmkFileDir_copy, makes_a_file_that_only_its_owner_reads_and_writes) {
    const ScratchDirectory scratch;
    const std::string source = scratch.file("a", std::string("1\0\n\r2", 5));
    fs::permissions(source, fs::perms::all);
    EXPECT_EQ(named(source).copy_file(named(scratch.path() + "/b")), 1);
    EXPECT_EQ(contents_of(scratch.path() + "/b"), contents_of(source));
    EXPECT_EQ(mode_of(scratch.path() + "/b"), 0600U);
    EXPECT_EQ(mode_of(source), 0777U);
}

TEST(nmkFileDir_copy, of_a_read_only_file_can_be_written) {
    const ScratchDirectory scratch;
    const std::string source = scratch.file("a", "x");
    fs::permissions(source, fs::perms::owner_read);
    EXPECT_EQ(named(source).copy_file(named(scratch.path() + "/b")), 1);
    EXPECT_EQ(mode_of(scratch.path() + "/b"), 0600U);
}

TEST(nmkFileDir_copy, into_a_directory_keeps_the_name) {
    const ScratchDirectory scratch;
    const std::string source = scratch.file("a.b", "x");
    fs::create_directory(scratch.path() + "/d");
    fs::create_directory_symlink("d", scratch.path() + "/to_d");
    EXPECT_EQ(named(source).copy_file(named(scratch.path() + "/d")), 1);
    EXPECT_EQ(contents_of(scratch.path() + "/d/a.b"), "x");
    fs::remove(scratch.path() + "/d/a.b");
    EXPECT_EQ(named(source).copy_file(named(scratch.path() + "/to_d")), 1);
    EXPECT_EQ(contents_of(scratch.path() + "/d/a.b"), "x");
}

TEST(nmkFileDir_copy, overwrites_a_file) {
    const ScratchDirectory scratch;
    const std::string source = scratch.file("a", "new");
    const std::string target = scratch.file("b", "much older");
    EXPECT_EQ(named(source).copy_file(named(target)), 1);
    EXPECT_EQ(contents_of(target), "new");
}

TEST(nmkFileDir_copy, onto_itself_fails_and_leaves_it_whole) {
    const ScratchDirectory scratch;
    const std::string file = scratch.file("a", "whole");
    fs::create_hard_link(file, scratch.path() + "/hard");
    fs::create_symlink("a", scratch.path() + "/soft");
    for (const char* name : {"/a", "/hard", "/soft", "/./a", ""}) {
        EXPECT_EQ(named(file).copy_file(named(scratch.path() + name)), 0) << name;
        EXPECT_EQ(contents_of(file), "whole") << name;
    }
    EXPECT_EQ(scratch.file_count(), 3U);
}

TEST(nmkFileDir_copy, of_nothing_to_nothing_or_into_a_missing_directory_fails) {
    const ScratchDirectory scratch;
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
    const ScratchDirectory scratch;
    const std::string source = scratch.file("a", long_contents());
    const std::string target = scratch.path() + "/b";
    for (const int reason : {ENOSPC, EIO, EACCES}) {
        const Fault fault("copy part", source, reason);
        EXPECT_EQ(named(source).copy_file(named(target)), 0);
        EXPECT_EQ(scratch.file_count(), 1U);
    }
}

TEST(nmkFileDir_copy, to_a_disk_that_fills_leaves_no_half_file_and_what_was_there) {
    const ScratchDirectory scratch;
    const std::string source = scratch.file("a", long_contents());
    const std::string older = scratch.file("older", "before");
    const int answer = with_little_room(1 << 20, [&] {
        return named(source).copy_file(named(scratch.path() + "/new")) * 2 +
               named(source).copy_file(named(older));
    });
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(contents_of(older), "before");
    EXPECT_EQ(scratch.file_count(), 2U);
}

TEST(nmkFileDir_copy, of_a_file_that_becomes_shorter_meanwhile_leaves_no_half_file) {
    const ScratchDirectory scratch;
    const std::string source = scratch.file("a", long_contents());
    const Fault fault([&](std::string_view call, std::string_view) {
        if (call == "copy part") fs::resize_file(source, 1000);
        return 0;
    });
    EXPECT_EQ(named(source).copy_file(named(scratch.path() + "/b")), 0);
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST(nmkFileDir_copy, keeps_names_that_cannot_be_decoded) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/" + bad_byte + "/" + cut_off, "x");
    fs::create_directory(scratch.path() + "/to");
    const nmkFileDir file = named(scratch.path() + "/from/" + bad_byte + "/" + cut_off);
    EXPECT_EQ(file.copy_file(named(scratch.path() + "/to")), 1);
    named(scratch.path() + "/from/" + bad_byte).copy_dir(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/to"),
              (Tree{{cut_off, "=x"}, {bad_byte, "/"}, {bad_byte + "/" + cut_off, "=x"}}));
}

TEST(nmkFileDir_copy, of_a_directory_goes_into_the_target_under_its_name) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/a", "1");
    put(scratch.path() + "/from/d/e/b", "2");
    fs::create_directory(scratch.path() + "/from/empty");
    const Tree whole = tree(scratch.path() + "/from");
    named(scratch.path() + "/from").copy_dir(named(scratch.path() + "/deep/to"));
    EXPECT_EQ(tree(scratch.path() + "/deep/to/from"), whole);
    EXPECT_EQ(tree(scratch.path() + "/from"), whole);
}

TEST(nmkFileDir_copy, of_the_contents_goes_straight_into_the_target) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/a", "1");
    put(scratch.path() + "/from/d/b", "2");
    put(scratch.path() + "/to/a", "older");
    put(scratch.path() + "/to/c", "3");
    named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/to"),
              (Tree{{"a", "=1"}, {"c", "=3"}, {"d", "/"}, {"d/b", "=2"}}));
}

TEST(nmkFileDir_copy, of_contents_into_a_missing_directory_copies_only_what_makes_its_own) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/a", "1");
    put(scratch.path() + "/from/d/b", "2");
    named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/to"), (Tree{{"a", "=1"}, {"d", "/"}, {"d/b", "=2"}}));
}

TEST(nmkFileDir_copy, of_a_directory_continues_past_what_cannot_be_copied) {
    const ScratchDirectory scratch;
    for (const char* name : {"a", "b", "c"}) put(scratch.path() + "/from/" + name, name);
    const Fault fault("copy file", "b", EACCES);
    named(scratch.path() + "/from").copy_dir(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/to/from"), (Tree{{"a", "=a"}, {"c", "=c"}}));
}

TEST(nmkFileDir_copy, continues_past_a_file_that_vanishes_after_the_listing) {
    const ScratchDirectory scratch;
    for (const char* name : {"a", "b", "c"}) put(scratch.path() + "/from/" + name, name);
    const std::string second = scratch.path() + "/from/b";
    const Fault fault([=](std::string_view call, std::string_view name) {
        if (call == "copy file" && name == "b") fs::remove(second);
        return 0;
    });
    named(scratch.path() + "/from").copy_dir(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/to/from"), (Tree{{"a", "=a"}, {"c", "=c"}}));
}

TEST(nmkFileDir_copy, of_a_directory_into_its_own_subtree_writes_nothing) {
    const ScratchDirectory scratch;
    const std::string from = scratch.path() + "/from";
    put(from + "/d/a", "1");
    fs::create_directory_symlink("from/d", scratch.path() + "/symlink");
    const Tree before = tree(scratch.path());
    const WorkingDirectory here(scratch.path());
    for (const std::string& target : {from, from + "/d", from + "/new/deeper", from + "/./d",
                                      scratch.path() + "/symlink", scratch.path() + "/symlink/new",
                                      scratch.path(), std::string("from/d"), std::string("from")}) {
        named(from).copy_dir(named(target));
        EXPECT_EQ(tree(scratch.path()), before) << target;
    }
    for (const std::string& target :
         {from, from + "/d", from + "/new", scratch.path() + "/symlink"}) {
        named(from).copy_dir_contents(named(target));
        EXPECT_EQ(tree(scratch.path()), before) << target;
    }
}

TEST(nmkFileDir_copy, beside_a_directory_of_similar_name_is_not_a_subtree) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/a", "1");
    fs::create_directory(scratch.path() + "/from2");
    named(scratch.path() + "/from").copy_dir(named(scratch.path() + "/from2"));
    EXPECT_EQ(tree(scratch.path() + "/from2"), (Tree{{"from", "/"}, {"from/a", "=1"}}));
}

TEST(nmkFileDir_copy, makes_symlinks_to_directories_again_and_copies_what_symlinks_to_files_say) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/d/a", "1");
    fs::create_directory_symlink("..", scratch.path() + "/from/d/up");
    fs::create_directory_symlink(".", scratch.path() + "/from/self");
    fs::create_symlink("d/a", scratch.path() + "/from/file");
    fs::create_symlink("nowhere", scratch.path() + "/from/broken");
    named(scratch.path() + "/from").copy_dir(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/to/from"),
              (Tree{{"d", "/"}, {"d/a", "=1"}, {"d/up", "->.."}, {"self", "->."}, {"file", "=1"}}));
}

TEST(nmkFileDir_copy, ends_when_a_symlink_in_the_target_leads_back_to_the_source) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/d/e/a", "1");
    fs::create_directory(scratch.path() + "/to");
    fs::create_directory_symlink("../from/d/e", scratch.path() + "/to/d");
    const Tree before = tree(scratch.path() + "/from");
    named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/from"), before);
}

TEST(nmkFileDir_copy,
     never_goes_through_a_symlink_deeper_in_the_target_to_another_part_of_the_source) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/d/e/a", "1");
    put(scratch.path() + "/from/other/b", "2");
    fs::create_directories(scratch.path() + "/to/d");
    fs::create_directory_symlink("../../from/other", scratch.path() + "/to/d/e");
    const Tree before = tree(scratch.path() + "/from");
    named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/from"), before);
}

TEST(nmkFileDir_copy, of_no_name_or_to_no_name_does_nothing) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/a", "1");
    nmkFileDir().copy_dir(named(scratch.path() + "/to"));
    nmkFileDir().copy_dir_contents(named(scratch.path() + "/to"));
    named(scratch.path() + "/from").copy_dir(nmkFileDir());
    named(scratch.path() + "/from").copy_dir_contents(nmkFileDir());
    EXPECT_EQ(tree(scratch.path()), (Tree{{"from", "/"}, {"from/a", "=1"}}));
}

TEST(nmkFileDir_local_copy, of_a_local_file_is_not_needed_and_changes_nothing) {
    const ScratchDirectory scratch;
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
    const ScratchDirectory scratch;
    const std::string source = scratch.file("a.b.tri", "contents");
    const RemoteDirectory remote(scratch.path());
    nmkFileDir file = named(source);
    EXPECT_EQ(file.make_local_file(nullptr), 1);
    EXPECT_NE(file.get().view(), source);
    EXPECT_TRUE(file.basename_ext().view().starts_with("nmk_"));
    EXPECT_EQ(file.file_ext(), "tri");
    EXPECT_EQ(file.basename().view().find('.'), std::string_view::npos) << "the last dot counts";
    EXPECT_EQ(contents_of(file.get().c_str()), "contents");
    EXPECT_EQ(mode_of(file.get().c_str()), 0600U);
    EXPECT_EQ(file.is_local_file(), 1);
    EXPECT_EQ(contents_of(source), "contents");
    EXPECT_EQ(file.delete_file(), 1);
}

TEST(nmkFileDir_local_copy, of_a_file_without_extension_has_none) {
    const ScratchDirectory scratch;
    const RemoteDirectory remote(scratch.path());
    nmkFileDir file = named(scratch.file("plain", "x"));
    EXPECT_EQ(file.make_local_file(nullptr), 1);
    EXPECT_EQ(file.basename_ext().view().find('.'), std::string_view::npos);
    EXPECT_EQ(file.delete_file(), 1);
}

TEST(nmkFileDir_local_copy, reports_whole_percentages_of_100) {
    const ScratchDirectory scratch;
    const RemoteDirectory remote(scratch.path());
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

TEST(nmkFileDir_local_copy, of_an_empty_file_reports_0_percent) {
    const ScratchDirectory scratch;
    const RemoteDirectory remote(scratch.path());
    nmkFileDir file = named(scratch.file("a", ""));
    Recorder recorder;
    EXPECT_EQ(file.make_local_file(&recorder), 1);
    for (const double position : recorder.positions) EXPECT_EQ(position, 0.0);
    EXPECT_EQ(file.size(), 0);
    EXPECT_EQ(file.delete_file(), 1);
}

TEST(nmkFileDir_local_copy, counts_in_64_bits) {
    // The low 32 bits of this size are 0, and would never come to one percent.
    const ScratchDirectory scratch;
    const std::string source = scratch.file("a", "");
    fs::resize_file(source, std::uintmax_t{1} << 32);
    const RemoteDirectory remote(scratch.path());
    nmkFileDir file = named(source);
    Recorder recorder(1.0);
    EXPECT_EQ(file.make_local_file(&recorder), 0);
    EXPECT_EQ(recorder.positions.back(), 1.0);
    EXPECT_EQ(file.exist(), 0);
}

TEST(nmkFileDir_local_copy, that_is_stopped_leaves_the_name_and_no_file) {
    const ScratchDirectory scratch;
    const std::string source = scratch.file("a", long_contents());
    const RemoteDirectory remote(scratch.path());
    for (const double stop_at : {0.0, 1.0, 50.0}) {
        nmkFileDir file = named(source);
        Recorder recorder(stop_at);
        EXPECT_EQ(file.make_local_file(&recorder), 0);
        EXPECT_TRUE(file.basename_ext().view().starts_with("nmk_"));
        EXPECT_EQ(file.exist(), 0);
    }
}

TEST(nmkFileDir_local_copy, never_goes_through_a_symlink_that_was_put_there) {
    const ScratchDirectory scratch;
    const std::string kept = scratch.file("kept", "kept");
    const std::string source = scratch.path() + "/remote/a.tri";
    put(source, "new");
    const RemoteDirectory remote(scratch.path() + "/remote");
    std::string chosen;
    const Fault fault([&](std::string_view call, std::string_view about) {
        if (call == "GetFileAttributesA" && about.ends_with(".tri") && about != source) {
            chosen = about;
        }
        if (call == "copy file") fs::create_symlink(kept, chosen);
        return 0;
    });
    nmkFileDir file = named(source);
    EXPECT_EQ(file.make_local_file(nullptr), 0);
    EXPECT_EQ(file.get().view(), chosen);
    EXPECT_EQ(contents_of(kept), "kept");
    EXPECT_TRUE(fs::is_symlink(chosen));
    fs::remove(chosen);
}

TEST(nmkFileDir_local_copy, that_fails_half_way_leaves_no_half_file) {
    const ScratchDirectory scratch;
    const std::string source = scratch.file("a", long_contents());
    const RemoteDirectory remote(scratch.path());
    nmkFileDir file = named(source);
    const Fault fault(fail_at_part(source, 2, ENOSPC));
    Recorder recorder;
    EXPECT_EQ(file.make_local_file(&recorder), 0);
    EXPECT_NE(file.get().view(), source);
    EXPECT_EQ(file.exist(), 0);
}

TEST(nmkFileDir_rename, gives_a_file_another_name) {
    const ScratchDirectory scratch;
    const nmkFileDir file = named(scratch.file("a", "x"));
    EXPECT_EQ(file.rename_file((scratch.path() + "/b").c_str()), 1);
    EXPECT_EQ(tree(scratch.path()), (Tree{{"b", "=x"}}));
}

TEST(nmkFileDir_rename, onto_an_existing_file_is_refused) {
    const ScratchDirectory scratch;
    const nmkFileDir file = named(scratch.file("a", "x"));
    const std::string other = scratch.file("b", "y");
    EXPECT_EQ(file.rename_file(other.c_str()), 0);
    EXPECT_EQ(file.rename_file(nullptr), 0);
    EXPECT_EQ(tree(scratch.path()), (Tree{{"a", "=x"}, {"b", "=y"}}));
}

TEST(nmkFileDir_rename, of_a_missing_file_counts_as_done) {
    const ScratchDirectory scratch;
    EXPECT_EQ(named(scratch.path() + "/missing").rename_file("anything"), 1);
    EXPECT_EQ(nmkFileDir().rename_file("anything"), 1);
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST(nmkFileDir_rename, of_a_directory_counts_as_done_and_does_nothing) {
    const ScratchDirectory scratch;
    fs::create_directory(scratch.path() + "/d");
    EXPECT_EQ(named(scratch.path() + "/d").rename_file((scratch.path() + "/e").c_str()), 1);
    EXPECT_EQ(tree(scratch.path()), (Tree{{"d", "/"}}));
}

TEST(nmkFileDir_copy, never_has_a_wider_mode_than_the_finished_copy) {
    const ScratchDirectory scratch;
    const std::string source = scratch.file("a", long_contents());
    const std::string older = scratch.file("older", "x");
    fs::permissions(source, fs::perms::all);
    fs::permissions(older, fs::perms::all);
    std::vector<unsigned> modes;
    const Fault fault([&](std::string_view call, std::string_view) {
        for (const auto& entry : fs::directory_iterator(scratch.path())) {
            const std::string name = entry.path().string();
            if (name != source && name != older && call != "copy file") {
                modes.push_back(mode_of(name));
            }
        }
        return 0;
    });
    EXPECT_EQ(named(source).copy_file(named(older)), 1);
    EXPECT_EQ(named(source).copy_file(named(scratch.path() + "/new")), 1);
    EXPECT_GE(modes.size(), 4U) << "the copy was not looked at while it was written";
    for (const unsigned mode : modes) EXPECT_EQ(mode & ~0600U, 0U);
    EXPECT_EQ(mode_of(older), 0600U);
}

TEST(nmkFileDir_copy, sets_the_mode_of_the_copy_and_not_of_a_file_behind_a_symlink_swapped_in) {
    const ScratchDirectory scratch;
    const std::string source = scratch.file("a", "new");
    const std::string target = scratch.path() + "/b";
    const std::string other = scratch.file("other", "x");
    fs::permissions(other, fs::perms::all);
    const Fault fault([&](std::string_view call, std::string_view) {
        if (call == "renameat2") fs::create_symlink(other, target);
        return 0;
    });
    named(source).copy_file(named(target));
    EXPECT_EQ(mode_of(other), 0777U);
    EXPECT_EQ(contents_of(other), "x");
    EXPECT_EQ(scratch.file_count(), 3U);
}

TEST(nmkFileDir_copy, has_its_mode_whatever_the_umask) {
    const ScratchDirectory scratch;
    const std::string source = scratch.file("a", "x");
    const int copied = in_a_child([&] {
        ::umask(0777);
        return named(source).copy_file(named(scratch.path() + "/b"));
    });
    EXPECT_EQ(copied, 1);
    EXPECT_EQ(mode_of(scratch.path() + "/b"), 0600U);
}

TEST(nmkFileDir_copy_dir, never_writes_through_a_symlink_in_the_target) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/d/a", "new");
    put(scratch.path() + "/from/f", "new");
    put(scratch.path() + "/from/g", "new");
    put(scratch.path() + "/outside/a", "kept");
    put(scratch.path() + "/outside/f", "kept");
    fs::create_directory(scratch.path() + "/to");
    fs::create_directory_symlink("../outside", scratch.path() + "/to/d");
    fs::create_symlink("../outside/f", scratch.path() + "/to/f");
    fs::create_symlink("../outside/made", scratch.path() + "/to/g");
    const Tree outside = tree(scratch.path() + "/outside");
    named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/outside"), outside);
    EXPECT_EQ(tree(scratch.path() + "/to"),
              (Tree{{"d", "->../outside"}, {"f", "=new"}, {"g", "=new"}}))
        << "a symlink is replaced by a file and not entered as a directory";
}

TEST(nmkFileDir_copy_dir, does_nothing_when_its_own_name_in_the_target_is_a_symlink) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/a", "new");
    fs::create_directories(scratch.path() + "/outside");
    fs::create_directory(scratch.path() + "/to");
    fs::create_directory_symlink("../outside", scratch.path() + "/to/from");
    named(scratch.path() + "/from").copy_dir(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/outside"), Tree{});
}

TEST(nmkFileDir_copy_dir, goes_through_a_symlink_that_the_caller_named_as_target) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/a", "1");
    fs::create_directory(scratch.path() + "/to");
    fs::create_directory_symlink("to", scratch.path() + "/symlink");
    named(scratch.path() + "/from").copy_dir(named(scratch.path() + "/symlink"));
    EXPECT_EQ(tree(scratch.path() + "/to"), (Tree{{"from", "/"}, {"from/a", "=1"}}));
}

TEST(nmkFileDir_copy_dir, never_leaves_the_target_through_a_symlink_put_there_meanwhile) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/d/a", "new");
    put(scratch.path() + "/outside/a", "kept");
    fs::create_directories(scratch.path() + "/to/d");
    const Fault fault([&](std::string_view call, std::string_view name) {
        if (call == "enter directory" && name == "d" && !fs::is_symlink(scratch.path() + "/to/d")) {
            fs::rename(scratch.path() + "/to/d", scratch.path() + "/to/moved");
            fs::create_directory_symlink("../outside", scratch.path() + "/to/d");
        }
        return 0;
    });
    named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/outside"), (Tree{{"a", "=kept"}}));
}

TEST(nmkFileDir_copy_dir, writes_into_the_directory_it_opened_when_a_symlink_takes_its_name) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/d/a", "new");
    put(scratch.path() + "/outside/a", "kept");
    const Fault fault([&](std::string_view call, std::string_view) {
        if (call == "copy file") {
            fs::rename(scratch.path() + "/to/d", scratch.path() + "/to/moved");
            fs::create_directory_symlink("../outside", scratch.path() + "/to/d");
        }
        return 0;
    });
    fs::create_directory(scratch.path() + "/to");
    named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/outside"), (Tree{{"a", "=kept"}}));
    EXPECT_EQ(contents_of(scratch.path() + "/to/moved/a"), "new");
}

TEST(nmkFileDir_copy_dir, of_a_directory_named_by_two_dots_does_nothing) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/a", "1");
    fs::create_directories(scratch.path() + "/from/d");
    fs::create_directories(scratch.path() + "/elsewhere/to");
    const Tree before = tree(scratch.path());
    named(scratch.path() + "/from/d/..").copy_dir(named(scratch.path() + "/elsewhere/to"));
    EXPECT_EQ(tree(scratch.path()), before);
}

TEST(nmkFileDir_copy_dir, ends_when_its_target_is_moved_into_the_source_meanwhile) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/a/f", "1");
    fs::create_directories(scratch.path() + "/from/z");
    fs::create_directory(scratch.path() + "/to");
    const Fault fault([&](std::string_view call, std::string_view name) {
        if (call == "make directory" && name == "a") {
            fs::rename(scratch.path() + "/to", scratch.path() + "/from/z/to");
        }
        return 0;
    });
    named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/from/z/to"),
              (Tree{{"a", "/"}, {"a/f", "=1"}, {"z", "/"}, {"z/to", "/"}}));
}

TEST(nmkFileDir_copy_dir, stops_when_a_directory_in_which_it_works_is_moved_away) {
    for (const char* moved : {"/from/d", "/to/d"}) {
        const ScratchDirectory scratch;
        put(scratch.path() + "/from/d/a", "1");
        put(scratch.path() + "/from/e/b", "2");
        fs::create_directories(scratch.path() + "/to");
        fs::create_directories(scratch.path() + "/other");
        const Fault fault([&](std::string_view call, std::string_view) {
            if (call == "copy file") {
                fs::rename(scratch.path() + moved, scratch.path() + "/other/d");
            }
            return 0;
        });
        named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
        EXPECT_FALSE(fs::exists(scratch.path() + "/other/e")) << moved;
        EXPECT_FALSE(fs::exists(scratch.path() + "/to/e")) << moved;
    }
}

TEST(nmkFileDir_copy_dir, leaves_out_what_it_may_not_enter) {
    const ScratchDirectory scratch;
    for (const char* name : {"a", "b", "c"}) {
        put(scratch.path() + "/from/" + name + "/f", name);
    }
    put(scratch.path() + "/to/c", "a file has the name");
    {
        // Of the two trees the target is entered first.
        int entered = 0;
        const Fault fault([&](std::string_view call, std::string_view name) {
            return call == "enter directory" && name == "b" && ++entered == 2 ? EACCES : 0;
        });
        named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    }
    EXPECT_EQ(tree(scratch.path() + "/to"),
              (Tree{{"a", "/"}, {"a/f", "=a"}, {"b", "/"}, {"c", "=a file has the name"}}));
}

TEST(nmkFileDir_copy_dir, copies_more_files_than_it_may_hold_open) {
    const ScratchDirectory scratch;
    for (int i = 0; i < 200; ++i) put(scratch.path() + "/from/" + std::to_string(i), "x");
    fs::create_directory(scratch.path() + "/to");
    const int done = in_a_child([&] {
        const rlimit limit{24, 24};
        if (::setrlimit(RLIMIT_NOFILE, &limit) != 0) return 1;
        named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
        return 0;
    });
    EXPECT_EQ(done, 0);
    EXPECT_EQ(tree(scratch.path() + "/to"), tree(scratch.path() + "/from"));
}

TEST(nmkFileDir_copy_dir, flushes_one_by_one_on_a_disk_that_cannot_flush_all_at_once) {
    const ScratchDirectory scratch;
    for (int i = 0; i < 10; ++i) put(scratch.path() + "/from/" + std::to_string(i), "x");
    fs::create_directory(scratch.path() + "/to");
    int flushed = 0;
    const Fault fault([&](std::string_view call, std::string_view) {
        flushed += call == "fsync" ? 1 : 0;
        return call == "syncfs" ? EIO : 0;
    });
    named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    EXPECT_EQ(flushed, 10);
    EXPECT_EQ(tree(scratch.path() + "/to"), tree(scratch.path() + "/from"));
}

TEST(nmkFileDir_copy_dir, asks_for_kinds_where_the_directory_does_not_keep_them) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/d/a", "1");
    put(scratch.path() + "/from/f", "2");
    fs::create_directory_symlink("d", scratch.path() + "/from/symlink");
    fs::create_directory(scratch.path() + "/to");
    const Fault fault("entry kind", EIO);
    named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/to"), tree(scratch.path() + "/from"));
}

TEST(nmkFileDir_copy_dir, leaves_out_temporary_files_of_other_copies) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/.nmk_part_0123456789abcdef", "half a fi");
    put(scratch.path() + "/from/.nmk_part_of_the_plan", "a file of the user");
    fs::create_directory(scratch.path() + "/to");
    named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    EXPECT_EQ(tree(scratch.path() + "/to"),
              (Tree{{".nmk_part_of_the_plan", "=a file of the user"}}));
}

TEST(nmkFileDir_copy_dir, deeper_than_any_name_or_number_of_open_files) {
    const ScratchDirectory scratch;
    {
        const WorkingDirectory here(scratch.path());
        fs::create_directory("from");
        fs::current_path("from");
        for (int i = 0; i < 1100; ++i) {
            ASSERT_EQ(::mkdir("deeper", 0700), 0);
            ASSERT_EQ(::chdir("deeper"), 0);
        }
        std::ofstream("at the end") << "x";
    }
    named(scratch.path() + "/from").copy_dir(named(scratch.path() + "/to"));
    int depth = 0;
    {
        const WorkingDirectory here(scratch.path() + "/to/from");
        while (::chdir("deeper") == 0) ++depth;
        EXPECT_TRUE(fs::exists("at the end"));
    }
    EXPECT_EQ(depth, 1100);
    EXPECT_EQ(named(scratch.path() + "/to").delete_tree(), 1);
    EXPECT_EQ(named(scratch.path() + "/from").delete_tree(), 1);
}

TEST(nmkFileDir_copy_dir, of_files_alone_to_a_missing_name_copies_each_onto_that_name) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/from/a", "1");
    put(scratch.path() + "/from/b", "2");
    named(scratch.path() + "/from").copy_dir_contents(named(scratch.path() + "/to"));
    EXPECT_EQ(contents_of(scratch.path() + "/to"), "2");
}

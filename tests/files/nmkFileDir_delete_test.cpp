// Making and deleting directories, and deleting files and trees.
#include <gtest/gtest.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <sys/stat.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <string>
#include <thread>
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

double seconds_for(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Fails a call on a name so many times, then lets it continue.
nmk_filesystem::FaultHook fail_first(std::string call, std::string name, int times) {
    auto count = std::make_shared<std::atomic<int>>(0);
    return [=](std::string_view asked, std::string_view about) {
        return asked == call && about == name && (*count)++ < times ? EACCES : 0;
    };
}

}  // namespace

TEST(nmkFileDir_mkdir, makes_the_parents_that_are_missing) {
    const ScratchDirectory scratch;
    EXPECT_EQ(named(scratch.path() + "/a/b/c").mkdir(), 1);
    EXPECT_EQ(tree(scratch.path()), (Tree{{"a", "/"}, {"a/b", "/"}, {"a/b/c", "/"}}));
    EXPECT_EQ(named(scratch.path() + "/a/b/c").mkdir(), 1);
}

TEST(nmkFileDir_mkdir, makes_relative_and_undecodable_names) {
    const ScratchDirectory scratch;
    const WorkingDirectory here(scratch.path());
    EXPECT_EQ(named("r/" + bad_byte + "/" + cut_off).mkdir(), 1);
    EXPECT_TRUE(fs::is_directory(scratch.path() + "/r/" + bad_byte + "/" + cut_off));
}

TEST(nmkFileDir_mkdir, of_no_name_or_what_exists_is_done_already) {
    const ScratchDirectory scratch;
    EXPECT_EQ(nmkFileDir().mkdir(), 1);
    EXPECT_EQ(named(scratch.file("f", "x")).mkdir(), 1);
    EXPECT_EQ(contents_of(scratch.path() + "/f"), "x");
}

TEST(nmkFileDir_mkdir, below_a_file_fails) {
    const ScratchDirectory scratch;
    EXPECT_EQ(named(scratch.file("f", "") + "/d").mkdir(), 0);
    EXPECT_EQ(named(scratch.path() + "/f/d/e").mkdir(), 0);
}

TEST(nmkFileDir_mkdir, stops_at_the_first_parent_that_cannot_be_made) {
    const ScratchDirectory scratch;
    const Fault fault("CreateDirectoryA", scratch.path() + "/a/b", EACCES);
    EXPECT_EQ(named(scratch.path() + "/a/b/c").mkdir(), 0);
    EXPECT_EQ(tree(scratch.path()), (Tree{{"a", "/"}}));
}

TEST(nmkFileDir_mkdir, that_another_does_meanwhile_is_done_unless_it_is_a_file) {
    const ScratchDirectory scratch;
    const Fault race([&](std::string_view call, std::string_view about) {
        if (call != "CreateDirectoryA") return 0;
        if (about.ends_with("file")) put(std::string(about), "x");
        if (about.ends_with("directory")) fs::create_directory(about);
        return EEXIST;
    });
    EXPECT_EQ(named(scratch.path() + "/directory").mkdir(), 1);
    EXPECT_EQ(named(scratch.path() + "/file").mkdir(), 0);
    EXPECT_EQ(tree(scratch.path()), (Tree{{"file", "=x"}, {"directory", "/"}}));
}

TEST(nmkFileDir_mkdir, of_a_name_too_long_for_the_disk_fails) {
    const ScratchDirectory scratch;
    const WorkingDirectory here(scratch.path());
    for (int length : {256, 1000, 5000, 10000}) {
        EXPECT_EQ(named(std::string(static_cast<std::size_t>(length), 'x')).mkdir(), 0);
    }
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST(nmkFileDir_mkdir, of_more_components_than_the_disk_takes_fails_and_leaves_none) {
    const ScratchDirectory scratch;
    for (const int count : {2500, 500000}) {
        std::string path = scratch.path();
        for (int i = 0; i < count; ++i) path += "/a";
        EXPECT_EQ(named(path).mkdir(), 0) << count;
        EXPECT_EQ(scratch.file_count(), 0U) << count;
    }
}

TEST(nmkFileDir_rmdir, removes_an_empty_directory_read_only_or_not) {
    const ScratchDirectory scratch;
    const nmkFileDir directory = named(scratch.path() + "/d");
    EXPECT_EQ(directory.mkdir(), 1);
    EXPECT_EQ(directory.rmdir(), 1);
    EXPECT_EQ(directory.mkdir(), 1);
    fs::permissions(scratch.path() + "/d", fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_EQ(directory.rmdir(), 1);
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST(nmkFileDir_rmdir, of_anything_but_a_directory_counts_as_done) {
    const ScratchDirectory scratch;
    EXPECT_EQ(nmkFileDir().rmdir(), 1);
    EXPECT_EQ(named(scratch.path() + "/missing").rmdir(), 1);
    EXPECT_EQ(named(scratch.file("f", "x")).rmdir(), 1);
    EXPECT_EQ(contents_of(scratch.path() + "/f"), "x");
}

TEST(nmkFileDir_rmdir, of_a_directory_that_holds_something_fails) {
    const ScratchDirectory scratch;
    scratch.file("f", "x");
    EXPECT_EQ(named(scratch.path()).rmdir(), 0);
    EXPECT_EQ(contents_of(scratch.path() + "/f"), "x");
}

TEST(nmkFileDir_rmdir, of_a_symlink_removes_the_symlink) {
    const ScratchDirectory scratch;
    fs::create_directory(scratch.path() + "/d");
    fs::create_directory_symlink("d", scratch.path() + "/symlink");
    EXPECT_EQ(named(scratch.path() + "/symlink").rmdir(), 1);
    EXPECT_EQ(tree(scratch.path()), (Tree{{"d", "/"}}));
}

TEST(nmkFileDir_delete, of_a_file) {
    const ScratchDirectory scratch;
    const nmkFileDir file = named(scratch.file("f", "x"));
    EXPECT_EQ(file.delete_file(), 1);
    EXPECT_EQ(file.exist(), 0);
    EXPECT_EQ(file.delete_file(), 1);
    EXPECT_EQ(nmkFileDir().delete_file(), 1);
    const nmkFileDir odd = named(scratch.file(bad_byte, "x"));
    EXPECT_EQ(odd.delete_file(), 1);
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST(nmkFileDir_delete, of_a_directory_counts_as_done_and_it_is_still_there) {
    const ScratchDirectory scratch;
    EXPECT_EQ(named(scratch.path()).delete_file(), 1);
    EXPECT_TRUE(fs::is_directory(scratch.path()));
}

TEST(nmkFileDir_delete, of_a_read_only_file_is_refused_also_for_root) {
    const ScratchDirectory scratch;
    const std::string file = scratch.file("f", "x");
    fs::permissions(file, fs::perms::owner_read);
    EXPECT_EQ(named(file).delete_file(), 0);
    EXPECT_EQ(contents_of(file), "x");
}

TEST(nmkFileDir_delete, of_a_symlink_removes_the_symlink) {
    const ScratchDirectory scratch;
    const std::string file = scratch.file("f", "x");
    fs::permissions(file, fs::perms::owner_read);
    fs::create_symlink("f", scratch.path() + "/symlink");
    fs::create_symlink("nowhere", scratch.path() + "/broken");
    EXPECT_EQ(named(scratch.path() + "/symlink").delete_file(), 1);
    EXPECT_EQ(named(scratch.path() + "/broken").delete_file(), 1);
    EXPECT_EQ(tree(scratch.path()), (Tree{{"f", "=x"}}));
}

TEST(nmkFileDir_delete, is_really_tried_when_the_file_may_not_be_looked_at) {
    const ScratchDirectory scratch;
    const nmkFileDir file = named(scratch.file("f", "x"));
    {
        const Fault fault("GetFileAttributesA", scratch.path() + "/f", EACCES);
        EXPECT_EQ(file.delete_file(), 1);
    }
    EXPECT_EQ(file.exist(), 0);
}

TEST(nmkFileDir_delete, in_a_directory_without_permissions_fails_and_keeps_the_file) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/locked/f", "x");
    fs::permissions(scratch.path() + "/locked/f", fs::perms::all);
    fs::permissions(scratch.path(), fs::perms::all);
    fs::permissions(scratch.path() + "/locked", fs::perms::none);
    const int answer =
        without_rights([&] { return named(scratch.path() + "/locked/f").delete_file(); });
    fs::permissions(scratch.path() + "/locked", fs::perms::owner_all);
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(contents_of(scratch.path() + "/locked/f"), "x");
}

TEST(nmkFileDir_delete, tries_again_after_waiting) {
    const ScratchDirectory scratch;
    const std::string file = scratch.file("f", "x");
    const Fault fault(fail_first("remove", file, 2));
    int answer = 0;
    const double seconds = seconds_for([&] { answer = named(file).delete_file(3, 30); });
    EXPECT_EQ(answer, 1);
    EXPECT_GE(seconds, 0.06);
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST(nmkFileDir_delete, gives_up_after_the_last_attempt_without_waiting) {
    const ScratchDirectory scratch;
    const std::string file = scratch.file("f", "x");
    const Fault fault(fail_first("remove", file, 2));
    EXPECT_EQ(named(file).delete_file(1, 1000000), 0);
    EXPECT_EQ(named(file).delete_file(1, 1000000), 0);
    EXPECT_EQ(named(file).delete_file(1, 1000000), 1);
}

TEST(nmkFileDir_delete, with_no_attempts_tries_once_and_returns_0_even_if_the_file_went) {
    const ScratchDirectory scratch;
    for (const int attempts : {0, -1}) {
        const nmkFileDir file = named(scratch.file("f", "x"));
        EXPECT_EQ(file.delete_file(attempts, 1000000), 0);
        EXPECT_EQ(file.exist(), 0);
    }
    EXPECT_EQ(named(scratch.path() + "/missing").delete_file(0, 0), 0);
    EXPECT_EQ(named(scratch.path() + "/missing").delete_file(1, 0), 1);
}

TEST(nmkFileDir_delete_tree, removes_everything_below) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/d/a", "1");
    put(scratch.path() + "/d/e/f/b", "2");
    put(scratch.path() + "/d/" + bad_byte + "/" + cut_off, "3");
    put(scratch.path() + "/d/*/?", "4");
    put(scratch.path() + "/stays", "5");
    EXPECT_EQ(named(scratch.path() + "/d").delete_tree(), 1);
    EXPECT_EQ(tree(scratch.path()), (Tree{{"stays", "=5"}}));
}

TEST(nmkFileDir_delete_tree, of_anything_but_a_directory_counts_as_done) {
    const ScratchDirectory scratch;
    EXPECT_EQ(nmkFileDir().delete_tree(), 1);
    EXPECT_EQ(named(scratch.path() + "/missing").delete_tree(), 1);
    EXPECT_EQ(named(scratch.file("f", "x")).delete_tree(), 1);
    EXPECT_EQ(contents_of(scratch.path() + "/f"), "x");
}

TEST(nmkFileDir_delete_tree, removes_read_only_directories) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/d/e/f", "x");
    fs::create_directory(scratch.path() + "/d/empty");
    for (const char* name : {"/d/e", "/d/empty", "/d"}) {
        fs::permissions(scratch.path() + name, fs::perms::owner_read | fs::perms::owner_exec);
    }
    EXPECT_EQ(named(scratch.path() + "/d").delete_tree(), 1);
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST(nmkFileDir_delete_tree, removes_read_only_directories_without_the_privileges_of_root) {
    const ScratchDirectory scratch;
    fs::permissions(scratch.path(), fs::perms::all);
    const int answer = without_rights([&] {
        put(scratch.path() + "/d/e/f", "x");
        for (const char* name : {"/d/e", "/d"}) {
            fs::permissions(scratch.path() + name, fs::perms::owner_read | fs::perms::owner_exec);
        }
        return named(scratch.path() + "/d").delete_tree();
    });
    EXPECT_EQ(answer, 1);
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST(nmkFileDir_delete_tree, stops_at_a_read_only_file_and_keeps_what_follows) {
    const ScratchDirectory scratch;
    for (const char* name : {"a", "b", "c"}) put(scratch.path() + "/d/" + name, name);
    fs::permissions(scratch.path() + "/d/b", fs::perms::owner_read);
    EXPECT_EQ(named(scratch.path() + "/d").delete_tree(), 0);
    EXPECT_EQ(tree(scratch.path() + "/d"), (Tree{{"b", "=b"}, {"c", "=c"}}));
}

TEST(nmkFileDir_delete_tree, removes_symlinks_and_never_what_they_lead_to) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/kept/f", "x");
    fs::create_directory(scratch.path() + "/d");
    fs::create_directory_symlink("../kept", scratch.path() + "/d/directory");
    fs::create_symlink("../kept/f", scratch.path() + "/d/file");
    fs::create_directory_symlink("..", scratch.path() + "/d/up");
    fs::create_symlink("loop", scratch.path() + "/d/loop");
    EXPECT_EQ(named(scratch.path() + "/d").delete_tree(), 1);
    EXPECT_EQ(tree(scratch.path()), (Tree{{"kept", "/"}, {"kept/f", "=x"}}));
}

TEST(nmkFileDir_delete_tree, of_a_symlink_removes_the_symlink_alone) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/kept/f", "x");
    fs::create_directory_symlink("kept", scratch.path() + "/symlink");
    EXPECT_EQ(named(scratch.path() + "/symlink").delete_tree(), 1);
    EXPECT_EQ(tree(scratch.path()), (Tree{{"kept", "/"}, {"kept/f", "=x"}}));
}

TEST(nmkFileDir_delete_tree, does_not_follow_a_symlink_put_in_place_of_a_directory_meanwhile) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/kept/f", "x");
    put(scratch.path() + "/d/e/g", "y");
    // Between the look at the entry and entering it, another process swaps it.
    const Fault fault([&](std::string_view call, std::string_view name) {
        if (call == "enter directory" && name == "e" && !fs::is_symlink(scratch.path() + "/d/e")) {
            fs::rename(scratch.path() + "/d/e", scratch.path() + "/moved");
            fs::create_directory_symlink("../kept", scratch.path() + "/d/e");
        }
        return 0;
    });
    EXPECT_EQ(named(scratch.path() + "/d").delete_tree(), 0);
    EXPECT_EQ(contents_of(scratch.path() + "/kept/f"), "x");
    EXPECT_EQ(contents_of(scratch.path() + "/moved/g"), "y");
}

TEST(nmkFileDir_delete_tree, stops_when_the_directory_it_works_in_is_moved_away) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/d/e/g", "y");
    put(scratch.path() + "/d/f", "kept when e is moved out of d");
    put(scratch.path() + "/other/f", "x");
    const Fault fault([&](std::string_view call, std::string_view name) {
        if (call == "remove" && name == "g") {
            fs::rename(scratch.path() + "/d/e", scratch.path() + "/other/e");
        }
        return 0;
    });
    EXPECT_EQ(named(scratch.path() + "/d").delete_tree(), 0);
    EXPECT_EQ(contents_of(scratch.path() + "/other/f"), "x");
}

TEST(nmkFileDir_delete_tree, stops_at_what_the_disk_refuses) {
    const ScratchDirectory scratch;
    for (const char* name : {"a", "b", "c"}) put(scratch.path() + "/d/" + name, name);
    {
        const Fault fault("remove", "b", EIO);
        EXPECT_EQ(named(scratch.path() + "/d").delete_tree(), 0);
    }
    EXPECT_EQ(tree(scratch.path() + "/d"), (Tree{{"b", "=b"}, {"c", "=c"}}));
}

TEST(nmkFileDir_delete_tree, of_a_directory_that_may_not_be_read_fails) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/d/f", "x");
    fs::permissions(scratch.path(), fs::perms::all);
    fs::permissions(scratch.path() + "/d", fs::perms::none);
    const int answer = without_rights([&] { return named(scratch.path() + "/d").delete_tree(); });
    fs::permissions(scratch.path() + "/d", fs::perms::owner_all);
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(contents_of(scratch.path() + "/d/f"), "x");
}

TEST(nmkFileDir_delete_tree, goes_deeper_than_any_name_or_number_of_open_files) {
    const ScratchDirectory scratch;
    {
        const WorkingDirectory here(scratch.path());
        fs::create_directory("d");
        fs::current_path("d");
        for (int i = 0; i < 3000; ++i) {
            ASSERT_EQ(::mkdir("deeper", 0700), 0);
            ASSERT_EQ(::chdir("deeper"), 0);
        }
    }
    EXPECT_EQ(named(scratch.path() + "/d").delete_tree(), 1);
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST(nmkFileDir_delete_tree, tries_again_while_it_is_a_directory) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/d/f", "x");
    const nmkFileDir directory = named(scratch.path() + "/d");
    {
        const Fault fault(fail_first("remove", "f", 2));
        EXPECT_EQ(directory.delete_tree(2, 1), 0);
        EXPECT_EQ(directory.is_dir(), 1);
        EXPECT_EQ(directory.delete_tree(2, 1), 1);
    }
    EXPECT_EQ(directory.is_dir(), 0);
}

TEST(nmkFileDir_delete_tree, with_no_attempts_tries_once_and_returns_0) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/d/f", "x");
    const nmkFileDir directory = named(scratch.path() + "/d");
    EXPECT_EQ(directory.delete_tree(0, 1000000), 0);
    EXPECT_EQ(directory.is_dir(), 0);
    EXPECT_EQ(directory.delete_tree(1, 0), 1);
}

TEST(nmkFileDir_delete_tree, made_and_deleted_by_several_at_once_loses_nothing_else) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/kept/f", "x");
    const nmkFileDir directory = named(scratch.path() + "/d");
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < 60; ++i) {
                const std::string name = scratch.path() + "/d/" + std::to_string(i % 3) + "/e";
                if (t % 2 == 0) {
                    named(name).mkdir();
                    named(scratch.path() + "/kept/f").copy_file(named(name));
                } else {
                    named(scratch.path() + "/d").delete_tree();
                }
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(directory.delete_tree(3, 1), 1);
    EXPECT_EQ(tree(scratch.path()), (Tree{{"kept", "/"}, {"kept/f", "=x"}}));
}

TEST(nmkFileDir_delete_tree, made_and_deleted_by_two_processes_at_once_loses_nothing_else) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/kept/f", "x");
    const auto make_often = [&] {
        for (int i = 0; i < 100; ++i) {
            const std::string name = scratch.path() + "/d/" + std::to_string(i % 3) + "/e";
            named(name).mkdir();
            named(scratch.path() + "/kept").copy_dir(named(name));
        }
        return 0;
    };
    std::thread other([&] { EXPECT_EQ(in_a_child(make_often), 0); });
    for (int i = 0; i < 100; ++i) named(scratch.path() + "/d").delete_tree();
    other.join();
    EXPECT_EQ(named(scratch.path() + "/d").delete_tree(3, 1), 1);
    EXPECT_EQ(tree(scratch.path()), (Tree{{"kept", "/"}, {"kept/f", "=x"}}));
}

TEST(nmkFileDir_delete_tree, by_two_at_once_succeeds_for_both) {
    for (int round = 0; round < 20; ++round) {
        const ScratchDirectory scratch;
        for (int i = 0; i < 30; ++i) {
            put(scratch.path() + "/d/" + std::to_string(i) + "/f", "x");
        }
        std::atomic<int> answers = 0;
        std::vector<std::thread> threads;
        for (int t = 0; t < 2; ++t) {
            threads.emplace_back(
                [&] { answers += named(scratch.path() + "/d").delete_tree(5, 1); });
        }
        for (std::thread& thread : threads) thread.join();
        EXPECT_EQ(answers, 2);
        EXPECT_EQ(scratch.file_count(), 0U);
    }
}

// Copies whose process is killed: no partial target, and nothing that stays.
#include <gtest/gtest.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>

#include "child_process.h"
#include "disk_fault.h"
#include "holding_child.h"
#include "scratch_directory.h"
#include "tree_samples.h"

namespace {

namespace fs = std::filesystem;

constexpr int killed = 1000 + SIGKILL;  // what in_a_child returns

std::string long_contents() { return std::string(std::size_t{3} << 20, 'x'); }

// Runs the work in a child process that kills itself at the `nth` call of the file system; false
// when the work ended before.
bool is_killed_at_call(int nth, const std::function<void()>& work) {
    const int status = in_a_child([&] {
        int calls = 0;
        const Fault fault([&](std::string_view, std::string_view) {
            if (++calls == nth) ::kill(::getpid(), SIGKILL);
            return 0;
        });
        work();
        return 0;
    });
    EXPECT_TRUE(status == killed || status == 0);
    return status == killed;
}

// Calls `check` after each point at which the work can be killed; how many there are.
int killed_at_every_call(const std::function<void()>& work, const std::function<void()>& check) {
    int nth = 1;
    while (nth < 1000 && is_killed_at_call(nth, work)) {
        check();
        ++nth;
    }
    return nth - 1;
}

bool is_temporary(const fs::directory_entry& entry) {
    return entry.path().filename().string().starts_with(".nmk_part_");
}

std::ptrdiff_t temporary_files_in(const std::string& directory) {
    return std::count_if(fs::recursive_directory_iterator(directory), {}, &is_temporary);
}

}  // namespace

TEST(nmkFileDir_killed_copy, leaves_no_partial_file_under_a_new_name) {
    const ScratchDirectory scratch;
    const std::string source = scratch.file("source", long_contents());
    const std::string target = scratch.path() + "/target";
    int unfinished = 0;
    const int points = killed_at_every_call(
        [&] { named(source).copy_file(named(target)); },
        [&] {
            EXPECT_TRUE(!fs::exists(target) || contents_of(target) == long_contents());
            unfinished += temporary_files_in(scratch.path()) > 0 ? 1 : 0;
            fs::remove(target);
        });
    EXPECT_GE(points, 5);
    EXPECT_GE(unfinished, 3) << "the copy was never killed half way";
}

TEST(nmkFileDir_killed_copy, leaves_an_existing_target_as_it_was) {
    const ScratchDirectory scratch;
    const std::string source = scratch.file("source", long_contents());
    const std::string target = scratch.file("target", "before");
    const int points = killed_at_every_call([&] { named(source).copy_file(named(target)); },
                                            [&] { EXPECT_EQ(contents_of(target), "before"); });
    EXPECT_GE(points, 5);
}

TEST(nmkFileDir_killed_copy, at_any_moment_leaves_a_whole_target_or_none) {
    const ScratchDirectory scratch;
    const std::string source = scratch.file("source", long_contents());
    for (int round = 0; round < 20; ++round) {
        const std::string target = scratch.path() + "/target " + std::to_string(round);
        HoldingChild child([] {});
        child.kill();
        const pid_t copying = ::fork();
        if (copying == 0) {
            named(source).copy_file(named(target));
            ::_exit(0);
        }
        std::this_thread::sleep_for(std::chrono::microseconds(700 * round));
        ::kill(copying, SIGKILL);
        ::waitpid(copying, nullptr, 0);
        EXPECT_TRUE(!fs::exists(target) || contents_of(target) == long_contents()) << round;
    }
    EXPECT_EQ(named(source).copy_file(named(scratch.path() + "/last")), 1);
    EXPECT_EQ(temporary_files_in(scratch.path()), 0);
}

TEST(nmkFileDir_killed_copy, is_cleared_away_by_the_next_copy_into_the_directory) {
    const ScratchDirectory scratch;
    const std::string source = scratch.file("source", long_contents());
    const std::string to = scratch.path() + "/to";
    fs::create_directory(to);
    int cleared = 0;
    const int points =
        killed_at_every_call([&] { named(source).copy_file(named(to + "/target")); },
                             [&] {
                                 const auto left = temporary_files_in(to);
                                 EXPECT_EQ(named(source).copy_file(named(to + "/other")), 1);
                                 EXPECT_EQ(temporary_files_in(to), 0);
                                 cleared += left > 0 ? 1 : 0;
                                 fs::remove(to + "/target");
                             });
    EXPECT_GE(points, 5);
    EXPECT_GE(cleared, 3);
}

TEST(nmkFileDir_killed_copy, of_a_directory_leaves_whole_files_and_is_cleared_away_by_the_next) {
    const ScratchDirectory scratch;
    for (int i = 0; i < 3; ++i) {
        put(scratch.path() + "/from/" + std::to_string(i), std::string(1000, 'x'));
        put(scratch.path() + "/from/d/" + std::to_string(i), std::string(1000, 'x'));
    }
    const std::string to = scratch.path() + "/to";
    const auto copy = [&] { named(scratch.path() + "/from").copy_dir(named(to)); };
    const int points = killed_at_every_call(copy, [&] {
        for (const auto& [name, what] : fs::exists(to) ? tree(to) : decltype(tree(to)){}) {
            const bool is_whole = what[0] != '=' || what == "=" + std::string(1000, 'x');
            EXPECT_TRUE(is_whole || name.find(".nmk_part_") != name.npos) << name;
        }
        copy();
        EXPECT_EQ(temporary_files_in(to), 0);
        EXPECT_EQ(tree(to + "/from"), tree(scratch.path() + "/from"));
        fs::remove_all(to);
    });
    EXPECT_GE(points, 20);
}

TEST(nmkFileDir_killed_copy, to_a_local_file_leaves_no_file_under_that_name) {
    const ScratchDirectory scratch;
    put(scratch.path() + "/remote/f.tri", long_contents());
    const std::string local = scratch.path() + "/local";
    fs::create_directory(local);
    const auto copy = [&] {
        ::setenv("TMPDIR", local.c_str(), 1);
        const RemoteDirectory remote(scratch.path() + "/remote");
        nmkFileDir file = named(scratch.path() + "/remote/f.tri");
        file.make_local_file(nullptr);
    };
    killed_at_every_call(copy, [&] {
        for (const auto& entry : fs::directory_iterator(local)) {
            EXPECT_TRUE(is_temporary(entry)) << entry.path();
        }
    });
    EXPECT_EQ(in_a_child([&] {
                  copy();
                  return 0;
              }),
              0);
    EXPECT_EQ(temporary_files_in(local), 0);
}

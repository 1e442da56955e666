// Copying one file: results, progress, and what is left after a failure.
#include <fcntl.h>
#include <winapi/copy_file.h>
#include <winapi/file_attributes.h>

#include <cerrno>
#include <functional>
#include <stdexcept>
#include <thread>
#include <vector>

#include "platform/winapi_fixtures.h"

namespace {

constexpr std::size_t megabyte = 1 << 20;

int copy(const std::string& source, const std::string& target, DWORD flags = 0) {
    SetLastError(untouched);
    if (CopyFileExA(source.c_str(), target.c_str(), nullptr, nullptr, nullptr, flags)) {
        EXPECT_EQ(GetLastError(), untouched);
        return 0;
    }
    return static_cast<int>(GetLastError());
}

std::string pattern(std::size_t size) {
    std::string bytes(size, '\0');
    std::uint32_t state = 1;
    for (char& byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}

struct Call {
    std::int64_t total, transferred;
    DWORD reason;
    bool operator==(const Call&) const = default;
};

// Records its calls, and returns what the test chose for each.
struct Progress {
    std::vector<Call> calls;
    std::function<DWORD(const Call&)> answer = [](const Call&) { return PROGRESS_CONTINUE; };

    static DWORD routine(LARGE_INTEGER total, LARGE_INTEGER transferred, LARGE_INTEGER stream_size,
                         LARGE_INTEGER stream_transferred, DWORD stream, DWORD reason, HANDLE,
                         HANDLE, LPVOID data) {
        auto& self = *static_cast<Progress*>(data);
        EXPECT_EQ(stream, 1u);
        EXPECT_EQ(stream_size.QuadPart, total.QuadPart);
        EXPECT_EQ(stream_transferred.QuadPart, transferred.QuadPart);
        self.calls.push_back({total.QuadPart, transferred.QuadPart, reason});
        return self.answer(self.calls.back());
    }
};

int watched_copy(const std::string& source, const std::string& target, Progress& progress,
                 LPBOOL cancel = nullptr) {
    const BOOL copied =
        CopyFileExA(source.c_str(), target.c_str(), &Progress::routine, &progress, cancel, 0);
    return copied ? 0 : static_cast<int>(GetLastError());
}

}  // namespace

TEST(CopyFileExA, copies_files_of_every_size_about_its_parts) {
    const OpenScratchDirectory scratch;
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{1}, std::size_t{65535}, std::size_t{65536},
          std::size_t{65537}, megabyte, megabyte + 1, 3 * megabyte}) {
        const std::string source = scratch.file("source", pattern(size));
        EXPECT_EQ(copy(source, scratch.in("target")), 0);
        EXPECT_EQ(contents_of(scratch.in("target")), pattern(size)) << size;
        Progress progress;
        EXPECT_EQ(watched_copy(source, scratch.in("watched"), progress), 0);
        EXPECT_EQ(contents_of(scratch.in("watched")), pattern(size)) << size;
    }
    EXPECT_EQ(scratch.file_count(), 3u);
}

TEST(CopyFileExA, replaces_an_existing_file_and_leaves_nothing_beside) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", "new");
    const std::string target = scratch.file("target", "old and longer");
    EXPECT_EQ(copy(source, target), 0);
    EXPECT_EQ(contents_of(target), "new");
    EXPECT_EQ(scratch.file_count(), 2u);
}

TEST(CopyFileExA, reports_what_is_missing_or_of_the_wrong_kind) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", "x");
    const std::string directory = scratch.directory("directory");
    EXPECT_EQ(copy(scratch.in("missing"), scratch.in("target")), 2);
    EXPECT_EQ(copy(scratch.in("missing/file"), scratch.in("target")), 3);
    EXPECT_EQ(copy(source, scratch.in("missing/target")), 3);
    EXPECT_EQ(copy(source, source + "/target"), 3);
    EXPECT_EQ(copy(directory, scratch.in("target")), 5);
    EXPECT_EQ(copy(source, directory), 5);
    EXPECT_EQ(copy(source, scratch.in("target/")), 5);
    EXPECT_EQ(copy("", scratch.in("target")), 3);
    EXPECT_EQ(copy(source, ""), 3);
    EXPECT_EQ(copy(source, scratch.in(std::string(10000, 'x'))), 206);
    EXPECT_EQ(copy(scratch.in(std::string(10000, 'x')), scratch.in("target")), 206);
    EXPECT_EQ(scratch.file_count(), 2u);
}

TEST(CopyFileExA, a_pipe_or_device_is_refused_and_does_not_hold_it_up) {
    const OpenScratchDirectory scratch;
    ASSERT_EQ(::mkfifo(scratch.in("pipe").c_str(), 0666), 0);
    const std::string source = scratch.file("source", "x");
    EXPECT_EQ(copy(scratch.in("pipe"), scratch.in("target")), 5);
    EXPECT_EQ(copy(source, scratch.in("pipe")), 5);
    EXPECT_EQ(copy("/dev/zero", scratch.in("target")), 5);
    EXPECT_EQ(copy(source, "/dev/null"), 5);
    EXPECT_EQ(scratch.file_count(), 2u);
}

TEST(CopyFileExA, onto_itself_by_any_name_fails_and_leaves_it_whole) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", "precious");
    ASSERT_EQ(::link(source.c_str(), scratch.in("hard").c_str()), 0);
    scratch.symlink("soft", "source");
    const std::string roundabout = scratch.path() + "/./source";
    for (const std::string& target : {source, scratch.in("hard"), scratch.in("soft"), roundabout}) {
        EXPECT_EQ(copy(source, target), 32) << target;
        EXPECT_EQ(copy(target, source), 32) << target;
        EXPECT_EQ(contents_of(source), "precious");
    }
    EXPECT_EQ(scratch.file_count(), 3u);
}

TEST(CopyFileExA, keeps_an_existing_target_when_asked_to) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", "new");
    const std::string target = scratch.file("target", "old");
    EXPECT_EQ(copy(source, target, COPY_FILE_FAIL_IF_EXISTS), 80);
    EXPECT_EQ(contents_of(target), "old");
    EXPECT_EQ(copy(source, scratch.symlink("dead", "nothing"), COPY_FILE_FAIL_IF_EXISTS), 80);
    EXPECT_EQ(copy(source, scratch.in("fresh"), COPY_FILE_FAIL_IF_EXISTS), 0);
}

TEST(CopyFileExA, a_read_only_target_is_refused_to_root_too) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", "new");
    const std::string target = scratch.file("target", "old");
    ASSERT_EQ(::chmod(target.c_str(), 0444), 0);
    EXPECT_EQ(copy(source, target), 5);
    EXPECT_EQ(contents_of(target), "old");
}

TEST(CopyFileExA, a_target_of_another_user_is_refused_although_the_directory_is_open) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", "new");
    const std::string target = scratch.file("target", "old");
    ASSERT_EQ(::chmod(target.c_str(), 0644), 0);
    if (::geteuid() != 0) {
        GTEST_SKIP() << "the test's own user owns the file";
    }
    EXPECT_EQ(without_rights([&] { return copy(source, target); }), 5);
    EXPECT_EQ(contents_of(target), "old");
}

TEST(CopyFileExA, a_source_or_directory_without_permissions_is_refused) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", "x");
    const std::string closed = scratch.directory("closed");
    ASSERT_EQ(::chmod(source.c_str(), 0200), 0);
    EXPECT_EQ(without_rights([&] { return copy(source, scratch.in("target")); }), 5);
    ASSERT_EQ(::chmod(source.c_str(), 0644), 0);
    ASSERT_EQ(::chmod(closed.c_str(), 0555), 0);
    EXPECT_EQ(without_rights([&] { return copy(source, closed + "/target"); }), 5);
    EXPECT_FALSE(is_there(scratch.in("target")));
}

TEST(CopyFileExA, copies_the_mode_and_the_time_of_the_last_write) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", "x");
    const timespec times[2] = {{1000, 0}, {1234567890, 123456789}};
    ASSERT_EQ(::utimensat(AT_FDCWD, source.c_str(), times, 0), 0);
    ASSERT_EQ(::chmod(source.c_str(), 0444), 0);
    ASSERT_EQ(copy(source, scratch.in("target")), 0);
    EXPECT_EQ(GetFileAttributesA(scratch.in("target").c_str()), 0x21u);
    struct stat record;
    ASSERT_EQ(::stat(scratch.in("target").c_str(), &record), 0);
    EXPECT_EQ(record.st_mtim.tv_sec, 1234567890);
    EXPECT_EQ(record.st_mtim.tv_nsec, 123456789);
    const std::string existing = scratch.file("existing", "y");
    ASSERT_EQ(copy(source, existing), 0);
    EXPECT_EQ(GetFileAttributesA(existing.c_str()), 0x21u);
}

TEST(CopyFileExA, does_not_copy_the_set_user_id_bits) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", "x");
    ASSERT_EQ(::chmod(source.c_str(), 06755), 0);
    ASSERT_EQ(copy(source, scratch.in("target")), 0);
    struct stat record;
    ASSERT_EQ(::stat(scratch.in("target").c_str(), &record), 0);
    EXPECT_EQ(record.st_mode & 07000, 0u);
}

TEST(CopyFileExA, symlinks_mean_the_files_they_lead_to) {
    const OpenScratchDirectory scratch;
    scratch.file("source", "new");
    scratch.directory("directory");
    const std::string old = scratch.file("directory/target", "old");
    const std::string from = scratch.symlink("from", "source");
    const std::string to = scratch.symlink("to", "directory/target");
    EXPECT_EQ(copy(from, to), 0);
    EXPECT_EQ(contents_of(old), "new");
    EXPECT_EQ(GetFileAttributesA(to.c_str()), 0x400u);
    EXPECT_EQ(copy(from, scratch.symlink("dead", "nothing")), 2);
    EXPECT_FALSE(is_there(scratch.in("nothing")));
    EXPECT_EQ(copy(scratch.symlink("ring", "ring"), scratch.in("target")), 3);
    EXPECT_EQ(copy(scratch.symlink("to_directory", "directory"), scratch.in("target")), 5);
    EXPECT_FALSE(is_there(scratch.in("target")));
}

TEST(CopyFileExA, the_first_call_switches_to_the_stream_and_the_last_has_all_bytes) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", pattern(2 * megabyte + 5));
    Progress progress;
    ASSERT_EQ(watched_copy(source, scratch.in("target"), progress), 0);
    const auto total = static_cast<std::int64_t>(2 * megabyte + 5);
    ASSERT_GE(progress.calls.size(), 3u);
    EXPECT_EQ(progress.calls.front(), (Call{total, 0, CALLBACK_STREAM_SWITCH}));
    EXPECT_EQ(progress.calls.back(), (Call{total, total, CALLBACK_CHUNK_FINISHED}));
    for (std::size_t i = 1; i < progress.calls.size(); ++i) {
        EXPECT_GT(progress.calls[i].transferred, progress.calls[i - 1].transferred);
        EXPECT_EQ(progress.calls[i].reason, CALLBACK_CHUNK_FINISHED);
    }
    progress.calls.clear();
    ASSERT_EQ(watched_copy(scratch.file("empty", ""), scratch.in("target"), progress), 0);
    EXPECT_EQ(progress.calls, (std::vector<Call>{{0, 0, CALLBACK_STREAM_SWITCH}}));
}

TEST(CopyFileExA, cancelling_removes_the_part_at_whichever_call) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", pattern(2 * megabyte + 5));
    const std::string existing = scratch.file("existing", "old");
    Progress counted;
    ASSERT_EQ(watched_copy(source, scratch.in("whole"), counted), 0);
    for (std::size_t at = 1; at <= counted.calls.size(); ++at) {
        for (const std::string& target : {scratch.in("target"), existing}) {
            Progress progress;
            progress.answer = [&](const Call&) {
                return progress.calls.size() == at ? PROGRESS_CANCEL : PROGRESS_CONTINUE;
            };
            EXPECT_EQ(watched_copy(source, target, progress), 1235);
            EXPECT_EQ(progress.calls.size(), at);
        }
        EXPECT_FALSE(is_there(scratch.in("target")));
        EXPECT_EQ(contents_of(existing), "old");
        EXPECT_EQ(scratch.file_count(), 3u);
    }
}

TEST(CopyFileExA, stopping_leaves_the_target_as_it_was_like_cancelling) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", pattern(2 * megabyte + 5));
    const std::string existing = scratch.file("existing", "old");
    for (const std::string& target : {scratch.in("target"), existing}) {
        Progress progress;
        progress.answer = [&](const Call& call) {
            return call.transferred > 0 ? PROGRESS_STOP : PROGRESS_CONTINUE;
        };
        EXPECT_EQ(watched_copy(source, target, progress), 1235);
    }
    EXPECT_FALSE(is_there(scratch.in("target")));
    EXPECT_EQ(contents_of(existing), "old");
    EXPECT_EQ(scratch.file_count(), 2u);
}

TEST(CopyFileExA, a_quiet_routine_is_not_called_again_and_the_copy_continues) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", pattern(3 * megabyte));
    Progress progress;
    progress.answer = [](const Call&) { return PROGRESS_QUIET; };
    EXPECT_EQ(watched_copy(source, scratch.in("target"), progress), 0);
    EXPECT_EQ(progress.calls.size(), 1u);
    EXPECT_EQ(contents_of(scratch.in("target")), pattern(3 * megabyte));
}

TEST(CopyFileExA, the_callers_flag_cancels) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", pattern(3 * megabyte));
    BOOL cancel = TRUE;
    EXPECT_FALSE(
        CopyFileExA(source.c_str(), scratch.in("target").c_str(), nullptr, nullptr, &cancel, 0));
    EXPECT_EQ(GetLastError(), 1235u);
    cancel = FALSE;
    Progress progress;
    progress.answer = [&](const Call& call) {
        cancel = call.transferred > 0 ? TRUE : FALSE;
        return PROGRESS_CONTINUE;
    };
    EXPECT_EQ(watched_copy(source, scratch.in("target"), progress, &cancel), 1235);
    EXPECT_EQ(progress.calls.size(), 2u);
    EXPECT_EQ(scratch.file_count(), 1u);
}

TEST(CopyFileExA, a_routine_that_throws_leaves_no_part) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", pattern(megabyte));
    const std::string existing = scratch.file("existing", "old");
    Progress progress;
    progress.answer = [](const Call& call) -> DWORD {
        if (call.transferred > 0) {
            throw std::runtime_error("enough");
        }
        return PROGRESS_CONTINUE;
    };
    EXPECT_THROW(watched_copy(source, scratch.in("target"), progress), std::runtime_error);
    EXPECT_THROW(watched_copy(source, existing, progress), std::runtime_error);
    EXPECT_EQ(scratch.file_count(), 2u);
    EXPECT_EQ(contents_of(existing), "old");
}

TEST(CopyFileExA, counts_in_64_bits) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", "");
    constexpr std::int64_t size = 0x200000003;
    ASSERT_EQ(::truncate(source.c_str(), size), 0);
    Progress progress;
    progress.answer = [](const Call& call) {
        return call.transferred > 0 ? PROGRESS_CANCEL : PROGRESS_CONTINUE;
    };
    EXPECT_EQ(watched_copy(source, scratch.in("target"), progress), 1235);
    EXPECT_EQ(progress.calls.front().total, size);
}

TEST(CopyFileExA, a_disk_that_fills_leaves_the_target_as_it_was) {
    const OpenScratchDirectory scratch;
    const std::string existing = scratch.file("existing", "old");
    for (const std::size_t size : {std::size_t{40000}, 3 * megabyte}) {
        const std::string source = scratch.file("source", pattern(size));
        for (const std::string& target : {scratch.in("target"), existing}) {
            EXPECT_EQ(with_little_room(size / 2, [&] { return copy(source, target); }), 112);
        }
        EXPECT_EQ(scratch.file_count(), 2u);
        EXPECT_EQ(contents_of(existing), "old");
    }
}

TEST(CopyFileExA, a_failure_at_any_part_leaves_the_target_as_it_was) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", pattern(3 * megabyte));
    const std::string existing = scratch.file("existing", "old");
    int part = 0;
    int failing_part = 0;
    const Fault fault([&](std::string_view call, std::string_view) {
        return call == "copy part" && part++ == failing_part ? EIO : 0;
    });
    for (failing_part = 0; failing_part < 3; ++failing_part) {
        for (const std::string& target : {scratch.in("target"), existing}) {
            part = 0;
            Progress progress;
            EXPECT_EQ(watched_copy(source, target, progress), 31);
            EXPECT_EQ(scratch.file_count(), 2u);
            EXPECT_EQ(contents_of(existing), "old");
        }
    }
}

TEST(CopyFileExA, a_source_that_becomes_shorter_is_a_failure) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", pattern(3 * megabyte));
    Progress progress;
    progress.answer = [&](const Call& call) {
        if (call.transferred > 0) {
            EXPECT_EQ(::truncate(source.c_str(), call.transferred), 0);
        }
        return PROGRESS_CONTINUE;
    };
    EXPECT_EQ(watched_copy(source, scratch.in("target"), progress), 38);
    EXPECT_EQ(scratch.file_count(), 1u);
}

TEST(CopyFileExA, a_source_that_grows_is_copied_as_long_as_it_was) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", pattern(2 * megabyte));
    Progress progress;
    progress.answer = [&](const Call&) {
        std::ofstream(source, std::ios::binary | std::ios::app) << "more";
        return PROGRESS_CONTINUE;
    };
    EXPECT_EQ(watched_copy(source, scratch.in("target"), progress), 0);
    EXPECT_EQ(contents_of(scratch.in("target")), pattern(2 * megabyte));
}

TEST(CopyFileExA, a_source_deleted_meanwhile_is_copied_whole_and_one_deleted_before_is_missing) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", pattern(2 * megabyte));
    Progress progress;
    progress.answer = [&](const Call&) {
        ::unlink(source.c_str());
        return PROGRESS_CONTINUE;
    };
    EXPECT_EQ(watched_copy(source, scratch.in("target"), progress), 0);
    EXPECT_EQ(contents_of(scratch.in("target")), pattern(2 * megabyte));
    scratch.file("source", "x");
    const Fault fault([&](std::string_view call, std::string_view name) {
        if (call == "CopyFileExA") {
            ::unlink(std::string(name).c_str());
        }
        return 0;
    });
    EXPECT_EQ(copy(source, scratch.in("other")), 2);
    EXPECT_FALSE(is_there(scratch.in("other")));
}

TEST(CopyFileExA, files_of_the_kernel_come_with_what_a_read_gives) {
    const OpenScratchDirectory scratch;
    ASSERT_EQ(copy("/proc/self/status", scratch.in("target")), 0);
    EXPECT_EQ(contents_of(scratch.in("target")).substr(0, 5), "Name:");
}

TEST(CopyFileExA, reads_through_memory_where_the_kernel_cannot_copy) {
    const OpenScratchDirectory scratch;
    const std::string target_disk = "/dev/shm";
    if (::access(target_disk.c_str(), W_OK) != 0) {
        GTEST_SKIP() << "no second disk";
    }
    const std::string source = scratch.file("source", pattern(2 * megabyte + 7));
    const std::string target = target_disk + "/nmk_winapi_test_" + std::to_string(::getpid());
    EXPECT_EQ(copy(source, target), 0);
    EXPECT_EQ(contents_of(target), pattern(2 * megabyte + 7));
    ::unlink(target.c_str());
}

TEST(CopyFileExA, copies_through_memory_on_a_kernel_that_cannot) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", pattern(2 * megabyte + 7));
    for (const int reason : {EXDEV, ENOSYS, EINVAL, EOPNOTSUPP}) {
        const Fault fault([=](std::string_view call, std::string_view) {
            return call == "copy_file_range" ? reason : 0;
        });
        EXPECT_EQ(copy(source, scratch.in("target")), 0);
        EXPECT_EQ(contents_of(scratch.in("target")), pattern(2 * megabyte + 7));
    }
    const Fault fault([](std::string_view call, std::string_view) {
        return call == "copy_file_range" ? EIO : 0;
    });
    EXPECT_EQ(copy(source, scratch.in("other")), 31);
    EXPECT_FALSE(is_there(scratch.in("other")));
}

TEST(CopyFileExA, continues_after_a_signal) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("source", pattern(2 * megabyte + 7));
    int signals = 0;
    const Fault fault([&](std::string_view call, std::string_view) {
        return call == "copy_file_range" && ++signals <= 3 ? EINTR : 0;
    });
    EXPECT_EQ(copy(source, scratch.in("target")), 0);
    EXPECT_GE(signals, 3);
    EXPECT_TRUE(contents_of(scratch.in("target")) == pattern(2 * megabyte + 7));
}

TEST(CopyFileExA, names_that_are_not_valid_text_are_copied) {
    const OpenScratchDirectory scratch;
    const std::string source = scratch.file("\xFF\xFE source", "x");
    EXPECT_EQ(copy(source, scratch.in("\x80")), 0);
    EXPECT_EQ(contents_of(scratch.in("\x80")), "x");
}

TEST(CopyFileExA, many_threads_writing_one_target_leave_one_whole_file) {
    const OpenScratchDirectory scratch;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        const std::string source = scratch.file("source" + std::to_string(i),
                                                std::string(100000, static_cast<char>('a' + i)));
        threads.emplace_back([source, target = scratch.in("target")] {
            for (int j = 0; j < 25; ++j) {
                const int reason = copy(source, target);
                EXPECT_TRUE(reason == 0 || reason == 32) << reason;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    const std::string bytes = contents_of(scratch.in("target"));
    EXPECT_EQ(bytes, std::string(100000, bytes.at(0)));
    EXPECT_EQ(scratch.file_count(), 5u);
}

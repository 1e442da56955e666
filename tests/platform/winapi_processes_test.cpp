// Running programs, waiting for them, and finding who holds a file.
#include <errno.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <winapi/file_holders.h>
#include <winapi/processes.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>
#include <vector>

#include "platform/winapi_fixtures.h"

namespace {

SHELLEXECUTEINFOA execution_of(const char* program, const char* parameters) {
    SHELLEXECUTEINFOA execution = {};
    execution.cbSize = sizeof execution;
    execution.fMask = SEE_MASK_NOCLOSEPROCESS;
    execution.lpVerb = "runas";
    execution.lpFile = program;
    execution.lpParameters = parameters;
    execution.nShow = SW_HIDE;
    return execution;
}

DWORD exit_code_of(const char* program, const char* parameters) {
    SHELLEXECUTEINFOA execution = execution_of(program, parameters);
    EXPECT_TRUE(ShellExecuteExA(&execution)) << GetLastError();
    EXPECT_EQ(WaitForSingleObject(execution.hProcess, 10000), WAIT_OBJECT_0);
    DWORD exit_code = 999;
    EXPECT_TRUE(GetExitCodeProcess(execution.hProcess, &exit_code));
    EXPECT_TRUE(CloseHandle(execution.hProcess));
    return exit_code;
}

// A child process that runs `hold`, reports, and lives until it is let go.
class HoldingChild {
  public:
    explicit HoldingChild(const std::function<void()>& hold) {
        EXPECT_EQ(::pipe(m_ready), 0);
        EXPECT_EQ(::pipe(m_let_go), 0);
        m_process = ::fork();
        char byte = 0;
        if (m_process == 0) {
            ::close(m_let_go[1]);
            hold();
            const bool told = ::write(m_ready[1], &byte, 1) == 1;
            ::_exit(told && ::read(m_let_go[0], &byte, 1) >= 0 ? 0 : 1);
        }
        EXPECT_EQ(::read(m_ready[0], &byte, 1), 1);
    }
    HoldingChild(const HoldingChild&) = delete;
    HoldingChild& operator=(const HoldingChild&) = delete;
    ~HoldingChild() {
        for (const int descriptor : {m_ready[0], m_ready[1], m_let_go[0], m_let_go[1]}) {
            ::close(descriptor);
        }
        ::waitpid(m_process, nullptr, 0);
    }
    int process() const { return m_process; }

  private:
    int m_ready[2] = {}, m_let_go[2] = {};
    pid_t m_process = 0;
};

std::vector<winapi_file_holder> holders_in(int process, const std::string& name) {
    std::vector<winapi_file_holder> holders = winapi_file_holders(name.c_str());
    std::erase_if(holders, [process](const auto& holder) { return holder.process != process; });
    return holders;
}

}  // namespace

TEST(GetCurrentProcessId, is_that_of_this_process) {
    EXPECT_EQ(GetCurrentProcessId(), static_cast<DWORD>(::getpid()));
}

TEST(ShellExecuteExA, runs_a_program_of_the_search_path_and_hands_out_its_exit_code) {
    EXPECT_EQ(exit_code_of("true", nullptr), 0u);
    EXPECT_EQ(exit_code_of("false", ""), 1u);
    EXPECT_EQ(exit_code_of("sh", "-c \"exit 7\""), 7u);
    EXPECT_EQ(exit_code_of("sh", "-c \"kill -9 $$\""), 128u + 9u);
}

TEST(ShellExecuteExA, splits_parameters_at_blanks_outside_quotes) {
    EXPECT_EQ(exit_code_of("test", "\"a  b\" = \"a  b\""), 0u);
    EXPECT_EQ(exit_code_of("test", "  a\t=   a  "), 0u);
    EXPECT_EQ(exit_code_of("test", "-z \"\""), 0u);
    EXPECT_EQ(exit_code_of("test", "a\" \"b = \"a b\""), 0u);
}

TEST(ShellExecuteExA, runs_in_the_folder_asked_for_and_shows_nothing) {
    const OpenScratchFolder scratch;
    SHELLEXECUTEINFOA execution =
        execution_of("sh", "-c \"readlink /proc/self/fd/1 > out; echo seen; echo seen >&2\"");
    const std::string folder = scratch.path();
    execution.lpDirectory = folder.c_str();
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    EXPECT_TRUE(ShellExecuteExA(&execution));
    EXPECT_EQ(WaitForSingleObject(execution.hProcess, INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    EXPECT_TRUE(CloseHandle(execution.hProcess));
    EXPECT_TRUE(is_there(scratch.in("out")));
}

TEST(ShellExecuteExA, tells_why_a_program_does_not_run) {
    const OpenScratchFolder scratch;
    // A folder on the search path that may not be searched would hide that nothing is there.
    const std::string search_path = std::getenv("PATH") == nullptr ? "" : std::getenv("PATH");
    ::setenv("PATH", "/usr/bin:/bin", 1);
    SHELLEXECUTEINFOA execution = execution_of("no_such_program_anywhere", nullptr);
    EXPECT_FALSE(ShellExecuteExA(&execution));
    EXPECT_EQ(GetLastError(), 2u);
    EXPECT_EQ(execution.hInstApp, reinterpret_cast<HANDLE>(2));
    EXPECT_EQ(execution.hProcess, nullptr);
    const std::string file = scratch.file("file", "x");
    execution.lpFile = file.c_str();
    EXPECT_FALSE(ShellExecuteExA(&execution));
    EXPECT_EQ(GetLastError(), 5u);
    execution.lpFile = "";
    EXPECT_FALSE(ShellExecuteExA(&execution));
    EXPECT_EQ(GetLastError(), 87u);
    execution = execution_of("true", nullptr);
    execution.cbSize = 4;
    EXPECT_FALSE(ShellExecuteExA(&execution));
    EXPECT_EQ(GetLastError(), 87u);
    EXPECT_FALSE(ShellExecuteExA(nullptr));
    ::setenv("PATH", search_path.c_str(), 1);
}

TEST(WaitForSingleObject, gives_up_after_its_time) {
    SHELLEXECUTEINFOA execution = execution_of("sleep", "1");
    ASSERT_TRUE(ShellExecuteExA(&execution));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(WaitForSingleObject(execution.hProcess, 0), WAIT_TIMEOUT);
    EXPECT_EQ(WaitForSingleObject(execution.hProcess, 50), WAIT_TIMEOUT);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(50));
    DWORD exit_code = 0;
    EXPECT_TRUE(GetExitCodeProcess(execution.hProcess, &exit_code));
    EXPECT_EQ(exit_code, STILL_ACTIVE);
    EXPECT_EQ(WaitForSingleObject(execution.hProcess, 10000), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(execution.hProcess, 0), WAIT_OBJECT_0);
    EXPECT_TRUE(CloseHandle(execution.hProcess));
}

TEST(WaitForSingleObject, looks_again_and_again_on_a_kernel_that_does_not_tell) {
    const FaultHook hook(
        [](std::string_view call, std::string_view) { return call == "pidfd_open" ? ENOSYS : 0; });
    SHELLEXECUTEINFOA execution = execution_of("sleep", "0.1");
    ASSERT_TRUE(ShellExecuteExA(&execution));
    EXPECT_EQ(WaitForSingleObject(execution.hProcess, 20), WAIT_TIMEOUT);
    EXPECT_EQ(WaitForSingleObject(execution.hProcess, INFINITE), WAIT_OBJECT_0);
    EXPECT_TRUE(CloseHandle(execution.hProcess));
}

TEST(WaitForSingleObject, fails_for_what_is_no_handle) {
    SetLastError(untouched);
    EXPECT_EQ(WaitForSingleObject(nullptr, 0), WAIT_FAILED);
    EXPECT_EQ(GetLastError(), 6u);
    EXPECT_FALSE(CloseHandle(reinterpret_cast<HANDLE>(3)));
    EXPECT_EQ(GetLastError(), 6u);
    SHELLEXECUTEINFOA execution = execution_of("true", nullptr);
    ASSERT_TRUE(ShellExecuteExA(&execution));
    EXPECT_TRUE(CloseHandle(execution.hProcess));
    EXPECT_FALSE(CloseHandle(execution.hProcess));
    EXPECT_EQ(WaitForSingleObject(execution.hProcess, 0), WAIT_FAILED);
    DWORD exit_code = 0;
    EXPECT_FALSE(GetExitCodeProcess(execution.hProcess, &exit_code));
}

TEST(winapi_file_holders, names_a_child_that_has_the_file_open) {
    const OpenScratchFolder scratch;
    const std::string file = scratch.file("held \xFF file", "x");
    EXPECT_TRUE(winapi_file_holders(file.c_str()).empty());
    {
        int descriptor = -1;
        const HoldingChild child([&] { descriptor = ::open(file.c_str(), O_RDONLY); });
        const auto holders = holders_in(child.process(), file);
        ASSERT_EQ(holders.size(), 1u);
        EXPECT_TRUE(holders[0].held_as.starts_with("fd ")) << holders[0].held_as;
        EXPECT_EQ(holders[0].path, file);
        EXPECT_EQ(holders[0].command, std::string(::program_invocation_short_name).substr(0, 15));
        scratch.link("link", file);
        EXPECT_EQ(holders_in(child.process(), scratch.in("link")).size(), 1u);
    }
    EXPECT_TRUE(winapi_file_holders(file.c_str()).empty());
}

TEST(winapi_file_holders, sees_maps_and_the_current_folder) {
    const OpenScratchFolder scratch;
    const std::string file = scratch.file("mapped", std::string(5000, 'x'));
    const std::string folder = scratch.folder("folder");
    const HoldingChild child([&] {
        const int descriptor = ::open(file.c_str(), O_RDONLY);
        if (::mmap(nullptr, 5000, PROT_READ, MAP_PRIVATE, descriptor, 0) == MAP_FAILED ||
            ::close(descriptor) != 0 || ::chdir(folder.c_str()) != 0) {
            ::_exit(1);
        }
    });
    const auto mapped = holders_in(child.process(), file);
    ASSERT_EQ(mapped.size(), 1u);
    EXPECT_EQ(mapped[0].held_as, "map");
    EXPECT_EQ(mapped[0].path, file);
    const auto current = holders_in(child.process(), folder);
    ASSERT_EQ(current.size(), 1u);
    EXPECT_EQ(current[0].held_as, "cwd");
}

TEST(winapi_file_holders, nobody_holds_what_is_missing) {
    EXPECT_TRUE(winapi_file_holders("/no/such/file").empty());
    EXPECT_TRUE(winapi_file_holders("").empty());
    EXPECT_TRUE(winapi_file_holders(nullptr).empty());
    EXPECT_TRUE(winapi_file_holders(std::string(10000, 'x').c_str()).empty());
}

TEST(winapi_file_holders, processes_that_come_and_go_do_not_disturb_it) {
    const OpenScratchFolder scratch;
    const std::string file = scratch.file("file", "x");
    const HoldingChild child([&] {
        if (::open(file.c_str(), O_RDONLY) < 0) {
            ::_exit(1);
        }
    });
    for (int i = 0; i < 20; ++i) {
        SHELLEXECUTEINFOA execution = execution_of("true", nullptr);
        ASSERT_TRUE(ShellExecuteExA(&execution));
        EXPECT_EQ(holders_in(child.process(), file).size(), 1u);
        EXPECT_TRUE(CloseHandle(execution.hProcess));
    }
}

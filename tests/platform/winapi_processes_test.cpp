// Running programs and waiting for them.
#include <errno.h>
#include <winapi/processes.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>

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

TEST(ShellExecuteExA, runs_in_the_directory_asked_for_and_shows_nothing) {
    const OpenScratchDirectory scratch;
    SHELLEXECUTEINFOA execution =
        execution_of("sh", "-c \"readlink /proc/self/fd/1 > out; echo seen; echo seen >&2\"");
    const std::string directory = scratch.path();
    execution.lpDirectory = directory.c_str();
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
    const OpenScratchDirectory scratch;
    // A directory on the search path that may not be searched would hide that nothing is there.
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

TEST(WaitForSingleObject, polls_on_a_kernel_without_process_descriptors) {
    const Fault fault(
        [](std::string_view call, std::string_view) { return call == "pidfd_open" ? ENOSYS : 0; });
    SHELLEXECUTEINFOA execution = execution_of("sleep", "0.1");
    ASSERT_TRUE(ShellExecuteExA(&execution));
    EXPECT_EQ(WaitForSingleObject(execution.hProcess, 20), WAIT_TIMEOUT);
    EXPECT_EQ(WaitForSingleObject(execution.hProcess, INFINITE), WAIT_OBJECT_0);
    EXPECT_TRUE(CloseHandle(execution.hProcess));
}

TEST(WaitForSingleObject, fails_for_other_handles) {
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

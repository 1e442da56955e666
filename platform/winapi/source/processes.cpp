#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <winapi/last_error.h>
#include <winapi/processes.h>

#include <cerrno>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "child_process.h"
#include "failure.h"

namespace {

// Above this hInstApp means success, as it always did.
constexpr std::intptr_t instance_of_success = 42;

bool is_blank(char c) { return c == ' ' || c == '\t'; }

// Splits at blanks; double quotes hold blanks together and are dropped.
std::vector<std::string> arguments_of(const char* program, const char* parameters) {
    std::vector<std::string> arguments = {program};
    std::string argument;
    bool started = false, quoted = false;
    for (const char c : std::string_view(parameters == nullptr ? "" : parameters)) {
        if (is_blank(c) && !quoted) {
            if (started) {
                arguments.push_back(argument);
            }
            argument.clear();
            started = false;
            continue;
        }
        started = true;
        if (c == '"') {
            quoted = !quoted;
        } else {
            argument += c;
        }
    }
    if (started) {
        arguments.push_back(argument);
    }
    return arguments;
}

class SpawnActions {
  public:
    SpawnActions() { ::posix_spawn_file_actions_init(&m_actions); }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    ~SpawnActions() { ::posix_spawn_file_actions_destroy(&m_actions); }

    void run_in(const char* directory) {
        ::posix_spawn_file_actions_addchdir_np(&m_actions, directory);
    }
    void hide() {
        ::posix_spawn_file_actions_addopen(&m_actions, 0, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_addopen(&m_actions, 1, "/dev/null", O_WRONLY, 0);
        ::posix_spawn_file_actions_adddup2(&m_actions, 1, 2);
    }
    const posix_spawn_file_actions_t* get() const { return &m_actions; }

  private:
    posix_spawn_file_actions_t m_actions;
};

// Starts it; 0 or errno.
int spawn(const SHELLEXECUTEINFOA& execution, pid_t& process) {
    std::vector<std::string> arguments = arguments_of(execution.lpFile, execution.lpParameters);
    std::vector<char*> pointers;
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    SpawnActions actions;
    if (!winapi::is_nothing(execution.lpDirectory)) {
        actions.run_in(execution.lpDirectory);
    }
    if (execution.nShow == SW_HIDE) {
        actions.hide();
    }
    return ::posix_spawnp(&process, execution.lpFile, actions.get(), nullptr, pointers.data(),
                          environ);
}

BOOL fail_to_execute(SHELLEXECUTEINFOA* execution, int error_number) {
    winapi::fail(error_number, execution->lpFile);
    execution->hInstApp = reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(GetLastError()));
    return FALSE;
}

}  // namespace

DWORD GetCurrentProcessId() { return static_cast<DWORD>(::getpid()); }

BOOL ShellExecuteExA(SHELLEXECUTEINFOA* execution) {
    if (execution == nullptr || execution->cbSize != sizeof *execution ||
        winapi::is_nothing(execution->lpFile)) {
        return winapi::fail_with(ERROR_INVALID_PARAMETER);
    }
    execution->hProcess = nullptr;
    if (const int fault = winapi::injected_fault("ShellExecuteExA", execution->lpFile); fault) {
        return fail_to_execute(execution, fault);
    }
    winapi::reap_forgotten_children();
    pid_t process = 0;
    if (const int error_number = spawn(*execution, process); error_number != 0) {
        return fail_to_execute(execution, error_number);
    }
    auto child = std::make_shared<winapi::ChildProcess>(process);
    if ((execution->fMask & SEE_MASK_NOCLOSEPROCESS) != 0) {
        execution->hProcess = winapi::open_handle(std::move(child));
    }
    execution->hInstApp = reinterpret_cast<HANDLE>(instance_of_success);
    return TRUE;
}

DWORD WaitForSingleObject(HANDLE object, DWORD milliseconds) {
    const auto waited_for = winapi::object_of(object);
    if (waited_for == nullptr) {
        winapi::fail_with(ERROR_INVALID_HANDLE);
        return WAIT_FAILED;
    }
    return waited_for->wait(milliseconds);
}

BOOL GetExitCodeProcess(HANDLE process, DWORD* exit_code) {
    const auto child = winapi::object_of_kind<winapi::ChildProcess>(process);
    if (child == nullptr) {
        return winapi::fail_with(ERROR_INVALID_HANDLE);
    }
    if (exit_code == nullptr) {
        return winapi::fail_with(ERROR_INVALID_PARAMETER);
    }
    *exit_code = child->exit_code();
    return TRUE;
}

BOOL CloseHandle(HANDLE object) {
    const auto closed = winapi::object_of(object);
    if (closed == nullptr || !closed->closes_by_close_handle() || !winapi::close_handle(object)) {
        return winapi::fail_with(ERROR_INVALID_HANDLE);
    }
    return TRUE;
}

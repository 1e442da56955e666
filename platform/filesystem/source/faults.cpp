#include <filesystem/faults.h>
#include <stdlib.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace nmk_filesystem {

namespace {

std::mutex guard;
std::atomic<bool> is_hooked = false;
std::shared_ptr<const FaultHook> hook_of_the_process;  // under guard
std::atomic<bool> has_remote_directory = false;
std::string remote_directory;  // symlinks resolved; under guard

std::string resolved(const char* name) {
    const std::unique_ptr<char, decltype(&::free)> whole(::realpath(name, nullptr), &::free);
    return whole ? whole.get() : "";
}

}  // namespace

void set_fault_hook(FaultHook hook) {
    const std::lock_guard lock(guard);
    is_hooked = static_cast<bool>(hook);
    hook_of_the_process = hook ? std::make_shared<const FaultHook>(std::move(hook)) : nullptr;
}

int injected_fault(const char* call, const char* name) {
    if (!is_hooked.load(std::memory_order_relaxed)) return 0;
    std::shared_ptr<const FaultHook> hook;
    {
        const std::lock_guard lock(guard);
        hook = hook_of_the_process;
    }
    return hook ? (*hook)(call, name == nullptr ? "" : name) : 0;
}

void set_remote_directory(const char* directory) {
    const std::lock_guard lock(guard);
    remote_directory = directory == nullptr || *directory == '\0' ? "" : resolved(directory);
    has_remote_directory = !remote_directory.empty();
}

bool is_in_remote_directory(const char* name) {
    if (!has_remote_directory.load(std::memory_order_relaxed)) return false;
    const std::string whole = resolved(name) + "/";
    const std::lock_guard lock(guard);
    return !remote_directory.empty() && whole.starts_with(remote_directory + "/");
}

}  // namespace nmk_filesystem

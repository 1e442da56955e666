#include <stdlib.h>
#include <winapi/faults.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "failure.h"
#include "remote_folder.h"

namespace {

std::mutex guard;
std::atomic<bool> hooked = false;
std::shared_ptr<const winapi_fault_hook> hook_of_the_process;  // under guard
std::atomic<bool> folder_is_named = false;
std::string remote_folder;  // resolved; under guard

std::string resolved(const char* name) {
    const std::unique_ptr<char, decltype(&::free)> whole(::realpath(name, nullptr), &::free);
    return whole ? whole.get() : "";
}

}  // namespace

void winapi_set_fault_hook(winapi_fault_hook hook) {
    const std::lock_guard lock(guard);
    hooked = static_cast<bool>(hook);
    hook_of_the_process =
        hook ? std::make_shared<const winapi_fault_hook>(std::move(hook)) : nullptr;
}

void winapi_set_remote_folder(const char* folder) {
    const std::lock_guard lock(guard);
    remote_folder = winapi::is_nothing(folder) ? "" : resolved(folder);
    folder_is_named = !remote_folder.empty();
}

namespace winapi {

int injected_fault(const char* call, const char* name) {
    if (!hooked.load(std::memory_order_relaxed)) {
        return 0;
    }
    std::shared_ptr<const winapi_fault_hook> hook;
    {
        const std::lock_guard lock(guard);
        hook = hook_of_the_process;
    }
    return hook ? (*hook)(call, name == nullptr ? "" : name) : 0;
}

bool lies_in_the_remote_folder(const char* name) {
    if (!folder_is_named.load(std::memory_order_relaxed)) {
        return false;
    }
    const std::string whole = resolved(name) + "/";
    const std::lock_guard lock(guard);
    return !remote_folder.empty() && whole.starts_with(remote_folder + "/");
}

}  // namespace winapi

#include "handle_table.h"

#include <winapi/last_error.h>
#include <winapi/processes.h>

#include <cstdint>
#include <mutex>
#include <unordered_map>
#include <utility>

#include "failure.h"

namespace {

struct HandleTable {
    std::mutex guard;
    std::unordered_map<std::uintptr_t, std::shared_ptr<winapi::HandleObject>> objects;
    std::uintptr_t last_number = 0;
};

// Never destroyed: a handle may be closed by the destructor of another static object.
HandleTable& table() {
    static auto* const the_table = new HandleTable;
    return *the_table;
}

}  // namespace

namespace winapi {

DWORD HandleObject::wait(DWORD) {
    fail_with(ERROR_INVALID_HANDLE);
    return WAIT_FAILED;
}

HANDLE open_handle(std::shared_ptr<HandleObject> object) {
    HandleTable& all = table();
    const std::lock_guard lock(all.guard);
    all.last_number += 4;
    all.objects.emplace(all.last_number, std::move(object));
    return reinterpret_cast<HANDLE>(all.last_number);
}

std::shared_ptr<HandleObject> object_of(HANDLE handle) {
    HandleTable& all = table();
    const std::lock_guard lock(all.guard);
    const auto found = all.objects.find(reinterpret_cast<std::uintptr_t>(handle));
    return found == all.objects.end() ? nullptr : found->second;
}

bool close_handle(HANDLE handle) {
    std::shared_ptr<HandleObject> closed;  // outlives the lock: its destructor may take long
    HandleTable& all = table();
    const std::lock_guard lock(all.guard);
    const auto found = all.objects.find(reinterpret_cast<std::uintptr_t>(handle));
    if (found == all.objects.end()) {
        return false;
    }
    closed = std::move(found->second);
    all.objects.erase(found);
    return true;
}

void handle_table_before_fork() { table().guard.lock(); }

void handle_table_after_fork() { table().guard.unlock(); }

}  // namespace winapi

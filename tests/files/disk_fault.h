// disk_fault.h: what a disk does not do on demand, for the length of a test.
#pragma once

#include <winapi/faults.h>

#include <string>
#include <string_view>

/// Fails one call on one name with an errno; root meets no folder without rights otherwise.
class Fault {
  public:
    Fault(std::string call, std::string name, int error_number) {
        winapi_set_fault_hook([=](std::string_view asked, std::string_view about) {
            return asked == call && about == name ? error_number : 0;
        });
    }
    explicit Fault(winapi_fault_hook hook) { winapi_set_fault_hook(std::move(hook)); }
    Fault(const Fault&) = delete;
    Fault& operator=(const Fault&) = delete;
    ~Fault() { winapi_set_fault_hook({}); }
};

/// Makes a folder count as standing on a network drive.
class RemoteFolder {
  public:
    explicit RemoteFolder(const std::string& folder) { winapi_set_remote_folder(folder.c_str()); }
    RemoteFolder(const RemoteFolder&) = delete;
    RemoteFolder& operator=(const RemoteFolder&) = delete;
    ~RemoteFolder() { winapi_set_remote_folder(nullptr); }
};

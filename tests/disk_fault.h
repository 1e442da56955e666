// disk_fault.h: what a disk does not do on demand, for the length of a test.
#pragma once

#include <filesystem/faults.h>

#include <string>
#include <string_view>
#include <utility>

/// Makes calls of the file system fail; see <filesystem/faults.h> for their names.
class Fault {
  public:
    /// Fails one call on one name with an errno.
    Fault(std::string call, std::string name, int error_number)
        : Fault([=](std::string_view asked, std::string_view about) {
              return asked == call && about == name ? error_number : 0;
          }) {}
    /// Fails one call, whatever the name.
    Fault(std::string call, int error_number)
        : Fault([=](std::string_view asked, std::string_view) {
              return asked == call ? error_number : 0;
          }) {}
    explicit Fault(nmk_filesystem::FaultHook hook) {
        nmk_filesystem::set_fault_hook(std::move(hook));
    }
    Fault(const Fault&) = delete;
    Fault& operator=(const Fault&) = delete;
    ~Fault() { nmk_filesystem::set_fault_hook({}); }
};

/// Makes a directory count as being on another machine.
class RemoteDirectory {
  public:
    explicit RemoteDirectory(const std::string& directory) {
        nmk_filesystem::set_remote_directory(directory.c_str());
    }
    RemoteDirectory(const RemoteDirectory&) = delete;
    RemoteDirectory& operator=(const RemoteDirectory&) = delete;
    ~RemoteDirectory() { nmk_filesystem::set_remote_directory(nullptr); }
};

// faults.h: makes calls of the file system fail on purpose, for tests.
//
// Some failures cannot be produced with a disk at hand: root may search every directory, no test
// may fill the machine's disk, a file vanishes between two calls only by luck. Calls that support
// it ask the hook first. Without a hook this costs one read of a flag for each call.
#pragma once

#include <functional>
#include <string_view>

namespace nmk_filesystem {

/// Called before each call with its name ("GetFileAttributesA", "copy file", ...) and the name of
/// the file it concerns. 0 lets the call continue; another number makes it fail as if the disk had
/// reported that errno. The hook may change the disk itself. While data is copied it is called
/// before each part, as "copy part" with the name of the source. Calls of the kernel that a disk or
/// an older kernel lacks have names too: "renameat2", "copy_file_range", "pidfd_open", "syncfs",
/// "flock". Several threads may call it at once. It must not throw.
using FaultHook = std::function<int(std::string_view call, std::string_view name)>;

/// Sets the hook of the process; an empty one removes it.
void set_fault_hook(FaultHook hook);

/// The errno with which the hook makes this call fail; 0 lets it continue.
int injected_fault(const char* call, const char* name);

/// Makes the directory, and everything below it, count as being on another machine; null or the
/// empty text ends that.
void set_remote_directory(const char* directory);

/// True for that directory and everything below it, symlinks resolved.
bool is_in_remote_directory(const char* name);

}  // namespace nmk_filesystem

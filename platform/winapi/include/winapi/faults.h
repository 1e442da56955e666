// faults.h: making the calls fail on purpose, for tests.
//
// Some failures cannot be had from a disk: root may search every folder, no test may fill the
// machine's disk, a file vanishes between two calls only by luck. A hook is asked before each
// call. Nothing is hooked by default, and then this costs one read of a flag for each call.
#pragma once

#include <functional>
#include <string_view>

/// Asked before each call with the call's name ("GetFileAttributesA", "CopyFileExA", ...) and the
/// name it was given. 0 lets the call go on; another number fails it as the disk's errno of that
/// value would. It may change the disk itself. While data is copied it is asked before each part,
/// as "copy part" with the source's name. Kernels and disks that lack a call can be had too, by its
/// own name: "renameat2", "copy_file_range", "pidfd_open". Several threads may ask at once. It must
/// not throw.
using winapi_fault_hook = std::function<int(std::string_view call, std::string_view name)>;

/// Sets the hook of the process; an empty one ends it.
void winapi_set_fault_hook(winapi_fault_hook hook);

/// Lets GetDriveTypeA take the folder and all in it as remote; null or empty ends that.
void winapi_set_remote_folder(const char* folder);

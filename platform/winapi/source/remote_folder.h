// remote_folder.h: the folder that a test wants to be taken as remote.
#pragma once

namespace winapi {

/// Whether the name is that folder or lies in it, links resolved.
bool lies_in_the_remote_folder(const char* name);

}  // namespace winapi

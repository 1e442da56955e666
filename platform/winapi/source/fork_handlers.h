// fork_handlers.h: what must not pass to a forked child.
#pragma once

namespace winapi {

/// From now on a fork closes the registry's store beforehand, since SQLite must not be carried over
/// to a child, and closes all lock files in the child. The store opens again with its next use.
void install_fork_handlers();

}  // namespace winapi

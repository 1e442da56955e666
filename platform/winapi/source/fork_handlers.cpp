#include "fork_handlers.h"

#include <pthread.h>

#include "handle_table.h"
#include "lock_file.h"
#include "registry_store.h"

namespace winapi {

namespace {

// One function for all, since the order of their guards must be that in which threads take them.
void before_fork() {
    RegistryStore::the_store().before_fork();
    LockFile::before_fork();
    handle_table_before_fork();
}

void after_fork_in_parent() {
    handle_table_after_fork();
    LockFile::after_fork_in_parent();
    RegistryStore::the_store().after_fork();
}

void after_fork_in_child() {
    handle_table_after_fork();
    LockFile::after_fork_in_child();
    RegistryStore::the_store().after_fork();
}

}  // namespace

void install_fork_handlers() {
    [[maybe_unused]] static const int installed =
        ::pthread_atfork(&before_fork, &after_fork_in_parent, &after_fork_in_child);
}

}  // namespace winapi

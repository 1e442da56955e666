// worker_pool.h: a small pool of worker processes.
//
// The library keeps some settings for the whole process (nmkItemComparator), so work that is done
// side by side is done in processes of its own. A worker gets a copy of everything that is in
// memory, and returns bytes.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "text/result.h"

namespace nmk_shell {

struct WorkerTasks {
    std::size_t count = 0;

    /// Called in a worker; returns the result of a task. What it changes is lost.
    std::function<std::string(std::size_t task)> work;

    /// Called in the caller's process when a task has ended, with its result, or an Error if the
    /// worker failed.
    std::function<void(std::size_t task, const nmk_text::Result<std::string>& result)> done;

    /// Asked ten times a second and before each task: whether more tasks are to be started.
    std::function<bool()> goes_on;
};

/// Runs all tasks, up to `workers` at a time. They are started in their order and end in any. With
/// one worker all happens in the caller's process. `done` is not called for tasks that were not
/// started.
void run_in_workers(const WorkerTasks& tasks, std::size_t workers);

}  // namespace nmk_shell

// interrupt_watch.h: notes Ctrl-C for as long as anybody watches.
#pragma once

/// Begins to watch. The first watcher clears what was noted and takes the signal over.
void begin_interrupt_watch();

/// Ends a watch. The last watcher puts the earlier handler back.
void end_interrupt_watch();

/// True when Ctrl-C was noted since the first of the present watchers began.
bool is_interrupted() noexcept;

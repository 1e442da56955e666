// interrupt_watch.h: records Ctrl-C while at least one watch is active.
#pragma once

namespace nmk_progressbreak {

/// Begins a watch. The first one clears what was recorded and takes over the signal.
void begin_interrupt_watch();

/// Ends a watch. The last one restores the previous handler.
void end_interrupt_watch();

/// True when Ctrl-C was recorded since the first of the active watches began.
bool is_interrupted() noexcept;

}  // namespace nmk_progressbreak

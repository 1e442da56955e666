// nmkStackTimerEvent: the begin or the end of a timed section, and the array of a thread's events.
#pragma once

#include <ncamcontainer/coPageArr.h>

struct nmkStackTimerEvent {
    /// The name of the section that begins, or null for an end. Only the pointer is kept: the text
    /// must exist until the events are reset, as a literal does.
    const char* name = nullptr;

    /// From apHighResTime::time(), in seconds.
    double time = 0.0;
};

/// The events of one thread, in the order of their times.
using nmkStackTimerEventcoPageArr = coPageArr<nmkStackTimerEvent>;

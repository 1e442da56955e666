// nmkStackTimerEventLogger: one thread's access to its array of timer events.
#pragma once

#include <nmktoolbox/export.h>
#include <nmktoolbox/runtime/nmkStackTimerEvent.h>

class NMKTOOLBOX_EXPORT nmkStackTimerEventLogger {
  public:
    /// Makes a new array and adds it to the arrays of nmkStackTimer, which own it.
    nmkStackTimerEventLogger();
    nmkStackTimerEventLogger(const nmkStackTimerEventLogger&) = delete;
    nmkStackTimerEventLogger& operator=(const nmkStackTimerEventLogger&) = delete;

    /// Deletes the array if it is empty; an array with events is kept for later reports.
    ~nmkStackTimerEventLogger();

    /// Appends an event, without a lock; see nmkStackTimerEvent for `name` and `time`.
    void add(const char* name, double time) { m_times->add({name, time}); }

    /// The events of this logger.
    nmkStackTimerEventcoPageArr& times() { return *m_times; }

  private:
    nmkStackTimerEventcoPageArr* m_times;  // owned by nmkStackTimer
};

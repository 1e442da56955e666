// nmkStackBasedTimer: prints an indented tree of nested scopes when the outermost one ends.
//
//     main: 2.5 seconds
//     ->read: 0.5 seconds
//     ->sort: 1.75 seconds
//     -->anneal: 1.5 seconds
//
// All timers of the process are on one stack without a lock: use them on one thread only.
#pragma once

#include <ncamcontainer/builtin_containers.h>
#include <nmktoolbox/export.h>
#include <utils/utString.h>

class nmkStackBasedTimer;

/// The stack of live timers, which it does not own; the newest timer is the last element.
using nmkStackBasedTimercoDListPtr = coDList<nmkStackBasedTimer*>;
using nmkStackBasedTimercoDListPtrcoPtrcoDList = nmkStackBasedTimercoDListPtr;

class NMKTOOLBOX_EXPORT nmkStackBasedTimer {
  public:
    /// Puts the timer on the stack, then reads the clock.
    ///
    ///   name    printed as part of a printf format without arguments: "%%" prints "%"
    explicit nmkStackBasedTimer(const utString& name);
    nmkStackBasedTimer(const nmkStackBasedTimer&) = delete;
    nmkStackBasedTimer& operator=(const nmkStackBasedTimer&) = delete;

    /// Passes the line of this timer and those of its nested timers on to the timer around it, or
    /// prints them after an empty line when this is the outermost timer. A timer that is not on top
    /// of the stack is only removed from it, and its lines are lost.
    ~nmkStackBasedTimer();

  private:
    void finish(double end_time, int depth);
    static nmkStackBasedTimercoDListPtrcoPtrcoDList& live_timers();

    double m_start_time;  // in seconds
    utString m_name;
    utStringcoDList m_lines;  // of the nested timers that have ended
};

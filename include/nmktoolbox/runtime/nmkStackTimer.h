// nmkStackTimer: records named, nested sections on every thread at almost no cost.
//
// Sections are recorded by nmkStackTimerSection objects while timing is enabled. Each thread
// appends its events to an array of its own, without a lock; the reports read the arrays of all
// threads. Report, and reset, while no other thread is recording: such a thread is not stopped.
#pragma once

#include <nmktoolbox/export.h>
#include <nmktoolbox/runtime/nmkStackTimerEvent.h>
#include <utils/utString.h>

#include <memory>
#include <vector>

class NMKTOOLBOX_EXPORT nmkStackTimer {
  public:
    /// Whether sections are recorded; false at first. Other threads see a change through enable()
    /// and disable() in their next section.
    static bool s_timing_enabled;

    static void enable();
    static void disable();

    /// Prints "<name> = <seconds>" with six decimals for each section name, to the console.
    ///
    /// Times of all threads are added up. A nested section counts for itself and for the section
    /// around it. A section that has not ended, and an end without a begin, count nothing. Names
    /// are distinguished by their addresses, and printed in ascending order of these: two equal
    /// texts at different addresses are two lines.
    static void print_all();

    /// Writes the events to the file `<file>.0`, one line each: the time with six decimals, then a
    /// blank and the name of the section that begins, or " END". Each thread with events overwrites
    /// the file, so it holds those of the last thread. A failure is not reported.
    static void write_to_file(const utString& file);

    /// Removes all events of all threads.
    static void reset_all();

  private:
    friend class nmkStackTimerSection;
    friend class nmkStackTimerEventLogger;
    using Logs = std::vector<std::unique_ptr<nmkStackTimerEventcoPageArr>>;

    void start_section(const char* name);
    void end_section();
    static Logs& get_logs();
};

// ncmTimer: a stopwatch with a print format.
//
// It adds up the time between start and stop, in seconds. One object belongs to one thread.
#pragma once

#include <nmktoolbox/export.h>

#include <iosfwd>
#include <string>

class NMKTOOLBOX_EXPORT ncmTimer {
  public:
    /// A stopped timer at 0. `form` is a printf format for one double, of which a copy is kept;
    /// with null the timer is printed as a plain number.
    explicit ncmTimer(const char* form);
    ncmTimer(const ncmTimer& other);
    ncmTimer& operator=(const ncmTimer& other);
    ~ncmTimer();

    /// Starts the timer; a running timer is not changed.
    void start();

    /// Stops the timer if it is running. Returns the accumulated time in seconds in either case.
    double stop();

    /// The accumulated time in seconds, up to now if the timer is running.
    double get() const;

    /// Sets the accumulated time to 0. A running timer continues to run, from now.
    void reset();

    /// Whole seconds since the first call, which returns 0. They are counted by an alarm that the
    /// first call books; if it cannot be booked, the count remains 0.
    static int get_up_seconds();

    /// Writes get() in the timer's format, limited to 1023 characters, or as a double when there is
    /// no format. A conversion for which there is no argument is written as it is.
    friend NMKTOOLBOX_EXPORT std::ostream& operator<<(std::ostream& stream, const ncmTimer& timer);

  private:
    void set_form_string(const char* form);

    int m_running = 0;          // non-zero between start and stop
    double m_start_time = 0.0;  // of the last start or reset
    double m_accumulated = 0.0;
    char* m_form = nullptr;  // owned
};

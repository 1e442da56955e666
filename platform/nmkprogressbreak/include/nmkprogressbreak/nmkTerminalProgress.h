// nmkTerminalProgress.h: progress as one line on a terminal, and Ctrl-C as the request to stop.
//
// The line holds a bar, the percentage, the best result so far where the work tells one, and the
// time left. It is drawn over and over, at most ten times a second, and taken away at the end.
// Where the stream is no terminal nothing is ever written; Ctrl-C asks for a stop all the same.
//
// While any reporter lives, the first Ctrl-C is only noted, for all reporters, and shows in what
// they answer; a second one ends the process as usual, for work that does not listen. The last
// reporter puts the earlier handler back. A process that ignored Ctrl-C before goes on ignoring it.
// A reporter itself is for one thread.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>

#include <chrono>
#include <cstdio>
#include <optional>
#include <string>

#pragma GCC visibility push(default)

class nmkTerminalProgress : public nmkProgressBreak {
  public:
    /// What the line shows.
    struct Shown {
        std::string title;
        double fraction = 0.0;               // of the work that is done, 0 to 1
        std::string best;                    // the best result so far; empty: not shown
        std::optional<double> seconds_left;  // not shown when empty
    };

    /// Draws on `stream`, which is borrowed, if that is a terminal.
    explicit nmkTerminalProgress(std::FILE* stream = stderr);
    nmkTerminalProgress(const nmkTerminalProgress&) = delete;
    nmkTerminalProgress& operator=(const nmkTerminalProgress&) = delete;

    /// Takes the line away, and puts the earlier handler of Ctrl-C back if this is the last one.
    ~nmkTerminalProgress() override;

    int send_progress_bar_to_0(const char* text) override;
    void set_range(double range) override;
    int increment() override;
    int jump_to(double position) override;
    int send_progress_bar_to_100() override;

    /// The best result so far, as the line is to show it from now on; with its unit.
    void set_best(std::string best);

    /// True once a stop was asked for.
    bool is_stopped() const noexcept;

    /// The line, at most `columns` wide; columns below 20 give the percentage alone.
    static std::string line(const Shown& shown, int columns);

  private:
    using Clock = std::chrono::steady_clock;

    double fraction() const noexcept;
    void draw(bool now);
    void wipe();

    std::FILE* m_stream;
    bool m_is_terminal;
    bool m_is_drawn = false;
    std::string m_title;
    std::string m_best;
    double m_range = 0.0;
    double m_position = 0.0;
    Clock::time_point m_started;
    Clock::time_point m_last_drawn;
};

#pragma GCC visibility pop

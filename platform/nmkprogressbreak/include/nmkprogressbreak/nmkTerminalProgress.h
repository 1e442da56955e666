// nmkTerminalProgress.h: progress as one line on a terminal, and Ctrl-C as the request to stop.
//
// The line contains a bar, the percentage, the best result so far where the work reports one, and
// the time left as soon as the work goes on at a steady rate. It is redrawn at most ten times a
// second, and erased at the end. When the stream is not a terminal nothing is written; Ctrl-C
// requests a stop all the same.
//
// While a reporter exists, the first Ctrl-C is only recorded, for all reporters, whose operations
// then return non-zero; a second one ends the process as usual, for work that ignores the request.
// The last reporter restores the previous handler. A process that ignored Ctrl-C before still
// ignores it. A reporter may be used by one thread only.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmkprogressbreak/progress_forecast.h>

#include <chrono>
#include <cstdio>
#include <optional>
#include <string>

#pragma GCC visibility push(default)

class nmkTerminalProgress : public nmkProgressBreak {
  public:
    /// The contents of the line.
    struct Shown {
        std::string title;
        double fraction = 0.0;               // the part of the work that is done, 0 to 1
        std::string best;                    // the best result so far; empty: not shown
        std::optional<double> seconds_left;  // not shown when empty
    };

    /// Draws on `stream`, which is borrowed, if that is a terminal.
    explicit nmkTerminalProgress(std::FILE* stream = stderr);
    nmkTerminalProgress(const nmkTerminalProgress&) = delete;
    nmkTerminalProgress& operator=(const nmkTerminalProgress&) = delete;

    /// Erases the line, and restores the previous handler of Ctrl-C if this is the last reporter.
    ~nmkTerminalProgress() override;

    int send_progress_bar_to_0(const char* text) override;
    void set_range(double range) override;
    int increment() override;
    int jump_to(double position) override;
    int send_progress_bar_to_100() override;

    /// Sets the best result so far as it is shown, with its unit.
    void set_best(std::string best);

    /// True once a stop was requested.
    bool is_stopped() const noexcept;

    /// The line, at most `columns` wide; columns below 20 give the percentage alone.
    static std::string line(const Shown& shown, int columns);

  private:
    using Clock = std::chrono::steady_clock;

    double fraction() const noexcept;
    void draw(bool now);
    void erase();

    std::FILE* m_stream;
    bool m_is_terminal;
    bool m_is_drawn = false;
    std::string m_title;
    std::string m_best;
    double m_range = 0.0;
    double m_position = 0.0;
    nmk_progressbreak::ProgressForecast m_forecast;
    Clock::time_point m_started;
    Clock::time_point m_last_drawn;
};

#pragma GCC visibility pop

// The terminal reporter on a pseudo-terminal and on a file, and its handling of Ctrl-C.

#include <nmkprogressbreak/nmkTerminalProgress.h>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cmath>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace {

// A terminal whose output the test reads.
class PseudoTerminal {
  public:
    PseudoTerminal() : m_master(posix_openpt(O_RDWR | O_NOCTTY)) {
        if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0) return;
        const int slave = open(ptsname(m_master), O_RDWR | O_NOCTTY);
        if (slave >= 0) m_stream = fdopen(slave, "w");
        fcntl(m_master, F_SETFL, O_NONBLOCK);
    }
    ~PseudoTerminal() {
        if (m_stream != nullptr) std::fclose(m_stream);
        if (m_master >= 0) close(m_master);
    }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    std::FILE* stream() const { return m_stream; }

    std::string read_all() const {
        std::string text;
        char buffer[512];
        for (ssize_t count = 0; (count = read(m_master, buffer, sizeof buffer)) > 0;) {
            text.append(buffer, static_cast<std::size_t>(count));
        }
        return text;
    }

  private:
    int m_master;
    std::FILE* m_stream = nullptr;
};

int previous_handler_calls = 0;

extern "C" void previous_handler(int) { ++previous_handler_calls; }

// Installs a handler for the test and restores the previous one.
class PreviousHandler {
  public:
    explicit PreviousHandler(void (*handler)(int)) : m_before(std::signal(SIGINT, handler)) {}
    ~PreviousHandler() { std::signal(SIGINT, m_before); }
    PreviousHandler(const PreviousHandler&) = delete;
    PreviousHandler& operator=(const PreviousHandler&) = delete;

  private:
    void (*m_before)(int);
};

using Shown = nmkTerminalProgress::Shown;

}  // namespace

TEST(nmkTerminalProgress, draws_the_title_and_the_bar_on_a_terminal_and_erases_them) {
    const PseudoTerminal terminal;
    ASSERT_NE(terminal.stream(), nullptr);
    nmkTerminalProgress progress(terminal.stream());
    EXPECT_EQ(progress.send_progress_bar_to_0("Sorting\n%3d%% completed"), 0);
    const std::string drawn = terminal.read_all();
    EXPECT_TRUE(drawn.starts_with("\rSorting [")) << drawn;
    EXPECT_NE(drawn.find("]   0%"), std::string::npos) << drawn;
    EXPECT_EQ(drawn.find("completed"), std::string::npos) << drawn;
    EXPECT_EQ(progress.send_progress_bar_to_100(), 0);
    EXPECT_EQ(terminal.read_all(), "\r\x1b[K");
}

TEST(nmkTerminalProgress, shows_the_percentage_and_the_best_result_so_far) {
    const PseudoTerminal terminal;
    ASSERT_NE(terminal.stream(), nullptr);
    nmkTerminalProgress progress(terminal.stream());
    progress.send_progress_bar_to_0("Sorting");
    progress.set_range(4.0);
    progress.set_best("12.5 mm");
    progress.increment();
    usleep(120'000);  // longer than the pause between two drawings
    terminal.read_all();
    progress.increment();
    const std::string drawn = terminal.read_all();
    EXPECT_NE(drawn.find(" 50%  best 12.5 mm"), std::string::npos) << drawn;
}

TEST(nmkTerminalProgress, does_not_draw_at_every_step) {
    const PseudoTerminal terminal;
    ASSERT_NE(terminal.stream(), nullptr);
    nmkTerminalProgress progress(terminal.stream());
    progress.send_progress_bar_to_0("Sorting");
    terminal.read_all();
    std::size_t drawn = 0;
    for (int step = 0; step < 10'000; ++step) {
        progress.increment();
        drawn += terminal.read_all().empty() ? 0U : 1U;
    }
    EXPECT_LT(drawn, 1000U);
}

TEST(nmkTerminalProgress, writes_nothing_to_a_stream_that_is_not_a_terminal) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), &std::fclose);
    ASSERT_NE(file, nullptr);
    {
        nmkTerminalProgress progress(file.get());
        progress.send_progress_bar_to_0("Sorting\n%3d%% completed");
        progress.set_range(1.0);
        progress.increment();
        progress.send_progress_bar_to_100();
    }
    std::fflush(file.get());
    std::fseek(file.get(), 0, SEEK_END);
    EXPECT_EQ(std::ftell(file.get()), 0);
}

TEST(nmkTerminalProgress, every_operation_returns_non_zero_after_the_first_interrupt) {
    const PreviousHandler handler(&previous_handler);
    previous_handler_calls = 0;
    nmkTerminalProgress progress(nullptr);
    EXPECT_EQ(progress.increment(), 0);
    EXPECT_FALSE(progress.is_stopped());
    std::raise(SIGINT);
    EXPECT_TRUE(progress.is_stopped());
    EXPECT_NE(progress.increment(), 0);
    EXPECT_NE(progress.jump_to(3.0), 0);
    EXPECT_NE(progress.send_progress_bar_to_0("next"), 0);
    EXPECT_NE(progress.send_progress_bar_to_100(), 0);
    EXPECT_EQ(previous_handler_calls, 0);
}

TEST(nmkTerminalProgress, restores_the_previous_handler_when_the_last_reporter_ends) {
    const PreviousHandler handler(&previous_handler);
    previous_handler_calls = 0;
    {
        const nmkTerminalProgress outer(nullptr);
        { const nmkTerminalProgress inner(nullptr); }
        std::raise(SIGINT);
        EXPECT_TRUE(outer.is_stopped());
        EXPECT_EQ(previous_handler_calls, 0);
    }
    std::raise(SIGINT);
    EXPECT_EQ(previous_handler_calls, 1);
}

TEST(nmkTerminalProgress, a_later_reporter_does_not_inherit_the_stop) {
    const PreviousHandler handler(&previous_handler);
    {
        const nmkTerminalProgress first(nullptr);
        std::raise(SIGINT);
    }
    nmkTerminalProgress second(nullptr);
    EXPECT_EQ(second.increment(), 0);
}

TEST(nmkTerminalProgress, still_ignores_interrupts_that_were_ignored_before) {
    const PreviousHandler handler(SIG_IGN);
    nmkTerminalProgress progress(nullptr);
    std::raise(SIGINT);
    EXPECT_EQ(progress.increment(), 0);
}

TEST(nmkTerminalProgressDeathTest, a_second_interrupt_ends_the_process) {
    EXPECT_EXIT(
        {
            std::signal(SIGINT, SIG_DFL);
            const nmkTerminalProgress progress(nullptr);
            std::raise(SIGINT);
            std::raise(SIGINT);
            std::_Exit(0);
        },
        testing::KilledBySignal(SIGINT), "");
}

TEST(nmkTerminalProgress, the_line_contains_all_its_parts) {
    const Shown shown{"Ordering", 0.25, "83.1 mm", 125.4};
    EXPECT_EQ(nmkTerminalProgress::line(shown, 60),
              "Ordering [####...............]  25%  best 83.1 mm  2:05 left");
}

TEST(nmkTerminalProgress, the_line_fits_every_width) {
    const Shown shown{"A rather long title", 0.5, "1234567.89 mm", 7322.0};
    for (int columns = 20; columns <= 200; ++columns) {
        const std::string line = nmkTerminalProgress::line(shown, columns);
        EXPECT_LE(line.size(), static_cast<std::size_t>(columns));
    }
    EXPECT_EQ(nmkTerminalProgress::line(shown, 10), " 50%");
}

TEST(nmkTerminalProgress, shows_hours_as_hours_and_no_forecast_that_is_too_long) {
    EXPECT_NE(nmkTerminalProgress::line({"", 0.5, "", 7322.0}, 80).find("2:02:02 left"),
              std::string::npos);
    EXPECT_EQ(nmkTerminalProgress::line({"", 0.5, "", 1e9}, 80).find("left"), std::string::npos);
}

TEST(nmkTerminalProgress, clamps_a_fraction_outside_its_range) {
    EXPECT_EQ(nmkTerminalProgress::line({"", 7.0, "", {}}, 10), "100%");
    EXPECT_EQ(nmkTerminalProgress::line({"", -7.0, "", {}}, 10), "  0%");
    EXPECT_EQ(nmkTerminalProgress::line({"", 0.0 * HUGE_VAL, "", {}}, 10), "  0%");
}

TEST(nmkTerminalProgress, shows_the_time_left_when_work_has_gone_on_steadily_for_two_seconds) {
    const PseudoTerminal terminal;
    ASSERT_NE(terminal.stream(), nullptr);
    nmkTerminalProgress progress(terminal.stream());
    progress.send_progress_bar_to_0("Sorting");
    progress.set_range(1000.0);
    bool is_shown = false;
    // On a busy machine the steps are uneven, and the forecast comes later.
    for (int step = 0; step < 300 && !is_shown; ++step) {
        usleep(105'000);  // longer than the pause between two drawings
        progress.increment();
        is_shown = terminal.read_all().find(" left") != std::string::npos;
        EXPECT_FALSE(is_shown && step < 10) << "in the first second";
    }
    EXPECT_TRUE(is_shown);
}

TEST(nmkTerminalProgress, is_as_wide_as_its_terminal) {
    const PseudoTerminal terminal;
    ASSERT_NE(terminal.stream(), nullptr);
    winsize size{};
    size.ws_col = 31;
    ASSERT_EQ(ioctl(fileno(terminal.stream()), TIOCSWINSZ, &size), 0);
    nmkTerminalProgress progress(terminal.stream());
    progress.send_progress_bar_to_0("Sorting");
    EXPECT_EQ(terminal.read_all(), "\rSorting [" + std::string(15, '.') + "]   0%\x1b[K");
}

TEST(nmkTerminalProgress, takes_the_title_from_the_first_line_up_to_a_conversion) {
    for (const auto& [text, title] : {std::pair("Sorting\n%3d%% completed", "Sorting ["),
                                      {"Half %d%% done", "Half ["},
                                      {"\x1b[31mred\x7f", "[31mred ["},
                                      {"", "["},
                                      {static_cast<const char*>(nullptr), "["}}) {
        const PseudoTerminal terminal;
        ASSERT_NE(terminal.stream(), nullptr);
        nmkTerminalProgress progress(terminal.stream());
        progress.send_progress_bar_to_0(text);
        const std::string drawn = terminal.read_all();
        EXPECT_TRUE(drawn.starts_with(std::string("\r") + title)) << drawn;
    }
}

TEST(nmkTerminalProgress, shows_no_progress_for_a_position_that_is_nan) {
    const PseudoTerminal terminal;
    ASSERT_NE(terminal.stream(), nullptr);
    nmkTerminalProgress progress(terminal.stream());
    progress.set_range(4.0);
    progress.jump_to(std::nan(""));
    EXPECT_NE(terminal.read_all().find("]   0%"), std::string::npos);
}

// The terminal reporter, on a pseudo-terminal and on a file, and what Ctrl-C does meanwhile.

#include <nmkprogressbreak/nmkTerminalProgress.h>

#include <fcntl.h>
#include <unistd.h>

#include <cmath>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace {

// A terminal of which the test reads the screen's end.
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

int earlier_handler_calls = 0;

extern "C" void earlier_handler(int) { ++earlier_handler_calls; }

// Installs a handler for the test and puts back what was there.
class EarlierHandler {
  public:
    explicit EarlierHandler(void (*handler)(int)) : m_before(std::signal(SIGINT, handler)) {}
    ~EarlierHandler() { std::signal(SIGINT, m_before); }
    EarlierHandler(const EarlierHandler&) = delete;
    EarlierHandler& operator=(const EarlierHandler&) = delete;

  private:
    void (*m_before)(int);
};

using Shown = nmkTerminalProgress::Shown;

}  // namespace

TEST(nmkTerminalProgress, draws_the_title_and_the_bar_on_a_terminal_and_takes_them_away) {
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

TEST(nmkTerminalProgress, shows_how_far_the_work_is_and_the_best_so_far) {
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

TEST(nmkTerminalProgress, writes_nothing_where_there_is_no_terminal) {
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

TEST(nmkTerminalProgress, the_first_interrupt_shows_in_every_answer) {
    const EarlierHandler handler(&earlier_handler);
    earlier_handler_calls = 0;
    nmkTerminalProgress progress(nullptr);
    EXPECT_EQ(progress.increment(), 0);
    EXPECT_FALSE(progress.is_stopped());
    std::raise(SIGINT);
    EXPECT_TRUE(progress.is_stopped());
    EXPECT_NE(progress.increment(), 0);
    EXPECT_NE(progress.jump_to(3.0), 0);
    EXPECT_NE(progress.send_progress_bar_to_0("next"), 0);
    EXPECT_NE(progress.send_progress_bar_to_100(), 0);
    EXPECT_EQ(earlier_handler_calls, 0);
}

TEST(nmkTerminalProgress, puts_the_earlier_handler_back_when_the_last_reporter_ends) {
    const EarlierHandler handler(&earlier_handler);
    earlier_handler_calls = 0;
    {
        const nmkTerminalProgress outer(nullptr);
        { const nmkTerminalProgress inner(nullptr); }
        std::raise(SIGINT);
        EXPECT_TRUE(outer.is_stopped());
        EXPECT_EQ(earlier_handler_calls, 0);
    }
    std::raise(SIGINT);
    EXPECT_EQ(earlier_handler_calls, 1);
}

TEST(nmkTerminalProgress, a_later_reporter_does_not_inherit_the_stop) {
    const EarlierHandler handler(&earlier_handler);
    {
        const nmkTerminalProgress first(nullptr);
        std::raise(SIGINT);
    }
    nmkTerminalProgress second(nullptr);
    EXPECT_EQ(second.increment(), 0);
}

TEST(nmkTerminalProgress, goes_on_ignoring_interrupts_that_were_ignored_before) {
    const EarlierHandler handler(SIG_IGN);
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

TEST(nmkTerminalProgress, the_line_holds_all_its_parts) {
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

TEST(nmkTerminalProgress, hours_show_as_hours_and_an_endless_forecast_not_at_all) {
    EXPECT_NE(nmkTerminalProgress::line({"", 0.5, "", 7322.0}, 80).find("2:02:02 left"),
              std::string::npos);
    EXPECT_EQ(nmkTerminalProgress::line({"", 0.5, "", 1e9}, 80).find("left"), std::string::npos);
}

TEST(nmkTerminalProgress, a_fraction_outside_its_range_is_brought_inside) {
    EXPECT_EQ(nmkTerminalProgress::line({"", 7.0, "", {}}, 10), "100%");
    EXPECT_EQ(nmkTerminalProgress::line({"", -7.0, "", {}}, 10), "  0%");
    EXPECT_EQ(nmkTerminalProgress::line({"", 0.0 * HUGE_VAL, "", {}}, 10), "  0%");
}

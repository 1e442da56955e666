#include "interrupt_watch.h"

#include <nmkprogressbreak/nmkTerminalProgress.h>

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace {

constexpr std::chrono::milliseconds between_drawings(100);
constexpr double max_forecast = 360000.0;  // seconds; longer ones are not shown
constexpr int default_columns = 80;
constexpr int min_columns = 20;  // with fewer only the percentage is shown
constexpr int max_bar = 40;
constexpr int min_bar = 5;

// The first line of the text up to a conversion: the percentage is shown separately.
std::string title_of(const char* text) {
    std::string title;
    for (const char* at = text != nullptr ? text : ""; *at != '\0' && *at != '\n'; ++at) {
        if (*at == '%') break;
        if (static_cast<unsigned char>(*at) >= 0x20 && *at != 0x7F) title += *at;
    }
    title.erase(title.find_last_not_of(' ') + 1);
    return title;
}

int columns_of(std::FILE* stream) {
    winsize size{};
    const bool is_known = ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return is_known ? size.ws_col : default_columns;
}

std::string two_digits(long number) { return (number < 10 ? "0" : "") + std::to_string(number); }

std::string time_left(double seconds) {
    const long whole = std::lround(seconds);
    const long minutes = whole / 60;
    const std::string tail = two_digits(whole % 60) + " left";
    if (minutes < 60) return std::to_string(minutes) + ":" + tail;
    return std::to_string(minutes / 60) + ":" + two_digits(minutes % 60) + ":" + tail;
}

std::string bar(double fraction, int width) {
    const int filled = static_cast<int>(fraction * width);
    return "[" + std::string(static_cast<std::size_t>(filled), '#') +
           std::string(static_cast<std::size_t>(width - filled), '.') + "]";
}

}  // namespace

nmkTerminalProgress::nmkTerminalProgress(std::FILE* stream)
    : m_stream(stream),
      m_is_terminal(stream != nullptr && isatty(fileno(stream)) == 1),
      m_started(Clock::now()) {
    nmk_progressbreak::begin_interrupt_watch();
}

nmkTerminalProgress::~nmkTerminalProgress() {
    erase();
    nmk_progressbreak::end_interrupt_watch();
}

int nmkTerminalProgress::send_progress_bar_to_0(const char* text) {
    m_title = title_of(text);
    m_best.clear();
    m_range = 0.0;
    m_position = 0.0;
    m_started = Clock::now();
    m_forecast.clear();
    draw(true);
    return is_stopped() ? 1 : 0;
}

void nmkTerminalProgress::set_range(double range) { m_range = range; }

int nmkTerminalProgress::increment() { return jump_to(m_position + 1.0); }

int nmkTerminalProgress::jump_to(double position) {
    m_position = position;
    draw(false);
    return is_stopped() ? 1 : 0;
}

int nmkTerminalProgress::send_progress_bar_to_100() {
    erase();
    return is_stopped() ? 1 : 0;
}

void nmkTerminalProgress::set_best(std::string best) { m_best = std::move(best); }

bool nmkTerminalProgress::is_stopped() const noexcept {
    return nmk_progressbreak::is_interrupted();
}

double nmkTerminalProgress::fraction() const noexcept {
    // The range is only an estimate: work that exceeds it stays at the full bar.
    const double done = m_range > 0.0 ? m_position / m_range : 0.0;
    return std::isfinite(done) ? std::clamp(done, 0.0, 1.0) : 0.0;
}

void nmkTerminalProgress::draw(bool now) {
    if (!m_is_terminal) return;
    const Clock::time_point moment = Clock::now();
    if (!now && m_is_drawn && moment - m_last_drawn < between_drawings) return;
    Shown shown{m_title, fraction(), m_best, std::nullopt};
    m_forecast.add(std::chrono::duration<double>(moment - m_started).count(), shown.fraction);
    shown.seconds_left = m_forecast.seconds_left();
    // One column is left free: some terminals wrap when the last one is filled.
    const std::string text = "\r" + line(shown, columns_of(m_stream) - 1) + "\x1b[K";
    std::fputs(text.c_str(), m_stream);
    std::fflush(m_stream);
    m_is_drawn = true;
    m_last_drawn = moment;
}

void nmkTerminalProgress::erase() {
    if (!m_is_drawn) return;
    std::fputs("\r\x1b[K", m_stream);
    std::fflush(m_stream);
    m_is_drawn = false;
}

std::string nmkTerminalProgress::line(const Shown& shown, int columns) {
    const double done = std::isfinite(shown.fraction) ? std::clamp(shown.fraction, 0.0, 1.0) : 0.0;
    const int percent = static_cast<int>(done * 100.0);
    std::string figures = std::to_string(percent) + "%";
    figures.insert(0, figures.size() < 4 ? 4 - figures.size() : 0, ' ');
    if (columns < min_columns) return figures;
    std::string rest;
    if (!shown.best.empty()) rest += "  best " + shown.best;
    if (shown.seconds_left && *shown.seconds_left <= max_forecast) {
        rest += "  " + time_left(*shown.seconds_left);
    }
    const std::string title = shown.title.empty() ? "" : shown.title + " ";
    const int taken = static_cast<int>(title.size() + figures.size() + rest.size()) + 3;
    const int width = std::min(columns - taken, max_bar);
    std::string text = title;
    if (width >= min_bar) text += bar(done, width) + " ";
    text += figures + rest;
    return text.substr(0, static_cast<std::size_t>(columns));
}

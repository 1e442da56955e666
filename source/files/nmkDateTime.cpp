#include <nmktoolbox/files/nmkDateTime.h>

#include "files/neutral_locale.h"

#include <winapi/times.h>

#include <array>

using nmk_files::neutral_locale;

namespace {

constexpr std::size_t longest_formatted = 200;  // with the nul

/// Deliberate: seconds wrap in 32 bits.
std::int32_t cut(std::int64_t seconds) { return static_cast<std::int32_t>(seconds); }

}  // namespace

nmkDateTime::nmkDateTime() : m_using_gmt(0) { initialise(); }

nmkDateTime::nmkDateTime(nmkDateTimeGMT) : m_using_gmt(1) { initialise(); }

nmkDateTime::nmkDateTime(const nmkDateTime& other)
    : m_time(std::make_unique<std::tm>(*other.m_time)), m_using_gmt(other.m_using_gmt) {}

nmkDateTime& nmkDateTime::operator=(const nmkDateTime& other) {
    *m_time = *other.m_time;
    m_using_gmt = other.m_using_gmt;
    return *this;
}

nmkDateTime::~nmkDateTime() = default;

void nmkDateTime::update() { fill(time_avail() != 0 ? cut(_time64(nullptr)) : 0); }

void nmkDateTime::update(std::int64_t seconds) { fill(cut(seconds)); }

int nmkDateTime::year() const { return m_time->tm_year + 1900; }
int nmkDateTime::month() const { return m_time->tm_mon + 1; }
int nmkDateTime::day() const { return m_time->tm_mday; }
int nmkDateTime::hour() const { return m_time->tm_hour; }
int nmkDateTime::minute() const { return m_time->tm_min; }
int nmkDateTime::second() const { return m_time->tm_sec; }

int nmkDateTime::using_gmt() const { return m_using_gmt; }

utString nmkDateTime::formatted(const char* format) const {
    std::array<char, longest_formatted> text;
    if (format == nullptr ||
        strftime_l(text.data(), text.size(), format, m_time.get(), neutral_locale()) == 0) {
        return " ";  // Deliberate: one blank, not the empty text
    }
    return text.data();
}

utString nmkDateTime::now_str() {
    const __time64_t now = _time64(nullptr);
    return _ctime64(&now);
}

int nmkDateTime::time_avail() { return _time64(nullptr) == -1 ? 0 : 1; }

void nmkDateTime::initialise() {
    if (m_time == nullptr) {
        m_time = std::make_unique<std::tm>();
        update();
    }
}

void nmkDateTime::fill(std::int32_t seconds) {
    const __time64_t moment = seconds;
    const std::tm* record = m_using_gmt != 0 ? _gmtime64(&moment) : _localtime64(&moment);
    if (record != nullptr) {
        *m_time = *record;  // the name of its zone too
    }
}

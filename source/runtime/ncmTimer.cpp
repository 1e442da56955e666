#include <apsl/apAlarm.h>
#include <apsl/apprintf.h>
#include <apsl/timedp.h>
#include <nmktoolbox/runtime/ncmTimer.h>

#include <atomic>
#include <cstring>
#include <ostream>
#include <string_view>

namespace {

// Characters of a printed timer: a buffer of 1024 bytes without its final nul.
constexpr std::size_t max_printed_length = 1023;

constexpr int not_counting = -1;
std::atomic<int> up_seconds{not_counting};

void count_second(apAlarmHandlerInfo info) {
    if (info == ap_alarm_due) ++up_seconds;
}

double time_now() {
    double now = 0.0;
    timedp(&now);
    return now;
}

}  // namespace

ncmTimer::ncmTimer(const char* form) { set_form_string(form); }

ncmTimer::ncmTimer(const ncmTimer& other)
    : m_running(other.m_running),
      m_start_time(other.m_start_time),
      m_accumulated(other.m_accumulated) {
    set_form_string(other.m_form);
}

ncmTimer& ncmTimer::operator=(const ncmTimer& other) {
    if (this == &other) return *this;
    set_form_string(other.m_form);
    m_running = other.m_running;
    m_start_time = other.m_start_time;
    m_accumulated = other.m_accumulated;
    return *this;
}

ncmTimer::~ncmTimer() { delete[] m_form; }

void ncmTimer::start() {
    if (m_running != 0) return;
    m_running = 1;
    m_start_time = time_now();
}

double ncmTimer::stop() {
    if (m_running != 0) {
        const double now = time_now();
        m_running = 0;
        m_accumulated += now - m_start_time;
    }
    return m_accumulated;
}

double ncmTimer::get() const {
    return m_running != 0 ? (time_now() - m_start_time) + m_accumulated : m_accumulated;
}

// Deliberate: the timer is not stopped, so a running timer continues from zero.
void ncmTimer::reset() {
    m_accumulated = 0.0;
    m_start_time = time_now();
}

int ncmTimer::get_up_seconds() {
    int count = not_counting;
    if (!up_seconds.compare_exchange_strong(count, 0)) return count;
    apAlarm::book_alarm_call(1, count_second);
    return 0;
}

void ncmTimer::set_form_string(const char* form) {
    char* copy = nullptr;
    if (form != nullptr) {
        const std::size_t size = std::strlen(form) + 1;
        copy = static_cast<char*>(std::memcpy(new char[size], form, size));
    }
    delete[] m_form;
    m_form = copy;
}

std::ostream& operator<<(std::ostream& stream, const ncmTimer& timer) {
    const double seconds = timer.get();
    if (timer.m_form == nullptr) return stream << seconds;
    const apPrintArgument argument(seconds);
    const std::string text = ap_format_arguments(timer.m_form, {&argument, 1});
    return stream << std::string_view(text).substr(0, max_printed_length);
}

#include <apsl/apHighResTime.h>
#include <apsl/apprintf.h>
#include <nmktoolbox/runtime/nmkStackTimer.h>
#include <nmktoolbox/runtime/nmkStackTimerEventLogger.h>
#include <nmktoolbox/runtime/nmkStackTimerSection.h>
#include <thread/thrSpinLock.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <functional>
#include <locale>
#include <map>

bool nmkStackTimer::s_timing_enabled = false;

namespace {

// The page size of a log is 2 to this power; its page table has room for so many pages at first,
// and grows by so many.
constexpr int log_page_shift = 8;
constexpr int log_table_start = 128;
constexpr int log_table_growth = 256;

constinit thrSpinMutex logs_mutex;

/// Seconds by section name; equal texts at different addresses are different names.
using Totals = std::map<const char*, double, std::less<const char*>>;

void add_sections(const nmkStackTimerEventcoPageArr& log, Totals& totals) {
    std::vector<nmkStackTimerEvent> open;
    for (const nmkStackTimerEvent& event : log) {
        if (event.name != nullptr) {
            open.push_back(event);
        } else if (!open.empty()) {
            totals[open.back().name] += event.time - open.back().time;
            open.pop_back();
        }
    }
}

void write_events(const nmkStackTimerEventcoPageArr& log, const utString& file) {
    std::ofstream stream(file.c_str());
    stream.imbue(std::locale::classic());
    stream << std::fixed;
    for (const nmkStackTimerEvent& event : log) {
        stream << event.time << ' ' << (event.name != nullptr ? event.name : "END") << '\n';
    }
}

// The logger of this thread. The pointer needs no initialisation at its first use in a thread, so
// reading it is cheap; the owner ends with the thread.
constinit thread_local nmkStackTimerEventLogger* thread_logger = nullptr;

struct ThreadLoggerOwner {
    nmkStackTimerEventLogger logger;
    ThreadLoggerOwner() { thread_logger = &logger; }
    ~ThreadLoggerOwner() { thread_logger = nullptr; }
};

void make_thread_logger() { static thread_local const ThreadLoggerOwner owner; }

}  // namespace

void nmkStackTimer::enable() {
    std::atomic_ref(s_timing_enabled).store(true, std::memory_order_relaxed);
}

void nmkStackTimer::disable() {
    std::atomic_ref(s_timing_enabled).store(false, std::memory_order_relaxed);
}

void nmkStackTimer::print_all() {
    const thrSpinLock lock(thr_lock_exclusive, logs_mutex);
    Totals totals;
    for (const auto& log : get_logs()) add_sections(*log, totals);
    for (const auto& [name, seconds] : totals) apprintf("%s = %f\n", name, seconds);
}

void nmkStackTimer::write_to_file(const utString& file) {
    const thrSpinLock lock(thr_lock_exclusive, logs_mutex);
    for (const auto& log : get_logs()) {
        if (log->size() == 0) continue;
        // Deliberate: the number is 0 for every thread, so there is one file, whose name does not
        // depend on the number of threads; it holds the events of the last thread.
        utString name(file);
        name << "." << 0;
        write_events(*log, name);
    }
}

void nmkStackTimer::reset_all() {
    const thrSpinLock lock(thr_lock_exclusive, logs_mutex);
    for (const auto& log : get_logs()) log->clear();
}

// The clock is read last, so that making the logger is not part of the section.
void nmkStackTimer::start_section(const char* name) {
    if (thread_logger == nullptr) make_thread_logger();
    if (thread_logger != nullptr) thread_logger->add(name, apHighResTime::time());
}

// A thread without a logger has begun no section.
void nmkStackTimer::end_section() {
    if (thread_logger != nullptr) thread_logger->add(nullptr, apHighResTime::time());
}

nmkStackTimer::Logs& nmkStackTimer::get_logs() {
    // Never deleted: threads may end after the static objects of the process.
    static auto* const all_thread_logs = new Logs;
    return *all_thread_logs;
}

nmkStackTimerEventLogger::nmkStackTimerEventLogger() {
    auto log = std::make_unique<nmkStackTimerEventcoPageArr>(log_page_shift, log_table_start,
                                                             log_table_growth);
    m_times = log.get();
    const thrSpinLock lock(thr_lock_exclusive, logs_mutex);
    nmkStackTimer::get_logs().push_back(std::move(log));
}

nmkStackTimerEventLogger::~nmkStackTimerEventLogger() {
    const thrSpinLock lock(thr_lock_exclusive, logs_mutex);
    if (m_times->size() > 0) return;
    std::erase_if(nmkStackTimer::get_logs(),
                  [this](const auto& log) { return log.get() == m_times; });
}

nmkStackTimerSection::nmkStackTimerSection(const char* name)
    : m_started(name != nullptr &&
                std::atomic_ref(nmkStackTimer::s_timing_enabled).load(std::memory_order_relaxed)) {
    if (m_started) nmkStackTimer().start_section(name);
}

nmkStackTimerSection::~nmkStackTimerSection() {
    if (m_started) nmkStackTimer().end_section();
}

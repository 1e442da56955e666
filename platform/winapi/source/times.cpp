#include <winapi/times.h>

#include <cerrno>
#include <cstdio>

namespace {

std::tm* record_of_this_thread() {
    thread_local std::tm record = {};
    return &record;
}

template <typename Convert>
std::tm* convert(const __time64_t* seconds, Convert&& conversion) {
    if (seconds == nullptr) {
        errno = EINVAL;
        return nullptr;
    }
    const std::time_t moment = *seconds;
    std::tm* const record = conversion(&moment, record_of_this_thread());
    if (record == nullptr) {
        errno = EINVAL;
    }
    return record;
}

constexpr const char* day_names[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr const char* month_names[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

}  // namespace

__time64_t _time64(__time64_t* seconds) {
    const __time64_t now = std::time(nullptr);
    if (seconds != nullptr) {
        *seconds = now;
    }
    return now;
}

std::tm* _localtime64(const __time64_t* seconds) {
    ::tzset();  // localtime_r may go by the zone of an earlier call
    return convert(seconds, &::localtime_r);
}

std::tm* _gmtime64(const __time64_t* seconds) { return convert(seconds, &::gmtime_r); }

char* _ctime64(const __time64_t* seconds) {
    thread_local char text[64];
    const std::tm* const record = _localtime64(seconds);
    if (record == nullptr || record->tm_year < -1900 || record->tm_year > 9999 - 1900) {
        errno = EINVAL;
        return nullptr;
    }
    std::snprintf(text, sizeof text, "%s %s %02d %02d:%02d:%02d %04d\n",
                  day_names[record->tm_wday % 7], month_names[record->tm_mon % 12], record->tm_mday,
                  record->tm_hour, record->tm_min, record->tm_sec, record->tm_year + 1900);
    return text;
}

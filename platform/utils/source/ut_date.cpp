#include <sys/stat.h>
#include <utils/ut_date.h>

#include <algorithm>
#include <cerrno>
#include <ctime>

namespace {

int store_date(std::time_t time, int count, int* date) {
    std::tm local{};
    if (::localtime_r(&time, &local) == nullptr) return errno;
    const int numbers[ut_date_size] = {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                                       local.tm_hour,        local.tm_min,     local.tm_sec};
    std::copy_n(numbers, std::clamp(count, 0, ut_date_size), date);
    return 0;
}

}  // namespace

int ut_date_current(int count, int* const date) {
    return store_date(std::time(nullptr), count, date);
}

int ut_date_local(long long seconds, int* const date) {
    return store_date(static_cast<std::time_t>(seconds), ut_date_size, date);
}

int fcdate(const utString& file, int* const date) {
    struct stat record;
    if (file.is_empty()) return ENOENT;
    if (::stat(file.c_str(), &record) != 0) return errno;
    return store_date(record.st_mtime, ut_date_size, date);
}

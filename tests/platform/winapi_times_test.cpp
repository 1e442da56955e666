// Calendar records and code pages.
#include <apsl/apCodePage.h>
#include <winapi/code_page.h>
#include <winapi/times.h>

#include <cerrno>
#include <clocale>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <thread>

#include "platform/winapi_fixtures.h"
#include "scoped_zone.h"

namespace {

// The days from 1970 to a date, counted one by one.
std::int64_t plain_days_until(int year, int month, int day) {
    constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const auto leaps = [](int y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; };
    std::int64_t days = day - 1;
    for (int y = 1970; y < year; ++y) {
        days += leaps(y) ? 366 : 365;
    }
    for (int y = year; y < 1970; ++y) {
        days -= leaps(y) ? 366 : 365;
    }
    for (int m = 1; m < month; ++m) {
        days += lengths[m - 1] + (m == 2 && leaps(year) ? 1 : 0);
    }
    return days;
}

}  // namespace

TEST(_time64, returns_the_seconds_twice) {
    __time64_t stored = 0;
    const __time64_t before = std::time(nullptr);
    const __time64_t now = _time64(&stored);
    EXPECT_EQ(now, stored);
    EXPECT_GE(now, before);
    EXPECT_LE(now, before + 5);
    EXPECT_GE(_time64(nullptr), now);
}

TEST(_gmtime64, agrees_with_counting_days_also_before_1970) {
    for (const int year : {1600, 1899, 1900, 1969, 1970, 1972, 2000, 2026, 2038, 2100, 3000}) {
        for (int month = 1; month <= 12; ++month) {
            const __time64_t seconds = plain_days_until(year, month, 28) * 86400 + 3661;
            const std::tm* record = _gmtime64(&seconds);
            ASSERT_NE(record, nullptr);
            EXPECT_EQ(record->tm_year, year - 1900);
            EXPECT_EQ(record->tm_mon, month - 1);
            EXPECT_EQ(record->tm_mday, 28);
            EXPECT_EQ(record->tm_hour, 1);
            EXPECT_EQ(record->tm_min, 1);
            EXPECT_EQ(record->tm_sec, 1);
        }
    }
}

TEST(_gmtime64, refuses_null_and_years_beyond_the_record) {
    EXPECT_EQ(_gmtime64(nullptr), nullptr);
    EXPECT_EQ(errno, EINVAL);
    const __time64_t too_late = std::numeric_limits<std::int64_t>::max();
    errno = 0;
    EXPECT_EQ(_gmtime64(&too_late), nullptr);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(_localtime64(&too_late), nullptr);
    EXPECT_EQ(_ctime64(&too_late), nullptr);
}

TEST(_localtime64, uses_the_present_zone_of_the_environment) {
    const __time64_t seconds = 0;
    {
        const ScopedZone zone("EAST-5");
        EXPECT_EQ(_localtime64(&seconds)->tm_hour, 5);
    }
    const ScopedZone zone("WEST3");
    EXPECT_EQ(_localtime64(&seconds)->tm_hour, 21);
    EXPECT_EQ(_localtime64(&seconds)->tm_mday, 31);
}

TEST(_localtime64, shares_its_record_with_gmtime_in_one_thread_and_with_no_other) {
    const __time64_t first = 0, second = 86400 * 40;
    const std::tm* record = _gmtime64(&first);
    EXPECT_EQ(record, _localtime64(&first));
    std::thread([&] { EXPECT_NE(_gmtime64(&second), record); }).join();
    EXPECT_EQ(record->tm_year, 70);
    EXPECT_EQ(record->tm_mon, 0);
}

TEST(_ctime64, writes_the_day_in_two_digits_whatever_the_locale) {
    const ScopedZone zone("UTC0");
    const __time64_t seconds = 315626635;
    EXPECT_STREQ(_ctime64(&seconds), "Wed Jan 02 02:03:55 1980\n");
    const __time64_t before = -1;
    EXPECT_STREQ(_ctime64(&before), "Wed Dec 31 23:59:59 1969\n");
    const __time64_t year_10000 = 253402300800;
    EXPECT_EQ(_ctime64(&year_10000), nullptr);
}

TEST(MultiByteToWideChar, measures_and_fills_with_and_without_the_nul) {
    const char* text = "a\xC3\xA9\xF0\x9F\x98\x80";
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, text, -1, nullptr, 0), 5);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, text, 7, nullptr, 0), 4);
    const std::unique_ptr<wchar_t[]> wide(new wchar_t[5]);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, text, -1, wide.get(), 5), 5);
    EXPECT_EQ(std::wstring_view(wide.get(), 5), std::wstring_view(L"a\x00E9\xD83D\xDE00\0", 5));
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, text, -1, wide.get(), 4), 0);
    EXPECT_EQ(GetLastError(), 122u);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "a\0b", 3, wide.get(), 5), 3);
}

TEST(MultiByteToWideChar, refuses_what_makes_no_sense) {
    wchar_t wide[4];
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "a", 0, wide, 4), 0);
    EXPECT_EQ(GetLastError(), 87u);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, nullptr, -1, wide, 4), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "a", -2, wide, 4), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "a", -1, wide, -1), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "a", -1, nullptr, 4), 0);
    EXPECT_EQ(MultiByteToWideChar(932, 0, "a", -1, wide, 4), 0);
    EXPECT_EQ(GetLastError(), 87u);
}

TEST(MultiByteToWideChar, invalid_bytes_are_substituted_unless_forbidden) {
    wchar_t wide[4];
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "\xFF", -1, wide, 4), 2);
    EXPECT_EQ(wide[0], L'\xFFFD');
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, "\xFF", -1, wide, 4), 0);
    EXPECT_EQ(GetLastError(), 1113u);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, "a", -1, wide, 4), 2);
}

TEST(MultiByteToWideChar, code_pages_0_and_3_are_the_threads) {
    wchar_t wide[4];
    for (const UINT code_page : {CP_ACP, CP_THREAD_ACP}) {
        EXPECT_EQ(MultiByteToWideChar(code_page, 0, "\xC3\xA9", 2, wide, 4), 1);
        ap_set_thread_code_page(ap_code_page_western);
        EXPECT_EQ(MultiByteToWideChar(code_page, 0, "\xC3\xA9", 2, wide, 4), 2);
        ap_set_thread_code_page(ap_code_page_utf8);
    }
}

TEST(WideCharToMultiByte, measures_fills_and_substitutes) {
    char bytes[8];
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"a\x00E9", -1, nullptr, 0, nullptr, nullptr), 4);
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"a\x00E9", -1, bytes, 8, nullptr, nullptr), 4);
    EXPECT_STREQ(bytes, "a\xC3\xA9");
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"a\x00E9", -1, bytes, 3, nullptr, nullptr), 0);
    EXPECT_EQ(GetLastError(), 122u);
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"\xD800", 1, bytes, 8, nullptr, nullptr), 3);
    EXPECT_EQ(std::string_view(bytes, 3), "\xEF\xBF\xBD");
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, L"\xD800", 1, bytes, 8, nullptr,
                                  nullptr),
              0);
    EXPECT_EQ(GetLastError(), 1113u);
    BOOL substituted = FALSE;
    EXPECT_EQ(WideCharToMultiByte(1252, 0, L"\x00E9\x4E2D", 2, bytes, 8, nullptr, &substituted), 2);
    EXPECT_EQ(std::string_view(bytes, 2), "\xE9?");
    EXPECT_TRUE(substituted);
    EXPECT_EQ(WideCharToMultiByte(1252, 0, L"a", 1, bytes, 8, "?", &substituted), 1);
    EXPECT_FALSE(substituted);
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"a", 1, bytes, 8, "?", nullptr), 0);
    EXPECT_EQ(GetLastError(), 87u);
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"a", 0, bytes, 8, nullptr, nullptr), 0);
}

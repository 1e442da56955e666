#include <nmktoolbox/files/nmkDateTime.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "comma_locale.h"
#include "scoped_zone.h"

namespace {

std::string stamp(const nmkDateTime& time) {
    return std::string(time.formatted("%Y-%m-%d %H:%M:%S").view());
}

std::string gmt_stamp(std::int64_t seconds) {
    nmkDateTime time(nmk_date_time_gmt);
    time.update(seconds);
    return stamp(time);
}

/// Days since 1970 of a date, counted one year and one month after the other.
std::int64_t plain_days(int year, int month, int day) {
    const auto leap = [](int y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; };
    const int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    std::int64_t days = day - 1;
    for (int y = 1970; y < year; ++y) days += leap(y) ? 366 : 365;
    for (int y = year; y < 1970; ++y) days -= leap(y) ? 366 : 365;
    for (int m = 1; m < month; ++m) days += m == 2 && leap(year) ? 29 : lengths[m - 1];
    return days;
}

}  // namespace

TEST(nmkDateTime, starts_at_1970_in_gmt) {
    nmkDateTime time(nmk_date_time_gmt);
    time.update(0);
    EXPECT_EQ(time.using_gmt(), 1);
    EXPECT_EQ(time.year(), 1970);
    EXPECT_EQ(time.month(), 1);
    EXPECT_EQ(time.day(), 1);
    EXPECT_EQ(time.hour(), 0);
    EXPECT_EQ(time.minute(), 0);
    EXPECT_EQ(time.second(), 0);
}

TEST(nmkDateTime, counts_months_from_1_and_years_as_people_do) {
    nmkDateTime time(nmk_date_time_gmt);
    time.update(plain_days(2026, 1, 15) * 86400 + 12 * 3600 + 34 * 60 + 56);
    EXPECT_EQ(time.year(), 2026);
    EXPECT_EQ(time.month(), 1);
    EXPECT_EQ(time.day(), 15);
    EXPECT_EQ(time.hour(), 12);
    EXPECT_EQ(time.minute(), 34);
    EXPECT_EQ(time.second(), 56);
    time.update(plain_days(2024, 12, 31) * 86400);
    EXPECT_EQ(time.month(), 12);
}

TEST(nmkDateTime, knows_every_first_and_last_day_of_a_month_in_its_range) {
    for (int year = 1902; year <= 2037; ++year) {
        for (int month = 1; month <= 12; ++month) {
            const std::int64_t midnight = plain_days(year, month, 1) * 86400;
            nmkDateTime time(nmk_date_time_gmt);
            time.update(midnight);
            EXPECT_EQ(time.year() * 10000 + time.month() * 100 + time.day(),
                      year * 10000 + month * 100 + 1);
            time.update(midnight - 1);
            EXPECT_EQ(time.hour() * 10000 + time.minute() * 100 + time.second(), 235959);
        }
    }
}

TEST(nmkDateTime, counts_back_before_1970) {
    EXPECT_EQ(gmt_stamp(-1), "1969-12-31 23:59:59");
    EXPECT_EQ(gmt_stamp(std::numeric_limits<std::int32_t>::min()), "1901-12-13 20:45:52");
}

TEST(nmkDateTime, wraps_in_32_bits_from_2038_on) {
    EXPECT_EQ(gmt_stamp(2147483647), "2038-01-19 03:14:07");
    EXPECT_EQ(gmt_stamp(2147483648), "1901-12-13 20:45:52");
    EXPECT_EQ(gmt_stamp(std::int64_t{1} << 32), "1970-01-01 00:00:00");
    EXPECT_EQ(gmt_stamp(-2147483649), "2038-01-19 03:14:07");
    EXPECT_EQ(gmt_stamp(std::numeric_limits<std::int64_t>::min()), "1970-01-01 00:00:00");
}

TEST(nmkDateTime, is_now_when_made_and_after_an_update) {
    const std::time_t before = std::time(nullptr);
    nmkDateTime gmt(nmk_date_time_gmt);
    nmkDateTime updated(nmk_date_time_gmt);
    updated.update(0);
    updated.update();
    const std::time_t after = std::time(nullptr);
    EXPECT_GE(stamp(gmt), gmt_stamp(before));
    EXPECT_LE(stamp(gmt), gmt_stamp(after));
    EXPECT_GE(stamp(updated), gmt_stamp(before));
    EXPECT_LE(stamp(updated), gmt_stamp(after));
}

TEST(nmkDateTime, is_in_the_present_zone_of_the_environment) {
    nmkDateTime local;
    EXPECT_EQ(local.using_gmt(), 0);
    const ScopedZone east("EST5EDT,M3.2.0,M11.1.0");
    local.update(0);
    EXPECT_EQ(stamp(local), "1969-12-31 19:00:00");
    EXPECT_EQ(local.formatted("%Z %z").view(), "EST -0500");
    local.update(plain_days(2026, 7, 1) * 86400);
    EXPECT_EQ(local.formatted("%H %Z").view(), "20 EDT");
    const ScopedZone other("ABC-3");
    local.update(0);
    EXPECT_EQ(stamp(local), "1970-01-01 03:00:00");
}

TEST(nmkDateTime, copies_the_whole_record) {
    const ScopedZone zone("ABC-3");
    nmkDateTime time;
    time.update(12345678);
    const nmkDateTime copy(time);
    nmkDateTime assigned(nmk_date_time_gmt);
    assigned = time;
    time.update(0);
    for (const nmkDateTime* each : {&copy, static_cast<const nmkDateTime*>(&assigned)}) {
        EXPECT_EQ(stamp(*each), "1970-05-24 00:21:18");
        EXPECT_EQ(each->formatted("%Z %z").view(), "ABC +0300");
        EXPECT_EQ(each->using_gmt(), 0);
    }
}

TEST(nmkDateTime, gives_one_blank_for_an_empty_or_null_format) {
    const nmkDateTime time(nmk_date_time_gmt);
    EXPECT_EQ(time.formatted("").view(), " ");
    EXPECT_EQ(time.formatted(nullptr).view(), " ");
}

TEST(nmkDateTime, formats_up_to_199_bytes_and_gives_one_blank_beyond) {
    const nmkDateTime time(nmk_date_time_gmt);
    EXPECT_EQ(time.formatted(std::string(199, 'x').c_str()).view(), std::string(199, 'x'));
    EXPECT_EQ(time.formatted(std::string(200, 'x').c_str()).view(), " ");
    EXPECT_EQ(time.formatted((std::string(196, 'x') + "%Y").c_str()).view(), " ");
    EXPECT_EQ(time.formatted((std::string(195, 'x') + "%Y").c_str()).length(), 199);
}

TEST(nmkDateTime, has_english_names_in_every_locale) {
    nmkDateTime time(nmk_date_time_gmt);
    time.update(0);
    const CommaLocale german;
    ASSERT_TRUE(german.holds_for_the_c_library());
    EXPECT_EQ(time.formatted("%A %d %B").view(), "Thursday 01 January");
}

TEST(nmkDateTime, gives_now_as_a_line) {
    const ScopedZone zone("UTC0");
    const std::time_t before = std::time(nullptr);
    const std::string line(nmkDateTime::now_str().view());
    const std::time_t after = std::time(nullptr);
    ASSERT_EQ(line.size(), 25U);
    EXPECT_EQ(line.back(), '\n');
    bool found = false;
    for (std::time_t moment = before; moment <= after; ++moment) {
        nmkDateTime time(nmk_date_time_gmt);
        time.update(moment);
        found = found || line == std::string(time.formatted("%a %b %d %H:%M:%S %Y\n").view());
    }
    EXPECT_TRUE(found) << line;
}

TEST(nmkDateTime, is_filled_on_several_threads_at_once) {
    const ScopedZone zone("UTC0");
    std::vector<std::thread> threads;
    std::vector<int> wrong(4, 0);
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([t, &wrong] {
            nmkDateTime local;
            nmkDateTime gmt(nmk_date_time_gmt);
            for (int i = 0; i < 2000; ++i) {
                const std::int64_t seconds = std::int64_t{t} * 400000000 + i * 97;
                local.update(seconds);
                gmt.update(seconds);
                const int of_day = static_cast<int>(seconds % 86400);
                const int second_of_day = gmt.hour() * 3600 + gmt.minute() * 60 + gmt.second();
                wrong[static_cast<std::size_t>(t)] +=
                    (second_of_day != of_day ? 1 : 0) + (stamp(local) != stamp(gmt) ? 1 : 0);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, std::vector<int>(4, 0));
}

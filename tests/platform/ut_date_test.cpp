// Dates as arrays of numbers.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <utils/ut_date.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <iterator>

#include "scoped_zone.h"
#include "scratch_directory.h"

TEST(ut_date_current, stores_the_local_time) {
    int date[ut_date_size] = {};
    const std::time_t before = std::time(nullptr);
    ASSERT_EQ(ut_date_current(ut_date_size, date), 0);
    std::tm fields{};
    fields.tm_year = date[0] - 1900;
    fields.tm_mon = date[1] - 1;
    fields.tm_mday = date[2];
    fields.tm_hour = date[3];
    fields.tm_min = date[4];
    fields.tm_sec = date[5];
    fields.tm_isdst = -1;
    EXPECT_GE(std::mktime(&fields), before);
    EXPECT_LE(std::mktime(&fields), std::time(nullptr));
}

TEST(ut_date_current, stores_as_many_numbers_as_are_asked_for) {
    int date[ut_date_size + 1] = {-1, -1, -1, -1, -1, -1, -1};
    EXPECT_EQ(ut_date_current(-1, date), 0);
    EXPECT_EQ(date[0], -1);
    EXPECT_EQ(ut_date_current(3, date), 0);
    EXPECT_NE(date[2], -1);
    EXPECT_EQ(date[3], -1);
    EXPECT_EQ(ut_date_current(100, date), 0);
    EXPECT_NE(date[5], -1);
    EXPECT_EQ(date[6], -1);
}

TEST(fcdate, stores_when_a_file_was_changed) {
    const ScratchDirectory scratch;
    const std::string name = scratch.file("f", "");
    const ScopedZone zone("UTC0");
    const timespec times[2] = {{1'000'000'000, 0}, {1'000'000'000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, name.c_str(), times, 0), 0);
    int date[ut_date_size] = {};
    ASSERT_EQ(fcdate(utString(name), date), 0);
    const int expected[] = {2001, 9, 9, 1, 46, 40};
    EXPECT_TRUE(std::equal(std::begin(date), std::end(date), expected));
}

TEST(fcdate, of_a_missing_file_fails_and_stores_nothing) {
    int date[ut_date_size] = {7};
    EXPECT_EQ(fcdate("/nonexistent/file", date), ENOENT);
    EXPECT_EQ(fcdate(utString(), date), ENOENT);
    EXPECT_EQ(date[0], 7);
}

TEST(ut_date_local, stores_the_date_of_a_time) {
    const ScopedZone zone("UTC-1");
    int date[ut_date_size] = {};
    ASSERT_EQ(ut_date_local(0, date), 0);
    const int expected[] = {1970, 1, 1, 1, 0, 0};
    EXPECT_TRUE(std::equal(std::begin(date), std::end(date), expected));
    EXPECT_NE(ut_date_local(0x7FFF'FFFF'FFFF'FFFF, date), 0) << "the year has no place";
    EXPECT_EQ(date[0], 1970);
}

// The forecast of the time left: from the last seconds, and only at a steady rate.

#include <nmkprogressbreak/progress_forecast.h>

#include <cmath>

#include <gtest/gtest.h>

namespace {

using nmk_progressbreak::ProgressForecast;

// Notes the progress of work ten times a second; `done(t)` is the fraction after t seconds.
template <class Done>
ProgressForecast after(double seconds, const Done& done) {
    ProgressForecast forecast;
    for (int tenth = 0; tenth <= std::lround(seconds * 10.0); ++tenth) {
        forecast.add(tenth / 10.0, done(tenth / 10.0));
    }
    return forecast;
}

double steady(double t) { return t / 40.0; }

}  // namespace

TEST(ProgressForecast, is_the_time_that_is_left_at_a_steady_rate) {
    const auto left = after(10.0, steady).seconds_left();
    ASSERT_TRUE(left.has_value());
    EXPECT_NEAR(*left, 30.0, 0.1);
}

TEST(ProgressForecast, is_empty_in_the_first_two_seconds) {
    EXPECT_FALSE(after(1.8, steady).seconds_left().has_value());
    EXPECT_TRUE(after(2.2, steady).seconds_left().has_value());
}

TEST(ProgressForecast, is_empty_while_the_work_speeds_up) {
    const auto faster = [](double t) { return t * t * t / 64000.0; };
    EXPECT_FALSE(after(10.0, faster).seconds_left().has_value());
}

TEST(ProgressForecast, forgets_a_slow_beginning) {
    // 8 seconds at a hundredth of the later rate, as annealing begins.
    const auto slow_first = [](double t) {
        return t < 8.0 ? t / 4000.0 : 0.002 + (t - 8.0) / 40.0;
    };
    EXPECT_FALSE(after(9.0, slow_first).seconds_left().has_value());
    const auto left = after(14.0, slow_first).seconds_left();
    ASSERT_TRUE(left.has_value());
    EXPECT_NEAR(*left, 40.0 * (1.0 - 0.152), 0.5);
}

TEST(ProgressForecast, is_empty_when_nothing_moves_and_when_all_is_done) {
    EXPECT_FALSE(after(10.0, [](double) { return 0.5; }).seconds_left().has_value());
    EXPECT_FALSE(
        after(10.0, [](double t) { return std::fmin(t / 8.0, 1.0); }).seconds_left().has_value());
    EXPECT_FALSE(ProgressForecast().seconds_left().has_value());
}

TEST(ProgressForecast, is_empty_after_it_is_cleared) {
    ProgressForecast forecast = after(10.0, steady);
    forecast.clear();
    EXPECT_FALSE(forecast.seconds_left().has_value());
}

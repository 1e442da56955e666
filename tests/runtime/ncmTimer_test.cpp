#include <apsl/apHighResTime.h>
#include <gtest/gtest.h>
#include <nmktoolbox/runtime/ncmTimer.h>

#include <chrono>
#include <sstream>
#include <string>
#include <thread>
#include <utility>

namespace {

void wait_a_moment() { std::this_thread::sleep_for(std::chrono::milliseconds(2)); }

std::string printed(const ncmTimer& timer) {
    std::ostringstream stream;
    stream << timer;
    return stream.str();
}

struct PrintCase {
    const char* name;
    std::string form;
    std::string expected;
};

std::ostream& operator<<(std::ostream& stream, const PrintCase& each) {
    return stream << each.name;
}

}  // namespace

TEST(ncmTimer, starts_stopped_at_zero) {
    ncmTimer timer(nullptr);
    EXPECT_EQ(timer.get(), 0.0);
    EXPECT_EQ(timer.stop(), 0.0);
}

TEST(ncmTimer, accumulates_the_time_between_start_and_stop) {
    ncmTimer timer(nullptr);
    timer.start();
    wait_a_moment();
    const double first = timer.stop();
    EXPECT_GE(first, 0.002);
    wait_a_moment();
    EXPECT_EQ(timer.get(), first);
    timer.start();
    wait_a_moment();
    EXPECT_GE(timer.stop(), first + 0.002);
}

TEST(ncmTimer, the_time_while_it_is_stopped_does_not_count) {
    ncmTimer timer(nullptr);
    timer.start();
    const double first = timer.stop();
    wait_a_moment();
    const double begin = apHighResTime::time();
    timer.start();
    const double both = timer.stop();
    EXPECT_LE(both - first, apHighResTime::time() - begin + 1e-6);
}

TEST(ncmTimer, stop_on_a_stopped_timer_returns_the_accumulated_time_and_changes_nothing) {
    ncmTimer timer(nullptr);
    timer.start();
    wait_a_moment();
    const double accumulated = timer.stop();
    wait_a_moment();
    EXPECT_EQ(timer.stop(), accumulated);
    EXPECT_EQ(timer.get(), accumulated);
}

TEST(ncmTimer, starting_a_running_timer_changes_nothing) {
    const double begin = apHighResTime::time();
    ncmTimer timer(nullptr);
    timer.start();
    wait_a_moment();
    timer.start();
    EXPECT_GE(timer.get(), 0.002);
    EXPECT_LE(timer.stop(), apHighResTime::time() - begin);
}

TEST(ncmTimer, get_includes_the_time_of_a_running_timer) {
    ncmTimer timer(nullptr);
    timer.start();
    const double first = timer.get();
    wait_a_moment();
    EXPECT_GE(timer.get(), first + 0.002);
}

TEST(ncmTimer, reset_on_a_running_timer_keeps_it_running) {
    ncmTimer timer(nullptr);
    timer.start();
    wait_a_moment();
    const double begin = apHighResTime::time();
    timer.reset();
    EXPECT_LE(timer.get(), apHighResTime::time() - begin);
    wait_a_moment();
    EXPECT_GE(timer.stop(), 0.002);
}

TEST(ncmTimer, reset_on_a_stopped_timer_leaves_it_stopped_at_zero) {
    ncmTimer timer(nullptr);
    timer.start();
    wait_a_moment();
    timer.stop();
    timer.reset();
    wait_a_moment();
    EXPECT_EQ(timer.get(), 0.0);
    EXPECT_EQ(timer.stop(), 0.0);
}

TEST(ncmTimer, a_copy_has_the_format_the_time_and_the_running_state) {
    ncmTimer original("%.1f s");
    original.start();
    const ncmTimer running_copy(original);
    wait_a_moment();
    EXPECT_GE(running_copy.get(), 0.002);
    original.stop();
    ncmTimer assigned(nullptr);
    assigned = original;
    EXPECT_EQ(assigned.get(), original.get());
    EXPECT_EQ(printed(assigned), printed(original));
    const ncmTimer& same = assigned;
    assigned = same;
    EXPECT_EQ(printed(assigned), printed(original));
    assigned = ncmTimer(nullptr);
    EXPECT_EQ(printed(assigned), "0");
}

TEST(ncmTimer, keeps_a_copy_of_the_format) {
    std::string form = "%.1f s";
    const ncmTimer timer(form.c_str());
    form = "overwritten";
    EXPECT_EQ(printed(timer), "0.0 s");
}

TEST(ncmTimer, prints_the_plain_double_without_a_format) {
    const ncmTimer timer(nullptr);
    EXPECT_EQ(printed(timer), "0");
    std::ostringstream stream;
    stream.precision(2);
    stream << std::fixed << timer;
    EXPECT_EQ(stream.str(), "0.00");
}

TEST(ncmTimer, prints_the_value_of_get_while_it_runs) {
    ncmTimer timer("%.9f");
    timer.start();
    wait_a_moment();
    EXPECT_GE(std::stod(printed(timer)), 0.002);
}

class ncmTimer_print : public testing::TestWithParam<PrintCase> {};

TEST_P(ncmTimer_print, writes_the_time_in_the_format) {
    EXPECT_EQ(printed(ncmTimer(GetParam().form.c_str())), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    each, ncmTimer_print,
    testing::Values(
        PrintCase{"one_conversion", "took %.3f seconds", "took 0.000 seconds"},
        PrintCase{"the_empty_format", "", ""},
        PrintCase{"a_percent_sign", "100%% in %.0f", "100% in 0"},
        PrintCase{"no_conversion", "done", "done"},
        PrintCase{"a_conversion_without_an_argument", "%.1f and %s", "0.0 and %s"},
        PrintCase{"a_text_of_1023_characters", std::string(1023, 'x'), std::string(1023, 'x')},
        PrintCase{"a_longer_text_is_cut_at_1023_characters", std::string(2000, 'x') + "%f",
                  std::string(1023, 'x')},
        PrintCase{"a_wide_field_is_cut_at_1023_characters", "%2000f", std::string(1023, ' ')}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(ncmTimer, up_seconds_are_0_at_the_first_call_and_counted_on_the_alarm_thread) {
    const double begin = apHighResTime::time();
    EXPECT_EQ(ncmTimer::get_up_seconds(), 0);
    int seconds = 0;
    while ((seconds = ncmTimer::get_up_seconds()) < 1 && apHighResTime::time() - begin < 20.0) {
        wait_a_moment();
    }
    EXPECT_EQ(seconds, 1);
    EXPECT_GE(apHighResTime::time() - begin, 0.99);
}

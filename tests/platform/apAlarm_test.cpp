// The repeated callbacks, and the clock in its older form.
#include <apsl/apAlarm.h>
#include <apsl/apHighResTime.h>
#include <apsl/timedp.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace {

std::atomic<int> due_calls{0};
std::atomic<int> cancelled_calls{0};
std::atomic<double> first_call{0.0};

void count_call(apAlarmHandlerInfo info) {
    if (info == ap_alarm_cancelled) {
        ++cancelled_calls;
    } else if (++due_calls == 1) {
        first_call = apHighResTime::time();
    }
}

// Waits until `count` is reached, or gives up after `seconds`.
bool reaches(const std::atomic<int>& counter, int count, double seconds) {
    const double begin = apHighResTime::time();
    while (counter < count && apHighResTime::time() - begin < seconds) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return counter >= count;
}

class apAlarmTest : public testing::Test {
  protected:
    apAlarmTest() { due_calls = cancelled_calls = 0; }
    ~apAlarmTest() override { apAlarm::cancel_alarm_calls(count_call); }
};

}  // namespace

TEST_F(apAlarmTest, calls_the_handler_on_its_thread_after_each_period) {
    const double begin = apHighResTime::time();
    ASSERT_EQ(apAlarm::book_alarm_call(1, count_call), 0);
    ASSERT_TRUE(reaches(due_calls, 2, 20.0));
    EXPECT_GE(first_call - begin, 0.99);
    EXPECT_GE(apHighResTime::time() - begin, 1.99);
}

TEST_F(apAlarmTest, calls_the_handler_of_a_cancelled_booking_once_more) {
    ASSERT_EQ(apAlarm::book_alarm_call(3600, count_call), 0);
    ASSERT_EQ(apAlarm::book_alarm_call(7200, count_call), 0);
    EXPECT_EQ(apAlarm::cancel_alarm_calls(count_call), 2);
    EXPECT_EQ(cancelled_calls, 2);
    EXPECT_EQ(apAlarm::cancel_alarm_calls(count_call), 0);
    EXPECT_EQ(due_calls, 0);
}

TEST_F(apAlarmTest, rejects_a_null_handler_and_a_period_below_one_second) {
    EXPECT_EQ(apAlarm::book_alarm_call(1, nullptr), -1);
    EXPECT_EQ(apAlarm::book_alarm_call(0, count_call), -1);
    EXPECT_EQ(apAlarm::book_alarm_call(-5, count_call), -1);
    EXPECT_EQ(apAlarm::cancel_alarm_calls(count_call), 0);
}

TEST(timedp, stores_the_time_of_the_clock) {
    const double before = apHighResTime::time();
    double now = 0.0;
    timedp(&now);
    EXPECT_GE(now, before);
    EXPECT_LE(now, apHighResTime::time());
    timedp(nullptr);
}

// time_break: the end of a sorter whose time is over, by a clock of the test's own.

#include "commands/order/time_break.h"

#include <gtest/gtest.h>

#include <cmath>

#include "app/commands/order/random_jobs.h"
#include "commands/order/sorted_run.h"

namespace nmk_order {
namespace {

TimeBreak::Clock::time_point now;

// A second passes with each look.
TimeBreak::Clock::time_point clock_of_tests() { return now += std::chrono::seconds(1); }

TEST(time_break, requests_a_stop_when_its_seconds_are_over) {
    TimeBreak time(2.5, &clock_of_tests);
    EXPECT_EQ(time.increment(), 0);
    EXPECT_EQ(time.jump_to(7.0), 0);
    EXPECT_NE(time.increment(), 0);
    EXPECT_NE(time.jump_to(8.0), 0);
}

TEST(time_break, requests_it_at_once_for_a_time_that_is_over_or_not_a_number) {
    for (const double seconds : {0.0, -1.0, std::nan("")}) {
        TimeBreak time(seconds, &clock_of_tests);
        EXPECT_NE(time.increment(), 0) << seconds;
    }
}

TEST(time_break, never_requests_it_without_a_number) {
    TimeBreak time({}, &clock_of_tests);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(time.increment(), 0);
}

TEST(time_break, leaves_the_rest_to_the_sorter_in_the_order_that_it_had) {
    const nmk_job::MachiningJob job = job_of({hole(9, 0), hole(1, 0), hole(5, 0), hole(7, 0)});
    TimeBreak time(2.5, &clock_of_tests);
    const SortedCuts sorted = sorted_cuts(job.items, nmk_job::order_of_file(job),
                                          nmkSortTypeClosest, giPoint3(0, 0, 0), 0.0, &time);
    EXPECT_TRUE(sorted.stopped);
    EXPECT_EQ(sorted.cuts.size(), 4U);
    EXPECT_EQ(sorted.cuts.front().item, 1U);
}

}  // namespace
}  // namespace nmk_order

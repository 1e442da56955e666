// The reporter that reports nothing, and one that requests a stop.

#include <nmkprogressbreak/nmkProgressBreak.h>

#include <gtest/gtest.h>

namespace {

class Silent : public nmkProgressBreak {};

class StopsAtThree : public nmkProgressBreak {
  public:
    int increment() override { return ++steps >= 3 ? 1 : 0; }
    int steps = 0;
};

}  // namespace

TEST(nmkProgressBreak, never_requests_a_stop_by_itself) {
    Silent silent;
    nmkProgressBreak& progress = silent;
    EXPECT_EQ(progress.send_progress_bar_to_0("Sorting"), 0);
    progress.set_range(1.0);
    EXPECT_EQ(progress.increment(), 0);
    EXPECT_EQ(progress.increment(), 0);
    EXPECT_EQ(progress.jump_to(1e9), 0);
    EXPECT_EQ(progress.send_progress_bar_to_100(), 0);
}

TEST(nmkProgressBreak, a_derived_reporter_stops_the_work_by_what_it_returns) {
    StopsAtThree stops;
    nmkProgressBreak& progress = stops;
    int steps = 1;
    while (progress.increment() == 0) ++steps;
    EXPECT_EQ(steps, 3);
}

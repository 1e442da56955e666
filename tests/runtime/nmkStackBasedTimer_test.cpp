#include <apsl/apHighResTime.h>
#include <gtest/gtest.h>
#include <nmktoolbox/runtime/nmkStackBasedTimer.h>

#include <chrono>
#include <memory>
#include <regex>
#include <string>
#include <thread>

namespace {

// What is printed while `work` runs, with each number of seconds replaced by "#".
template <class Work>
std::string printed_by(const Work& work) {
    testing::internal::CaptureStdout();
    work();
    const std::string text = testing::internal::GetCapturedStdout();
    const std::regex seconds(": [0-9.]+(e-[0-9]+)? seconds\n");
    return std::regex_replace(text, seconds, ": # seconds\n");
}

using Timer = nmkStackBasedTimer;

}  // namespace

TEST(nmkStackBasedTimer, prints_an_empty_line_and_its_own_line) {
    EXPECT_EQ(printed_by([] { const Timer timer("alone"); }), "\nalone: # seconds\n");
}

TEST(nmkStackBasedTimer, prints_the_seconds_from_its_construction_to_its_end) {
    const double begin = apHighResTime::time();
    testing::internal::CaptureStdout();
    {
        const Timer timer("timer");
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    const double longest = apHighResTime::time() - begin;
    const std::string text = testing::internal::GetCapturedStdout();
    const double seconds = std::stod(text.substr(text.find(':') + 1));
    EXPECT_GE(seconds, 0.00199);  // the number is printed with six digits
    EXPECT_LE(seconds, longest + 0.00001);
}

TEST(nmkStackBasedTimer, prints_a_tree_with_children_in_the_order_in_which_they_end) {
    const std::string text = printed_by([] {
        const Timer outer("outer");
        { const Timer first("first"); }
        {
            const Timer second("second");
            const Timer inner("inner");
        }
        const Timer third("third");
    });
    EXPECT_EQ(text,
              "\nouter: # seconds\n"
              "->first: # seconds\n"
              "->second: # seconds\n"
              "-->inner: # seconds\n"
              "->third: # seconds\n");
}

TEST(nmkStackBasedTimer, at_depth_3_two_hyphens_and_an_angle_bracket_precede_the_name) {
    const std::string text = printed_by([] {
        const Timer one("one");
        const Timer two("two");
        const Timer three("three");
    });
    EXPECT_NE(text.find("\n-->three: "), std::string::npos) << text;
}

TEST(nmkStackBasedTimer, prints_nothing_before_the_outermost_timer_ends) {
    auto outer = std::make_unique<Timer>("outer");
    EXPECT_EQ(printed_by([] { const Timer inner("inner"); }), "");
    EXPECT_EQ(printed_by([&] { outer.reset(); }), "\nouter: # seconds\n->inner: # seconds\n");
}

TEST(nmkStackBasedTimer, starts_a_new_report_after_the_outermost_timer_has_ended) {
    EXPECT_NE(printed_by([] { const Timer timer("first"); }), "");
    EXPECT_EQ(printed_by([] { const Timer timer("second"); }), "\nsecond: # seconds\n");
}

TEST(nmkStackBasedTimer, destroyed_out_of_turn_it_prints_nothing) {
    auto outer = std::make_unique<Timer>("outer");
    auto inner = std::make_unique<Timer>("inner");
    EXPECT_EQ(printed_by([&] { outer.reset(); }), "");
    EXPECT_EQ(printed_by([&] { inner.reset(); }), "\ninner: # seconds\n");
}

TEST(nmkStackBasedTimer, destroyed_out_of_turn_it_leaves_no_dangling_pointer) {
    auto first = std::make_unique<Timer>("first");
    auto second = std::make_unique<Timer>("second");
    auto third = std::make_unique<Timer>("third");
    const std::string text = printed_by([&] {
        second.reset();
        third.reset();  // its line goes to the first timer
        first.reset();
    });
    EXPECT_EQ(text, "\nfirst: # seconds\n->third: # seconds\n");
}

TEST(nmkStackBasedTimer, lines_of_a_timer_that_is_destroyed_out_of_turn_are_lost) {
    auto outer = std::make_unique<Timer>("outer");
    { const Timer nested("nested"); }
    auto inner = std::make_unique<Timer>("inner");
    EXPECT_EQ(printed_by([&] { outer.reset(); }), "");
    EXPECT_EQ(printed_by([&] { inner.reset(); }), "\ninner: # seconds\n");
}

TEST(nmkStackBasedTimer, a_line_is_a_format_so_two_percent_signs_print_one) {
    EXPECT_EQ(printed_by([] { const Timer timer("100%%"); }), "\n100%: # seconds\n");
}

TEST(nmkStackBasedTimer, conversions_in_a_name_do_not_crash) {
    const std::string text = printed_by([] { const Timer timer("%s%n%d %999999999d %*d"); });
    EXPECT_NE(text.find(": # seconds\n"), std::string::npos) << text;
}

TEST(nmkStackBasedTimer, the_null_string_is_a_name_without_characters) {
    EXPECT_EQ(printed_by([] { const Timer timer{utString()}; }), "\n: # seconds\n");
}

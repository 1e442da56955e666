#include <gtest/gtest.h>
#include <nmktoolbox/runtime/nmkStackTimer.h>
#include <nmktoolbox/runtime/nmkStackTimerEventLogger.h>
#include <nmktoolbox/runtime/nmkStackTimerSection.h>
#include <scratch_directory.h>

#include <malloc.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <locale>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

Lines lines_of(const std::string& text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

std::string printed() {
    testing::internal::CaptureStdout();
    nmkStackTimer::print_all();
    return testing::internal::GetCapturedStdout();
}

Lines file_lines(const std::filesystem::path& path) {
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    return lines_of(text.str());
}

// The seconds of a line "<name> = <seconds>".
double seconds_in(const std::string& line) { return std::stod(line.substr(line.rfind('=') + 1)); }

void wait_a_moment() { std::this_thread::sleep_for(std::chrono::milliseconds(2)); }

void on_another_thread(const std::function<void()>& work) { std::thread(work).join(); }

// Writes numbers with a comma and with groups of three digits.
struct CommaNumbers : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

// Timing is enabled in the test, and nothing is recorded before and after it.
class nmkStackTimerTest : public testing::Test {
  protected:
    nmkStackTimerTest() {
        nmkStackTimer::reset_all();
        nmkStackTimer::enable();
    }
    ~nmkStackTimerTest() override {
        nmkStackTimer::disable();
        nmkStackTimer::reset_all();
    }
};

class nmkStackTimer_print_all : public nmkStackTimerTest {};
class nmkStackTimer_write_to_file : public nmkStackTimerTest {
  protected:
    utString file(const char* name) const { return utString(path(name).string()); }
    std::filesystem::path path(const char* name) const {
        return std::filesystem::path(m_folder.path()) / name;
    }

  private:
    ScratchDirectory m_folder;
};

}  // namespace

TEST(nmkStackTimer, records_nothing_until_it_is_enabled) {
    nmkStackTimer::reset_all();
    EXPECT_FALSE(nmkStackTimer::s_timing_enabled);
    { const nmkStackTimerSection section("section"); }
    EXPECT_EQ(printed(), "");
    nmkStackTimer::enable();
    EXPECT_TRUE(nmkStackTimer::s_timing_enabled);
    { const nmkStackTimerSection section("section"); }
    nmkStackTimer::disable();
    EXPECT_FALSE(nmkStackTimer::s_timing_enabled);
    EXPECT_EQ(lines_of(printed()).size(), 1U);
    nmkStackTimer::reset_all();
}

TEST_F(nmkStackTimer_print_all, prints_name_and_seconds_with_six_decimals) {
    {
        const nmkStackTimerSection section("a name");
        wait_a_moment();
    }
    const std::string text = printed();
    EXPECT_TRUE(std::regex_match(text, std::regex("a name = [0-9]+\\.[0-9]{6}\n"))) << text;
    EXPECT_GE(seconds_in(text), 0.002);
}

TEST_F(nmkStackTimer_print_all, sums_the_sections_of_one_name) {
    const char* const name = "repeated";
    for (int i = 0; i < 3; ++i) {
        const nmkStackTimerSection section(name);
        wait_a_moment();
    }
    const Lines lines = lines_of(printed());
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_GE(seconds_in(lines[0]), 0.006);
}

TEST_F(nmkStackTimer_print_all, a_nested_section_counts_for_itself_and_for_its_parent) {
    static const char names[2][8] = {"outer", "inner"};
    {
        const nmkStackTimerSection outer(names[0]);
        const nmkStackTimerSection inner(names[1]);
        wait_a_moment();
    }
    const Lines lines = lines_of(printed());
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_GE(seconds_in(lines[1]), 0.002);
    EXPECT_GE(seconds_in(lines[0]), seconds_in(lines[1]));
}

TEST_F(nmkStackTimer_print_all, orders_names_by_address_and_keeps_equal_texts_apart) {
    static const char names[3][8] = {"zebra", "same", "same"};
    for (const int i : {2, 0, 1}) const nmkStackTimerSection section(names[i]);
    const Lines lines = lines_of(printed());
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_TRUE(lines[0].starts_with("zebra = "));
    EXPECT_TRUE(lines[1].starts_with("same = "));
    EXPECT_TRUE(lines[2].starts_with("same = "));
}

TEST_F(nmkStackTimer_print_all, a_name_is_an_argument_and_not_a_format) {
    { const nmkStackTimerSection section("100%s %n %d"); }
    EXPECT_TRUE(printed().starts_with("100%s %n %d = "));
}

TEST_F(nmkStackTimer_print_all, sections_that_are_still_open_are_dropped) {
    const nmkStackTimerSection open("open");
    { const nmkStackTimerSection closed("closed"); }
    const Lines lines = lines_of(printed());
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(lines[0].starts_with("closed = "));
}

TEST_F(nmkStackTimer_print_all, an_end_without_a_start_is_ignored) {
    {
        const nmkStackTimerSection reset_inside("reset inside");
        nmkStackTimer::reset_all();
    }
    { const nmkStackTimerSection section("section"); }
    const Lines lines = lines_of(printed());
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(lines[0].starts_with("section = "));
}

TEST_F(nmkStackTimer_print_all, an_end_closes_no_section_of_another_thread) {
    nmkStackTimerEventLogger first, second;
    first.add("open", 1.0);
    second.add(nullptr, 2.0);
    EXPECT_EQ(printed(), "");
}

TEST_F(nmkStackTimer_print_all, prints_nothing_after_reset_all) {
    { const nmkStackTimerSection section("section"); }
    on_another_thread([] { const nmkStackTimerSection section("other"); });
    nmkStackTimer::reset_all();
    EXPECT_EQ(printed(), "");
}

TEST_F(nmkStackTimer_print_all, adds_up_the_sections_of_all_threads) {
    static const char name[] = "work";
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] {
            const nmkStackTimerSection section(name);
            wait_a_moment();
        });
    }
    for (std::thread& thread : threads) thread.join();
    const Lines lines = lines_of(printed());
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_GE(seconds_in(lines[0]), 0.008);
}

TEST_F(nmkStackTimerTest, threads_record_many_events_at_the_same_time) {
    static const char names[4][4] = {"a", "b", "c", "d"};
    std::vector<std::thread> threads;
    for (const char* const name : names) {
        threads.emplace_back([name] {
            for (int i = 0; i < 5000; ++i) const nmkStackTimerSection section(name);
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(lines_of(printed()).size(), 4U);
}

TEST_F(nmkStackTimerTest, a_thread_that_ends_with_no_events_leaves_no_log_behind) {
    const auto record_and_reset = [] {
        { const nmkStackTimerSection section("section"); }
        nmkStackTimer::reset_all();
    };
    on_another_thread(record_and_reset);  // what the first thread of a process allocates
    const std::size_t before = mallinfo2().uordblks;
    for (int i = 0; i < 200; ++i) on_another_thread(record_and_reset);
    const std::size_t after = mallinfo2().uordblks;
    EXPECT_LT(after, before + 200 * sizeof(nmkStackTimerEventcoPageArr));
}

TEST_F(nmkStackTimerTest, a_logger_makes_pages_of_256_events) {
    nmkStackTimerEventLogger logger;
    EXPECT_EQ(logger.times().size(), 0);
    EXPECT_EQ(logger.times().page_size(), 256);
}

TEST_F(nmkStackTimerTest, the_events_of_a_thread_that_has_ended_are_reported) {
    on_another_thread([] { const nmkStackTimerSection section("ended"); });
    EXPECT_TRUE(printed().starts_with("ended = "));
}

TEST_F(nmkStackTimerTest, a_logger_adds_events_in_order) {
    nmkStackTimerEventLogger logger;
    logger.add("name", 1.5);
    logger.add(nullptr, 2.0);
    ASSERT_EQ(logger.times().size(), 2);
    EXPECT_STREQ(logger.times()[0].name, "name");
    EXPECT_EQ(logger.times()[0].time, 1.5);
    EXPECT_EQ(logger.times()[1].name, nullptr);
    EXPECT_EQ(printed(), "name = 0.500000\n");
}

TEST_F(nmkStackTimerTest, a_section_ends_although_timing_was_disabled_meanwhile) {
    {
        const nmkStackTimerSection section("section");
        nmkStackTimer::disable();
    }
    EXPECT_EQ(lines_of(printed()).size(), 1U);
}

TEST_F(nmkStackTimerTest, a_section_that_began_while_timing_was_disabled_records_no_end) {
    {
        const nmkStackTimerSection outer("outer");
        nmkStackTimer::disable();
        {
            const nmkStackTimerSection inner("inner");
            nmkStackTimer::enable();
        }
        wait_a_moment();
    }
    const Lines lines = lines_of(printed());
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(lines[0].starts_with("outer = "));
    EXPECT_GE(seconds_in(lines[0]), 0.002);
}

TEST_F(nmkStackTimerTest, a_section_without_a_name_records_nothing) {
    { const nmkStackTimerSection section(nullptr); }
    EXPECT_EQ(printed(), "");
}

TEST_F(nmkStackTimer_write_to_file, writes_a_line_for_each_begin_and_each_end) {
    {
        const nmkStackTimerSection outer("outer");
        const nmkStackTimerSection inner("inner %s");
    }
    nmkStackTimer::write_to_file(file("x"));
    const Lines lines = file_lines(path("x.0"));
    ASSERT_EQ(lines.size(), 4U);
    const std::string time = "[0-9]+\\.[0-9]{6} ";
    EXPECT_TRUE(std::regex_match(lines[0], std::regex(time + "outer"))) << lines[0];
    EXPECT_TRUE(std::regex_match(lines[1], std::regex(time + "inner %s"))) << lines[1];
    EXPECT_TRUE(std::regex_match(lines[2], std::regex(time + "END"))) << lines[2];
    EXPECT_TRUE(std::regex_match(lines[3], std::regex(time + "END"))) << lines[3];
    EXPECT_LE(std::stod(lines[0]), std::stod(lines[3]));
}

TEST_F(nmkStackTimer_write_to_file, always_writes_x_0_which_holds_the_last_thread) {
    { const nmkStackTimerSection section("main"); }
    on_another_thread([] { const nmkStackTimerSection section("first"); });
    on_another_thread([] { const nmkStackTimerSection section("second"); });
    nmkStackTimer::write_to_file(file("x"));
    const Lines lines = file_lines(path("x.0"));
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(lines[0].ends_with(" second")) << lines[0];
    EXPECT_FALSE(std::filesystem::exists(path("x.1")));
    EXPECT_FALSE(std::filesystem::exists(path("x")));
}

TEST_F(nmkStackTimer_write_to_file, a_thread_without_events_leaves_the_file_of_another_alone) {
    nmkStackTimerEventLogger first, second;
    first.add("section", 1.0);
    nmkStackTimer::write_to_file(file("x"));
    EXPECT_EQ(file_lines(path("x.0")), (Lines{"1.000000 section"}));
}

TEST_F(nmkStackTimer_write_to_file, writes_no_file_when_there_are_no_events) {
    const nmkStackTimerEventLogger without_events;
    nmkStackTimer::write_to_file(file("x"));
    EXPECT_FALSE(std::filesystem::exists(path("x.0")));
}

TEST_F(nmkStackTimer_write_to_file, a_file_that_cannot_be_opened_is_not_reported) {
    { const nmkStackTimerSection section("section"); }
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    nmkStackTimer::write_to_file(file("missing/x"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(nmkStackTimer_write_to_file, does_not_depend_on_the_locale) {
    nmkStackTimerEventLogger logger;
    logger.add("section", 1234567.25);
    const std::locale before =
        std::locale::global(std::locale(std::locale::classic(), new CommaNumbers));
    nmkStackTimer::write_to_file(file("x"));
    std::locale::global(before);
    EXPECT_EQ(file_lines(path("x.0")), (Lines{"1234567.250000 section"}));
}

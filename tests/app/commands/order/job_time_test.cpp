// job_time: the time of a job by its parts, and the command that prints it.

#include "commands/order/job_time.h"

#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <vector>

#include "app/shell/command_runner.h"
#include "scratch_directory.h"

namespace nmk_order {
namespace {

// Down 60 mm a minute, along slots 120; z moves 10 mm a second with 100 mm/s2, fast from 1 mm on.
const MachiningOptions machining{3.0, 5.0, 60.0, 120.0, 20.0};
const RapidMoves rapids{{6000.0, 6000.0, 600.0}, {1000.0, 1000.0, 100.0}};

JobTime time_of(const nmk_job::JobItem& item, bool reversed) {
    nmk_job::MachiningJob job;
    job.tools.push_back({"T1", 1.0});
    job.items.push_back(item);
    return job_time(job, nmk_job::JobOrder{{0, reversed}}, machining, rapids, 7.0, 2);
}

TEST(job_time, of_a_hole_is_a_plunge_and_a_rapid_up) {
    const JobTime time = time_of({giPoint3(30.0, 40.0, 0.0), {}, 0}, false);
    EXPECT_DOUBLE_EQ(time.rapids, 7.0);
    EXPECT_DOUBLE_EQ(time.plunges, 8.0);
    EXPECT_DOUBLE_EQ(time.slots, 0.0);
    EXPECT_DOUBLE_EQ(time.retracts, 0.8 + 0.1);
    EXPECT_DOUBLE_EQ(time.tool_changes, 40.0);
    EXPECT_DOUBLE_EQ(time.total(), 7.0 + 8.0 + 0.9 + 40.0);
}

TEST(job_time, of_a_slot_goes_down_at_one_end_and_up_at_the_other) {
    const nmk_job::JobItem slot{giPoint3(0.0, 0.0, 1.0), giPoint3(3.0, 0.0, -3.0), 0};
    const JobTime forwards = time_of(slot, false);
    EXPECT_DOUBLE_EQ(forwards.plunges, 7.0);
    EXPECT_DOUBLE_EQ(forwards.slots, 2.5);
    EXPECT_DOUBLE_EQ(forwards.retracts, 1.1 + 0.1);
    const JobTime backwards = time_of(slot, true);
    EXPECT_DOUBLE_EQ(backwards.plunges, 11.0);
    EXPECT_DOUBLE_EQ(backwards.slots, 2.5);
    EXPECT_DOUBLE_EQ(backwards.retracts, 0.7 + 0.1);
}

TEST(job_time, is_shown_as_hours_minutes_and_seconds) {
    EXPECT_EQ(clock_text(0.0), "0:00:00");
    EXPECT_EQ(clock_text(59.4), "0:00:59");
    EXPECT_EQ(clock_text(59.6), "0:01:00");
    EXPECT_EQ(clock_text(3723.0), "1:02:03");
    EXPECT_EQ(clock_text(360000.0), "100:00:00");
    EXPECT_EQ(clock_text(1e300), clock_text(1e18));
}

using Words = std::vector<std::string>;

Words with(Words words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

const Words heights = {"--depth", "3", "--retract", "5", "--plunge-feed", "60"};
const Words slow_z = {"--rapid", "6000,6000,600", "--acceleration", "1000,1000,100"};

class job_time_command : public testing::Test {
  protected:
    Words order(const std::string& text, const Words& more) const {
        return with({"order", folder.file("a.csv", text)}, more);
    }

    ScratchDirectory folder;
};

const char* const two_tools = "x,y,tool\n0,0,A\n30,0,A\n0,0,B\n";

TEST_F(job_time_command, prints_the_time_before_and_after_with_its_parts) {
    const nmk_shell::Printed printed = nmk_shell::run(
        order(two_tools, with(with(heights, slow_z), {"--tool-change-seconds", "30"})));
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_NE(printed.out.find("\nJob: 0:00:57 before, 0:00:57 after (rapids 0.4 s, plunges 24.0 "
                               "s, slots 0.0 s,\nretracts 2.7 s, 1 tool change 30.0 s).\n"),
              std::string::npos)
        << printed.out;
}

TEST_F(job_time_command, json_has_the_parts_in_seconds) {
    const auto json = nlohmann::json::parse(
        nmk_shell::run(order(two_tools, with(with(heights, slow_z), {"--json"}))).out);
    const auto& after = json["job_seconds"]["after"];
    EXPECT_DOUBLE_EQ(after["plunges"], 24.0);
    EXPECT_DOUBLE_EQ(after["tool_changes"], 0.0);
    EXPECT_DOUBLE_EQ(after["rapids"], json["total"]["after"]["seconds"]);
    EXPECT_DOUBLE_EQ(after["total"],
                     24.0 + after["rapids"].get<double>() + after["retracts"].get<double>());
    EXPECT_TRUE(
        nlohmann::json::parse(nmk_shell::run(order(two_tools, {"--json"})).out)["job_seconds"]
            .is_null());
}

TEST_F(job_time_command, heights_and_feeds_are_in_the_unit_of_the_command_line) {
    const auto plunges = [&](const Words& more) {
        const auto out = nmk_shell::run(order("0,0\n", with(more, {"--json"}))).out;
        return nlohmann::json::parse(out)["job_seconds"]["after"]["plunges"].get<double>();
    };
    const Words inches = {"--depth",       "3",  "--retract", "5",
                          "--plunge-feed", "60", "--units",   "inch"};
    EXPECT_DOUBLE_EQ(plunges(inches), 8.0);
    EXPECT_DOUBLE_EQ(plunges(heights), 8.0);
}

TEST_F(job_time_command, several_files_have_a_column_and_a_sum) {
    const std::string a = folder.file("a.csv", two_tools);
    const std::string b = folder.file("b.csv", "0,0\n");
    const nmk_shell::Printed printed = nmk_shell::run(with({"order", a, b}, with(heights, slow_z)));
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_NE(printed.out.find("rapids      job\n"), std::string::npos) << printed.out;
    EXPECT_NE(printed.out.find("0.4  0:00:27\n"), std::string::npos) << printed.out;
    EXPECT_NE(printed.out.find("0.4  0:00:36\n"), std::string::npos) << printed.out;
}

TEST_F(job_time_command, picture_and_page_have_the_line) {
    const std::string svg = folder.path() + "/a.svg";
    const std::string html = folder.path() + "/a.html";
    ASSERT_EQ(nmk_shell::run(order(two_tools, with(heights, {"--svg", svg, "--html", html}))).code,
              0);
    EXPECT_NE(nmk_shell::text_of(svg).find(">Job: 0:00:2"), std::string::npos);
    EXPECT_NE(nmk_shell::text_of(html).find("<p>Job: 0:00:2"), std::string::npos);
}

struct RefusedCase {
    const char* name;
    const char* text;
    Words words;
    const char* expected;
};

std::ostream& operator<<(std::ostream& out, const RefusedCase& one) { return out << one.name; }

class job_time_refused : public testing::TestWithParam<RefusedCase> {};

TEST_P(job_time_refused, with_one_line_and_nothing_written) {
    const ScratchDirectory folder;
    const std::string out = folder.path() + "/o.csv";
    const Words words =
        with({"order", folder.file("a.csv", GetParam().text), "-o", out}, GetParam().words);
    nmk_shell::expect_refused(nmk_shell::run(words), GetParam().expected);
    EXPECT_EQ(folder.file_count(), 1U);
    nmk_shell::expect_refused(
        nmk_shell::run(with({"order", folder.path() + "/a.csv", "--jobs", "2"}, GetParam().words)),
        GetParam().expected);
}

const RefusedCase refused_cases[] = {
    {"a_plunge_feed_alone",
     "0,0\n",
     {"--plunge-feed", "60"},
     "the time of a job needs --depth, --retract and --plunge-feed"},
    {"tool_changes_alone", "0,0\n", {"--tool-change-seconds", "9"}, "the time of a job needs"},
    {"heights_without_a_feed",
     "0,0\n",
     {"--depth", "1", "--retract", "2"},
     "the time of a job needs"},
    {"a_slot_without_a_feed", "0,0,0,1,0,0\n", heights, "a.csv: the time of slots needs --feed"},
    {"an_item_at_the_retract_height", "0,0,5\n", heights,
     "a.csv: an item is at z 5 mm; expected a retract height above it"},
    {"a_feed_that_vanishes", "0,0\n", with(heights, {"--plunge-feed", "1e-300"}),
     "expected feeds of at least 1 mm per minute"},
    {"a_negative_tool_change", "0,0\n", with(heights, {"--tool-change-seconds", "-1"}),
     "expected a number from 0 to 100000"},
    {"a_tool_change_of_nan", "0,0\n", with(heights, {"--tool-change-seconds", "nan"}),
     "expected a number from 0 to 100000"},
    {"a_depth_of_zero", "0,0\n", with(heights, {"--depth", "0"}), "expected a number above 0"}};

INSTANTIATE_TEST_SUITE_P(cases, job_time_refused, testing::ValuesIn(refused_cases),
                         [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace
}  // namespace nmk_order

// gcode_writer: programs, walked by a reader of their own.

#include "formats/gcode/gcode_writer.h"

#include <gtest/gtest.h>
#include <nmktoolbox/ordering/nmkTravelWays.h>

#include <ostream>
#include <set>
#include <string>
#include <utility>

#include "app/formats/gcode/walked_program.h"
#include "app/formats/job/job_fixtures.h"
#include "formats/job_files/read_job.h"

namespace nmk_gcode {
namespace {

GcodeSettings settings() {
    GcodeSettings result;
    result.depth = 2.5;
    result.retract = 5.0;
    result.plunge_feed = 120.0;
    result.feed = 300.0;
    return result;
}

nmk_job::MachiningJob cover_plate() {
    return nmk_job::job_of(nmk_job_files::read_job_file(
        std::string(NMK_SOURCE_DIR) + "/samples/cover_plate.drl", std::nullopt, std::nullopt));
}

nmk_job::MachiningJob two_holes_and_a_slot() {
    nmk_job::MachiningJob job;
    job.file_name = "parts/plate.csv";
    job.tools = {{"T1", 3.2}, {"T2", std::nullopt}};
    job.items = {{{1.0, 2.0, 0.0}, std::nullopt, 0},
                 {{10.0, 2.0, 1.0}, std::nullopt, 0},
                 {{10.0, 20.0, 0.0}, giPoint3(14.0, 20.0, 0.5), 1}};
    return job;
}

std::string program_of(const nmk_job::MachiningJob& job, const nmk_job::JobOrder& order,
                       const GcodeSettings& given, const Bends& bends = {}) {
    const auto written = write_gcode(job, order, given, bends);
    if (!written) {
        ADD_FAILURE() << written.error().text();
        return "";
    }
    return *written;
}

std::string error_of(const nmk_job::MachiningJob& job, const GcodeSettings& given) {
    const auto written = write_gcode(job, nmk_job::order_of_file(job), given, {});
    const auto* error = written ? nullptr : &written.error();
    return error == nullptr ? "" : error->message;
}

TEST(gcode_writer, writes_holes_as_plunges_and_slots_as_plunge_and_feed) {
    GcodeSettings given = settings();
    given.spindle = 8000.0;
    given.start = giPoint3(0.0, 0.0, 0.0);
    const nmk_job::MachiningJob job = two_holes_and_a_slot();
    EXPECT_EQ(program_of(job, {{1, false}, {0, false}, {2, true}}, given),
              "%\n(plate.csv)\nG21 G17 G40 G49 G80 G90 G94\n"
              "M5\n(tool T1 diameter 3.2 mm)\nT1 M6\nM0\nS8000 M3\nG0 Z5.\n"
              "G0 X0. Y0.\n"
              "G0 X10. Y2.\nG1 Z-1.5 F120.\nG0 Z5.\n"
              "G0 X1. Y2.\nG1 Z-2.5 F120.\nG0 Z5.\n"
              "M5\n(tool T2)\nT2 M6\nM0\nS8000 M3\nG0 Z5.\nG0 X1. Y2.\n"
              "G0 X0. Y0.\n"
              "G0 X14. Y20.\nG1 Z-2. F120.\nG1 X10. Y20. Z-2.5 F300.\nG0 Z5.\n"
              "M5\nM30\n%\n");
}

TEST(gcode_writer, goes_over_the_bends_of_each_rapid) {
    GcodeSettings given = settings();
    given.end = giPoint3(3.0, 4.0, 0.0);
    const nmk_job::MachiningJob job = two_holes_and_a_slot();
    const Bends bends = [](const giPoint3& from, const giPoint3& to) {
        return std::vector<giPoint3>{{(from.x + to.x) / 2.0, 99.0, 0.0}};
    };
    const std::string program = program_of(job, {{0, false}, {1, false}}, given, bends);
    EXPECT_NE(program.find("G0 X5.5 Y99.\nG0 X10. Y2.\n"), std::string::npos);
    EXPECT_NE(program.find("G0 Z5.\nG0 X6.5 Y99.\nG0 X3. Y4.\nM30\n"), std::string::npos);
}

TEST(gcode_writer, stops_exactly_where_rapids_bend_and_only_then) {
    const nmk_job::MachiningJob job = two_holes_and_a_slot();
    const nmk_job::JobOrder order = {{0, false}, {1, false}};
    const Bends one = [](const giPoint3& from, const giPoint3& to) {
        return std::vector<giPoint3>{{(from.x + to.x) / 2.0, 99.0, 0.0}};
    };
    const Bends none = [](const giPoint3&, const giPoint3&) { return std::vector<giPoint3>(); };
    const std::string exact_stops = " G94\nG61\n(tool T1";
    EXPECT_NE(program_of(job, order, settings(), one).find(exact_stops), std::string::npos);
    EXPECT_EQ(program_of(job, order, settings(), none).find("G61"), std::string::npos);
}

TEST(gcode_writer, goes_to_start_and_end_once_across_tools) {
    GcodeSettings given = settings();
    given.start = giPoint3(-7.0, -8.0, 0.0);
    given.end = giPoint3(-9.0, -9.0, 0.0);
    given.is_across_tools = true;
    const nmk_job::MachiningJob job = two_holes_and_a_slot();
    const nmk_job::JobOrder order = {{0, false}, {2, false}, {1, false}};
    const auto count = [](const std::string& text, const std::string& words) {
        std::size_t found = 0;
        for (std::size_t at = 0; (at = text.find(words, at)) != text.npos; ++at) ++found;
        return found;
    };
    const std::string whole = program_of(job, order, given);
    EXPECT_EQ(count(whole, "G0 X-7. Y-8.\n"), 1U);
    EXPECT_EQ(count(whole, "G0 X-9. Y-9.\n"), 1U);
    EXPECT_EQ(count(whole, "T1 M6\nM0\n"), 2U);
    given.is_across_tools = false;
    const std::string each = program_of(job, order, given);
    EXPECT_EQ(count(each, "G0 X-7. Y-8.\n"), 3U);
    EXPECT_EQ(count(each, "G0 Z5.\nG0 X-9. Y-9.\n"), 5U);  // at the end, and after each change
}

TEST(gcode_writer, goes_back_to_the_first_item_of_a_closed_order) {
    GcodeSettings given = settings();
    given.is_closed = true;
    const nmk_job::MachiningJob job = two_holes_and_a_slot();
    const nmk_job::JobOrder order = {{0, false}, {1, false}, {2, true}};
    const std::string each = program_of(job, order, given);
    EXPECT_NE(each.find("G0 X10. Y2.\nG1 Z-1.5 F120.\nG0 Z5.\nG0 X1. Y2.\n(tool T2)"), each.npos)
        << each;
    EXPECT_NE(each.find("F300.\nG0 Z5.\nG0 X14. Y20.\nM30\n"), each.npos) << each;
    given.is_across_tools = true;
    const std::string whole = program_of(job, order, given);
    EXPECT_NE(whole.find("F300.\nG0 Z5.\nG0 X1. Y2.\nM30\n"), whole.npos) << whole;
}

TEST(gcode_writer, counts_the_items_that_an_order_leaves_out) {
    const std::string text = program_of(two_holes_and_a_slot(), {{1, false}}, settings());
    EXPECT_NE(text.find("(plate.csv)\n(2 of 3 items left out)\nG21"), text.npos) << text;
}

TEST(gcode_writer, writes_the_largest_numbers_without_an_exponent) {
    nmk_job::MachiningJob job = two_holes_and_a_slot();
    job.items[0].start = {-1e5, 1e5, -1e5};
    GcodeSettings given = settings();
    given.depth = given.retract = 1e5;
    given.feed = given.plunge_feed = 1e6;
    given.spindle = 1e6;
    const std::string text = program_of(job, {{0, false}, {2, false}}, given);
    EXPECT_EQ(text.find_first_of("eE"), text.find("plate.csv") + 4) << text;
    EXPECT_NE(text.find("G0 X-100000. Y100000.\nG1 Z-200000. F1000000.\nG0 Z100000.\n"), text.npos);
}

struct BadJob {
    const char* name;
    void (*change)(nmk_job::MachiningJob& job, GcodeSettings& given);
    const char* expected;

    friend std::ostream& operator<<(std::ostream& out, const BadJob& bad) {
        return out << bad.name;
    }
};

class gcode_writer_job : public testing::TestWithParam<BadJob> {};

TEST_P(gcode_writer_job, is_refused) {
    nmk_job::MachiningJob job = two_holes_and_a_slot();
    GcodeSettings given = settings();
    GetParam().change(job, given);
    EXPECT_EQ(error_of(job, given), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    bad_jobs, gcode_writer_job,
    testing::Values(
        BadJob{"with_slots_but_no_feed", [](auto&, auto& given) { given.feed.reset(); },
               "the order has slots; expected a feed for them"},
        BadJob{"with_routed_paths", [](auto& job, auto&) { job.has_fixed_parts = true; },
               "routed paths and patterns cannot be written as G-code; expected holes and slots "
               "only"},
        BadJob{"with_a_hole_too_far_away", [](auto& job, auto&) { job.items[1].start.x = -1.1e5; },
               "expected places within 100000 mm of the origin"},
        BadJob{"with_a_slot_that_ends_too_far_away",
               [](auto& job, auto&) { job.items[2].end->y = 1.1e5; },
               "expected places within 100000 mm of the origin"},
        BadJob{"with_a_slot_that_ends_above_the_retract_height",
               [](auto& job, auto&) { job.items[2].end->z = 6.0; },
               "the highest item is at z 6 mm; expected a retract height above it and above 0"},
        BadJob{"with_an_end_too_far_away",
               [](auto&, auto& given) { given.end = giPoint3(-2e5, 0.0, 0.0); },
               "expected places within 100000 mm of the origin"},
        BadJob{"with_a_start_too_far_away",
               [](auto&, auto& given) { given.start = giPoint3(0.0, 1e90, 0.0); },
               "expected places within 100000 mm of the origin"}),
    nmk_job::CaseName());

TEST(gcode_writer, needs_no_feed_for_holes_alone) {
    GcodeSettings given = settings();
    given.feed.reset();
    EXPECT_EQ(walked(program_of(two_holes_and_a_slot(), {{0, false}, {1, false}}, given)).ends, 1);
}

TEST(gcode_writer, never_lets_a_name_break_out_of_its_comment) {
    nmk_job::MachiningJob job = two_holes_and_a_slot();
    job.file_name = "a)\nG0 Z-50(\r;%\xff.csv";
    job.tools[0].name = "T1) G1 X-99 (" + std::string(500, 'x') + "\n%";
    const std::string text = program_of(job, nmk_job::order_of_file(job), settings());
    const WalkedProgram program = walked(text);
    ASSERT_EQ(program.comments.size(), 3U);
    EXPECT_EQ(program.comments[0], "a__G0 Z-50_____.csv");
    EXPECT_EQ(program.comments[1].substr(0, 20), "tool T1_ G1 X-99 _xx");
    EXPECT_LE(program.comments[1].size(), 60U);
    for (const ProgramMove& move : program.moves) {
        EXPECT_GE(move.to.x, 0.0);
        EXPECT_GE(move.to.z, -2.5);
    }
}

struct BadSettings {
    const char* name;
    void (*change)(GcodeSettings& given);
    const char* expected;

    friend std::ostream& operator<<(std::ostream& out, const BadSettings& bad) {
        return out << bad.name;
    }
};

class gcode_writer_error : public testing::TestWithParam<BadSettings> {};

TEST_P(gcode_writer_error, refuses_heights_and_feeds_that_cannot_be_used) {
    GcodeSettings given = settings();
    GetParam().change(given);
    EXPECT_EQ(error_of(two_holes_and_a_slot(), given), GetParam().expected);
}

const char* const bad_retract =
    "the highest item is at z 1 mm; expected a retract height above it and above 0";

INSTANTIATE_TEST_SUITE_P(
    bad_settings, gcode_writer_error,
    testing::Values(
        BadSettings{"no_depth", [](GcodeSettings& given) { given.depth = 0.0; },
                    "expected a depth of at least 0.001 mm"},
        BadSettings{"no_number_as_depth", [](GcodeSettings& given) { given.depth = NAN; },
                    "expected a depth of at least 0.001 mm"},
        BadSettings{"no_plunge_feed", [](GcodeSettings& given) { given.plunge_feed = 0.0; },
                    "expected feeds of at least 1 mm per minute"},
        BadSettings{"feed_that_vanishes", [](GcodeSettings& given) { given.feed = 0.001; },
                    "expected feeds of at least 1 mm per minute"},
        BadSettings{"depth_just_below_the_least",
                    [](GcodeSettings& given) { given.depth = 0.0009; },
                    "expected a depth of at least 0.001 mm"},
        BadSettings{"infinite_depth", [](GcodeSettings& given) { given.depth = HUGE_VAL; },
                    "expected a depth of at least 0.001 mm"},
        BadSettings{"infinite_plunge_feed",
                    [](GcodeSettings& given) { given.plunge_feed = HUGE_VAL; },
                    "expected feeds of at least 1 mm per minute"},
        BadSettings{"infinite_feed", [](GcodeSettings& given) { given.feed = HUGE_VAL; },
                    "expected feeds of at least 1 mm per minute"},
        BadSettings{"infinite_spindle", [](GcodeSettings& given) { given.spindle = HUGE_VAL; },
                    "expected a spindle speed of at least 1 per minute"},
        BadSettings{"retract_just_above_an_item",
                    [](GcodeSettings& given) { given.retract = 1.0009; }, bad_retract},
        BadSettings{"negative_spindle", [](GcodeSettings& given) { given.spindle = -1.0; },
                    "expected a spindle speed of at least 1 per minute"},
        BadSettings{"retract_at_an_item", [](GcodeSettings& given) { given.retract = 1.0; },
                    bad_retract},
        BadSettings{"infinite_retract", [](GcodeSettings& given) { given.retract = HUGE_VAL; },
                    bad_retract}),
    nmk_job::CaseName());

TEST(gcode_writer, takes_the_least_heights_and_a_start_above_them) {
    GcodeSettings given = settings();
    given.depth = 0.001;
    given.retract = 1.001;
    given.plunge_feed = 1.0;
    given.start = giPoint3(3.0, 4.0, 900.0);
    const nmk_job::MachiningJob job = two_holes_and_a_slot();
    const std::string text = program_of(job, nmk_job::order_of_file(job), given);
    EXPECT_NE(text.find("G0 Z1.001\nG0 X3. Y4.\nG0 X1. Y2.\nG1 Z-0.001 F1.\n"), text.npos) << text;
}

/// Checks what holds for every program: each cut once, rapids up and never through a keep-out.
void expect_complete(const nmk_job::MachiningJob& job, const WalkedProgram& program,
                     const GcodeSettings& given, const nmkTravelWays& ways) {
    using Cut = std::pair<std::pair<double, double>, std::pair<double, double>>;
    std::multiset<Cut> expected;
    for (const nmk_job::JobItem& item : job.items) {
        const giPoint3 end = item.end.value_or(item.start);
        expected.insert(
            std::minmax(std::pair(item.start.x, item.start.y), std::pair(end.x, end.y)));
    }
    std::multiset<Cut> found;
    giPoint3 plunged;
    giPoint3 last;
    for (const ProgramMove& move : program.moves) {
        const bool is_up = move.from.z >= given.retract && move.to.z >= given.retract;
        const bool is_straight_up =
            move.to.z > move.from.z && move.from.x == move.to.x && move.from.y == move.to.y;
        if (move.is_rapid) {
            EXPECT_TRUE(is_up || is_straight_up);
            const bool crosses = !move.is_from_unknown && ways.keep_out_between(move.from, move.to);
            EXPECT_FALSE(crosses) << move.from.x << "," << move.from.y << " to " << move.to.x << ","
                                  << move.to.y;
            if (is_straight_up && plunged.is_set()) {
                found.insert(
                    std::minmax(std::pair(plunged.x, plunged.y), std::pair(move.to.x, move.to.y)));
                plunged = giPoint3();
            }
            continue;
        }
        EXPECT_GT(move.feed, 0.0);
        EXPECT_LT(move.to.z, 0.0);
        if (!plunged.is_set()) {
            EXPECT_EQ(move.from.z, given.retract);
            EXPECT_EQ(std::pair(move.from.x, move.from.y), std::pair(move.to.x, move.to.y));
            plunged = move.to;
        }
    }
    EXPECT_FALSE(plunged.is_set());
    EXPECT_EQ(found, expected);
    EXPECT_EQ(program.ends, 1);
    EXPECT_EQ(program.stops, static_cast<int>(job.tools.size()));
}

TEST(gcode_writer, cuts_every_item_once_around_keep_outs_that_rounding_does_not_cut) {
    const nmk_job::MachiningJob job = cover_plate();
    ASSERT_GT(job.items.size(), 300U);
    nmkTravelProblem tested;
    nmkTravelProblem wider;  // as the reader of keep-outs makes them
    for (const giPoint2& centre : {giPoint2(150.0, 100.0), giPoint2(22.0, 60.0)}) {
        tested.keep_outs.push_back(nmkTravelKeepOut::circle(centre, 6.0, 0.0, 0.01));
        wider.keep_outs.push_back(nmkTravelKeepOut::circle(centre, 6.0, 0.02, 0.01));
    }
    const nmkTravelWays ways(tested);
    const nmkTravelWays wider_ways(wider);
    std::size_t bent = 0;
    const Bends bends = [&](const giPoint3& from, const giPoint3& to) {
        auto found = wider_ways.bends(from, to);
        bent += found && !found->empty() ? 1U : 0U;
        return found.value_or(std::vector<giPoint3>());
    };
    GcodeSettings given = settings();
    given.start = giPoint3(0.0, 0.0, 0.0);
    for (unsigned seed = 1; seed <= 3; ++seed) {
        const nmk_job::JobOrder order = nmk_job::shuffled_order(job, seed);
        expect_complete(job, walked(program_of(job, order, given, bends)), given, ways);
    }
    EXPECT_GT(bent, 30U);
}

TEST(gcode_writer, writes_inches) {
    GcodeSettings given = settings();
    given.units = nmk_job::JobUnits::inches;
    nmk_job::MachiningJob job = two_holes_and_a_slot();
    job.items[0].start = {25.4, 50.8, 0.0};
    const std::string text = program_of(job, {{0, false}}, given);
    EXPECT_NE(text.find("\nG20 "), std::string::npos);
    EXPECT_NE(text.find("G0 X1. Y2.\nG1 Z-0.09843 F4.72\nG0 Z0.19685\n"), std::string::npos);
}

}  // namespace
}  // namespace nmk_gcode

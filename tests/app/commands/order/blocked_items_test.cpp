// The items that keep-outs block: what is refused, and what --skip-blocked leaves out.

#include "commands/order/blocked_items.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/commands/order/order_avoid_fixture.h"
#include "app/shell/command_runner.h"
#include "commands/order/avoided.h"
#include "formats/job_files/read_job.h"
#include "scratch_directory.h"

namespace nmk_order {
namespace {

class order_blocked_items : public OrderFiles {};

TEST_F(order_blocked_items, writes_nothing_where_an_item_is_blocked) {
    const std::string keep_outs = write("k.csv", "clearance,2\ncircle,50,0,3\ncircle,0,20,3\n");
    const nmk_shell::Printed printed =
        nmk_shell::run({"order", write("r.csv", two_rows), "--avoid", keep_outs, "-o",
                        file("o.csv"), "--svg", file("p.svg")});
    EXPECT_EQ(printed.code, 1);
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err,
              file("r.csv") +
                  ": keep-outs block 2 of 6 items: hole 2 of all at (0, 20) mm: inside "
                  "k.csv:3; hole 3 of all at (50, 0) mm: inside k.csv:2; expected "
                  "--skip-blocked or other keep-outs\n");
    EXPECT_FALSE(std::filesystem::exists(file("o.csv")));
    EXPECT_FALSE(std::filesystem::exists(file("p.svg")));
}

TEST_F(order_blocked_items, leaves_out_and_lists_what_is_blocked) {
    const std::string keep_outs = write("k.csv", "clearance,2\ncircle,50,0,3\ncircle,0,20,3\n");
    const std::vector<std::string> words = {write("r.csv", two_rows), "--avoid", keep_outs,
                                            "--skip-blocked",         "-o",      file("o.csv")};
    const auto json = figures(words);
    EXPECT_EQ(json["left_out"], nlohmann::json({1, 2}));
    EXPECT_EQ(json["total"]["items"], 4);
    EXPECT_EQ(json["notes"][0], "left out: hole 2 of all at (0, 20) mm: inside k.csv:3");
    const auto written = nmk_job_files::read_job_file(file("o.csv"), std::nullopt, std::nullopt);
    ASSERT_TRUE(written);
    ASSERT_EQ(written->items.size(), 4U);
    for (const nmk_job::JobItem& item : written->items) {
        EXPECT_FALSE(item.start == giPoint3(50.0, 0.0, 0.0));
        EXPECT_FALSE(item.start == giPoint3(0.0, 20.0, 0.0));
    }
}

TEST_F(order_blocked_items, leaves_blocked_holes_out_of_a_drill_file) {
    const std::string keep_outs = write("k.csv", "circle,28,122,4\n");
    const nmk_shell::Printed printed =
        nmk_shell::run({"order", cover_plate, "--effort", "0", "--avoid", keep_outs,
                        "--skip-blocked", "-o", file("o.drl"), "--quiet"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    const auto before = nmk_job_files::read_job_file(cover_plate, std::nullopt, std::nullopt);
    const auto after = nmk_job_files::read_job_file(file("o.drl"), std::nullopt, std::nullopt);
    ASSERT_TRUE(before && after);
    EXPECT_EQ(after->items.size() + 1, before->items.size());
    EXPECT_EQ(after->tools.size(), before->tools.size());
    EXPECT_EQ(nmk_shell::text_of(file("o.drl")).find("X28.000Y122.000"), std::string::npos);
}

TEST_F(order_blocked_items, refuses_to_leave_nodes_out_of_an_instance) {
    const std::string instance =
        write("i.tsp",
              "TYPE: TSP\nDIMENSION: 2\nEDGE_WEIGHT_TYPE: EUC_2D\nNODE_COORD_SECTION\n1 0 0\n2 "
              "9 9\nEOF\n");
    nmk_shell::expect_refused(
        nmk_shell::run({"order", instance, "--avoid", write("k.csv", "circle,9,9,1\n"),
                        "--skip-blocked", "-o", file("o.tsp")}),
        "no node can be left out of a TSPLIB instance");
}

TEST_F(order_blocked_items, blocks_slots_that_cross_and_holes_that_are_enclosed) {
    const std::string items =
        write("s.csv", "x,y,z,x2,y2,z2\n0,0,0,20,0,0\n0,50,0,20,50,0\n100,5,0,,,\n");
    const std::string keep_outs =
        write("k.csv",
              "circle,10,0,2\nrectangle,90,-5,110,-3\nrectangle,90,13,110,15\n"
              "rectangle,90,-5,92,15\nrectangle,108,-5,110,15\n");
    const nmk_shell::Printed printed =
        nmk_shell::run({"order", items, "--start", "-20,0", "--avoid", keep_outs});
    EXPECT_EQ(printed.code, 1);
    EXPECT_NE(printed.err.find("slot 1 of all at (0, 0) mm: crosses k.csv:1"), std::string::npos)
        << printed.err;
    EXPECT_NE(printed.err.find("hole 3 of all at (100, 5) mm: enclosed by keep-outs"),
              std::string::npos)
        << printed.err;
}

/// Expects exit code 1, no output, and one line with `words` as the error.
void expect_blocked(const nmk_shell::Printed& printed, const std::string& words) {
    EXPECT_EQ(printed.code, 1) << printed.err;
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(std::count(printed.err.begin(), printed.err.end(), '\n'), 1) << printed.err;
    EXPECT_NE(printed.err.find(words), std::string::npos) << printed.err;
}

TEST_F(order_blocked_items, refuses_a_start_or_end_inside_in_one_line) {
    const std::string rows = write("r.csv", two_rows);
    const std::string keep_outs = write("k.csv", "\ncircle,-30,0,4\n");
    for (const std::string skips : {"--quiet", "--skip-blocked"}) {
        expect_blocked(nmk_shell::run({"order", rows, "--avoid", keep_outs, "--start", "-31,0",
                                       "-o", file("o.csv"), skips}),
                       "--start (-31, 0) mm is inside k.csv:2; expected a place outside of all "
                       "keep-outs\n");
        expect_blocked(nmk_shell::run({"order", rows, "--avoid", keep_outs, "--end", "-31,0", "-o",
                                       file("o.csv"), skips}),
                       "--end (-31, 0) mm is inside k.csv:2");
    }
    EXPECT_FALSE(std::filesystem::exists(file("o.csv")));
}

// A pocket around (100, 5).
const char* const pocket =
    "rectangle,90,-5,110,-3\nrectangle,90,13,110,15\nrectangle,90,-5,92,15\n"
    "rectangle,108,-5,110,15\n";

TEST_F(order_blocked_items, refuses_an_end_that_keep_outs_separate_from_the_start) {
    const std::string rows = write("r.csv", "x,y\n0,0\n5,5\n");
    expect_blocked(
        nmk_shell::run({"order", rows, "--avoid", write("k.csv", pocket), "--end", "100,5"}),
        "--end (100, 5) mm is separated from --start by keep-outs");
}

TEST_F(order_blocked_items, blocks_the_fewer_items_where_start_and_end_are_free) {
    const std::string items = write("r.csv", "x,y\n100,5\n0,0\n101,6\n5,5\n9,9\n");
    const std::string keep_outs = write("k.csv", pocket);
    const nmk_shell::Printed printed =
        nmk_shell::run({"order", items, "--avoid", keep_outs, "--start", "free"});
    expect_blocked(printed,
                   "keep-outs block 2 of 5 items: hole 1 of all at (100, 5) mm: enclosed "
                   "by keep-outs; hole 3 of all at (101, 6) mm: enclosed by keep-outs");
    const auto json = figures({items, "--avoid", keep_outs, "--start", "free", "--skip-blocked"});
    EXPECT_EQ(json["left_out"], nlohmann::json({0, 2}));
    const auto within =
        figures({items, "--avoid", keep_outs, "--start", "100,4", "--skip-blocked"});
    EXPECT_EQ(within["left_out"], nlohmann::json({1, 3, 4}));
}

TEST_F(order_blocked_items, orders_the_other_files_where_one_has_blocked_items) {
    const std::string good = write("good.csv", two_rows);
    const std::string blocked = write("blocked.csv", "x,y\n200,200\n0,0\n");
    std::filesystem::create_directory(file("out"));
    const nmk_shell::Printed printed =
        nmk_shell::run({"order", good, blocked, "--avoid", write("k.csv", "circle,200,200,5\n"),
                        "--output-folder", file("out"), "--quiet"});
    EXPECT_EQ(printed.code, 1);
    EXPECT_NE(printed.err.find("blocked.csv: keep-outs block 1 of 2 items"), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(file("out/good.csv")));
    EXPECT_FALSE(std::filesystem::exists(file("out/blocked.csv")));
}

// Rows of holes, every second of them in a pocket with an open corner.
nmk_job::MachiningJob holes_of_pockets(std::vector<nmk_keep_outs::KeepOut>& walls, int count) {
    nmk_job::MachiningJob job;
    job.file_name = "pockets.csv";
    job.tools = {{"T1", 3.0}};
    const auto add = [&](double left, double low, double right, double high) {
        const auto shape = nmkTravelKeepOut::rectangle({left, low}, {right, high}, 0.0, 0.01);
        walls.push_back({walls.size() + 1, shape, shape});
    };
    for (int i = 0; i < count; ++i) {
        const double x = 20.0 * i;
        job.items.push_back({{x + 8.0, -10.0, 0.0}, std::nullopt, 0});
        job.items.push_back({{x + 8.0, 8.0, 0.0}, std::nullopt, 0});
        add(x, 0.0, x + 16.0, 1.0);
        add(x, 0.0, x + 1.0, 16.0);
        add(x, 15.0, x + 16.0, 16.0);
        add(x + 15.0, 0.0, x + 16.0, 14.0);
    }
    return job;
}

TEST(blocked_items, ask_for_the_time_only_where_keep_outs_may_enclose_an_item) {
    std::vector<nmk_keep_outs::KeepOut> walls;
    const nmk_job::MachiningJob job = holes_of_pockets(walls, 10);
    TravelEnds ends;
    ends.avoided = std::make_shared<const Avoided>("walls.csv", walls);
    int asked = 0;
    const auto never = [&] {
        ++asked;
        return false;
    };
    const auto blocked = blocked_items(job, ends, never);
    ASSERT_TRUE(blocked);
    EXPECT_TRUE(blocked->empty());
    EXPECT_EQ(asked, 10);
}

TEST(blocked_items, are_an_error_where_the_time_is_over_before_all_items_are_checked) {
    std::vector<nmk_keep_outs::KeepOut> walls;
    const nmk_job::MachiningJob job = holes_of_pockets(walls, 10);
    TravelEnds ends;
    ends.avoided = std::make_shared<const Avoided>("walls.csv", walls);
    int asked = 0;
    const auto at_the_fourth = [&] { return ++asked == 4; };
    const auto blocked = blocked_items(job, ends, at_the_fourth);
    ASSERT_FALSE(blocked);
    EXPECT_EQ(asked, 4);
    EXPECT_EQ(blocked.error().text(),
              "pockets.csv: the time limit ended the check for enclosed items after 7 of 20; "
              "expected a longer --time-limit");
}

TEST(blocked_items, are_refused_when_the_deadline_of_the_request_is_over) {
    std::vector<nmk_keep_outs::KeepOut> walls;
    nmk_job::MachiningJob job = holes_of_pockets(walls, 2);
    OrderRequest request;
    request.ends.start.reset();
    request.ends.avoided = std::make_shared<const Avoided>("walls.csv", walls);
    EXPECT_EQ(avoid_keep_outs(job, request, false).text, "");
    request.deadline = OrderRequest::Clock::now();
    const Refusal refusal = avoid_keep_outs(job, request, true);
    EXPECT_EQ(refusal.code, 1);
    EXPECT_NE(refusal.text.find("after 1 of 4; expected a longer --time-limit"), std::string::npos)
        << refusal.text;
    walls.clear();
    request.ends.avoided = std::make_shared<const Avoided>("walls.csv", walls);
    EXPECT_EQ(avoid_keep_outs(job, request, true).text, "");
}

}  // namespace
}  // namespace nmk_order

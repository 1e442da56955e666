// `nmk order --avoid`: moves around keep-outs, and items that they block.

#include <gtest/gtest.h>
#include <nmktoolbox/ordering/nmkTravelWays.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "app/shell/command_runner.h"
#include "commands/order/avoided.h"
#include "commands/order/order_job.h"
#include "formats/job_files/read_job.h"
#include "scratch_directory.h"

namespace nmk_order {
namespace {

const std::string cover_plate = NMK_SOURCE_DIR "/samples/cover_plate.drl";
const std::string clamps = NMK_SOURCE_DIR "/samples/clamps_for_cover_plate.csv";

// A wall between two rows of holes, with a way around at its right end.
const char* const two_rows = "x,y\n0,0\n0,20\n50,0\n50,20\n100,0\n100,20\n";
const char* const wall = "rectangle,-50,8,110,12\n";

class order_avoid : public testing::Test {
  protected:
    std::string file(const std::string& name) const { return folder.path() + "/" + name; }
    std::string write(const std::string& name, const std::string& text) const {
        return folder.file(name, text);
    }

    ScratchDirectory folder;
};

nlohmann::json figures(const std::vector<std::string>& words) {
    std::vector<std::string> all = {"order"};
    all.insert(all.end(), words.begin(), words.end());
    all.push_back("--json");
    const nmk_shell::Printed printed = nmk_shell::run(all);
    EXPECT_EQ(printed.code, 0) << printed.err;
    return nlohmann::json::parse(printed.out);
}

TEST_F(order_avoid, makes_the_order_for_the_ways_around) {
    const std::string rows = write("r.csv", two_rows);
    const auto json = figures({rows, "--avoid", write("w.csv", wall)});
    // Along one row, around the end of the wall, and back along the other.
    EXPECT_NEAR(json["total"]["after"]["travel"], 200.0 + 2.0 * std::sqrt(164.0) + 4.0, 0.01);
    ASSERT_EQ(json["bent_moves"].size(), 1U);
    const auto& places = json["bent_moves"][0]["places"];
    EXPECT_EQ(places.front(), nlohmann::json({100.0, 0.0, 0.0}));
    EXPECT_EQ(places.back(), nlohmann::json({100.0, 20.0, 0.0}));
    EXPECT_GE(places.size(), 4U);
    EXPECT_EQ(json["avoid"], file("w.csv"));
    EXPECT_TRUE(json["left_out"].empty());
    const auto without = figures({rows});
    EXPECT_TRUE(without["avoid"].is_null());
    EXPECT_TRUE(without["bent_moves"].empty());
}

TEST_F(order_avoid, reports_the_moves_around_keep_outs_in_the_table) {
    const nmk_shell::Printed printed =
        nmk_shell::run({"order", write("r.csv", two_rows), "--avoid", write("w.csv", wall)});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_NE(printed.out.find("\nMoves around keep-outs: 5 before, 1 after.\n"), std::string::npos)
        << printed.out;
}

TEST_F(order_avoid, keeps_every_move_of_the_cover_plate_off_its_clamps) {
    const auto read = nmk_job_files::read_job_file(cover_plate, std::nullopt, std::nullopt);
    ASSERT_TRUE(read);
    const auto avoided = read_avoided(clamps);
    ASSERT_TRUE(avoided);
    OrderRequest request;
    request.effort = 1;
    request.ends.avoided = *avoided;
    const auto blocked = blocked_items(*read, request.ends);
    ASSERT_TRUE(blocked);
    EXPECT_TRUE(blocked->empty());
    const OrderedJob ordered = order_job(*read, request, nullptr);
    std::size_t bent = 0;
    for (const OrderRun& run : ordered.runs) {
        const auto check = [&](const giPoint3& from, const giPoint3& to) {
            EXPECT_FALSE((*avoided)->ways().keep_out_between(from, to));
        };
        each_move(read->items, run.of(ordered.after), run.ends,
                  [&](const giPoint3& from, const giPoint3& to) {
                      each_piece(from, to, run.ends, check);
                      bent += places_of_move(from, to, run.ends).size() > 2 ? 1U : 0U;
                  });
    }
    EXPECT_GT(bent, 4U);
}

TEST_F(order_avoid, draws_the_keep_outs_and_the_bends) {
    const nmk_shell::Printed printed =
        nmk_shell::run({"order", write("r.csv", two_rows), "--avoid", write("w.csv", wall), "--svg",
                        file("p.svg")});
    EXPECT_EQ(printed.code, 0) << printed.err;
    const std::string picture = nmk_shell::text_of(file("p.svg"));
    EXPECT_NE(picture.find("class=\"keep-out\""), std::string::npos);
    EXPECT_NE(picture.find("class=\"clearance\""), std::string::npos);
    EXPECT_NE(picture.find("keep-out with its clearance"), std::string::npos);
    nmk_shell::run({"order", file("r.csv"), "--svg", file("without.svg")});
    EXPECT_EQ(nmk_shell::text_of(file("without.svg")).find("keep-out"), std::string::npos);
}

TEST_F(order_avoid, writes_nothing_where_an_item_is_blocked) {
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

TEST_F(order_avoid, leaves_out_and_lists_what_is_blocked) {
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

TEST_F(order_avoid, leaves_blocked_holes_out_of_a_drill_file) {
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

TEST_F(order_avoid, refuses_to_leave_nodes_out_of_an_instance) {
    const std::string instance =
        write("i.tsp",
              "TYPE: TSP\nDIMENSION: 2\nEDGE_WEIGHT_TYPE: EUC_2D\nNODE_COORD_SECTION\n1 0 0\n2 "
              "9 9\nEOF\n");
    nmk_shell::expect_refused(
        nmk_shell::run({"order", instance, "--avoid", write("k.csv", "circle,9,9,1\n"),
                        "--skip-blocked", "-o", file("o.tsp")}),
        "no node can be left out of a TSPLIB instance");
}

TEST_F(order_avoid, blocks_slots_that_cross_and_holes_that_are_enclosed) {
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

TEST_F(order_avoid, refuses_a_start_or_end_inside_in_one_line) {
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

TEST_F(order_avoid, refuses_an_end_that_keep_outs_separate_from_the_start) {
    const std::string rows = write("r.csv", "x,y\n0,0\n5,5\n");
    expect_blocked(
        nmk_shell::run({"order", rows, "--avoid", write("k.csv", pocket), "--end", "100,5"}),
        "--end (100, 5) mm is separated from --start by keep-outs");
}

TEST_F(order_avoid, blocks_the_fewer_items_where_start_and_end_are_free) {
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

TEST_F(order_avoid, begins_a_closed_order_at_the_item_to_which_the_way_around_is_shortest) {
    // (2, 0) is behind a wall, (0, 9) is not.
    const std::string items = write("r.csv", "x,y\n2,0\n0,9\n9,9\n12,3\n");
    const std::vector<std::string> words = {items,     "--closed",
                                            "--start", "0,0",
                                            "--avoid", write("k.csv", "rectangle,0.9,-50,1.1,8\n")};
    const auto json = figures(words);
    EXPECT_NEAR(json["total"]["after"]["start_leg"], 9.0, 1e-9);
    EXPECT_EQ(figures({items, "--closed", "--start", "0,0"})["total"]["after"]["start_leg"], 2.0);
}

TEST_F(order_avoid, refuses_bad_tables_and_combinations_in_one_line) {
    const std::string rows = write("r.csv", two_rows);
    const std::string bad = write("b.csv", "circle,1\n");
    nmk_shell::expect_refused(nmk_shell::run({"order", rows, "--avoid", bad}),
                              "b.csv:1: 2 columns; expected circle,X,Y,RADIUS");
    nmk_shell::expect_refused(nmk_shell::run({"order", rows, "--avoid", bad, "--jobs", "2"}),
                              "b.csv:1: ");
    nmk_shell::expect_refused(nmk_shell::run({"order", rows, "--avoid", file("none.csv")}),
                              "none.csv");
    nmk_shell::expect_refused(nmk_shell::run({"order", rows, "--avoid", bad, "--type", "closest"}),
                              "--avoid is for --type best");
    nmk_shell::expect_refused(nmk_shell::run({"order", rows, "--skip-blocked"}),
                              "--skip-blocked needs --avoid");
}

TEST_F(order_avoid, keeps_the_table_of_keep_outs) {
    const std::string keep_outs = write("k.csv", wall);
    const std::string rows = write("r.csv", two_rows);
    for (const std::string option : {"-o", "--svg", "--html"}) {
        nmk_shell::expect_refused(
            nmk_shell::run({"order", rows, "--avoid", keep_outs, option, keep_outs}),
            "is the input file; expected another name for the output");
    }
    std::filesystem::create_directory(file("in"));
    const std::string same_name = write("in/k.csv", two_rows);
    nmk_shell::expect_refused(nmk_shell::run({"order", same_name, "--avoid", keep_outs,
                                              "--output-folder", folder.path()}),
                              "is the input file");
    EXPECT_EQ(nmk_shell::text_of(keep_outs), wall);
}

TEST_F(order_avoid, reads_standard_input_once) {
    nmk_shell::expect_refused(nmk_shell::run({"order", "-", "--avoid", "-"}),
                              "standard input can be read once; found \"-\" twice");
}

TEST_F(order_avoid, has_the_same_result_in_workers) {
    const auto alone = figures({cover_plate, "--effort", "1", "--avoid", clamps});
    const auto shared = figures({cover_plate, "--effort", "1", "--avoid", clamps, "--jobs", "3"});
    EXPECT_EQ(alone, shared);
}

TEST_F(order_avoid, orders_the_other_files_where_one_has_blocked_items) {
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

}  // namespace
}  // namespace nmk_order

// `nmk order --avoid`: moves around keep-outs, and items that they block.

#include <gtest/gtest.h>
#include <nmktoolbox/ordering/nmkTravelWays.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "app/commands/order/order_avoid_fixture.h"
#include "app/shell/command_runner.h"
#include "commands/order/avoided.h"
#include "commands/order/blocked_items.h"
#include "commands/order/order_job.h"
#include "formats/job_files/read_job.h"
#include "scratch_directory.h"

namespace nmk_order {
namespace {

const std::string clamps = NMK_SOURCE_DIR "/samples/clamps_for_cover_plate.csv";

// A wall between the two rows of holes, with a way around at its right end.
const char* const wall = "rectangle,-50,8,110,12\n";

class order_avoid : public OrderFiles {};

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

}  // namespace
}  // namespace nmk_order

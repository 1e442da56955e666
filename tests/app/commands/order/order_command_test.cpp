// order_command: the output of `nmk order` for a person and for a program.

#include "commands/order/order_command.h"

#include <gtest/gtest.h>
#include <nmkarcline/nmkDebugGeometry.h>
#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmkprogressbreak/nmkTerminalProgress.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "app/shell/command_runner.h"
#include "app/text/plain_syntax.h"
#include "child_process.h"
#include "commands/order/order_options.h"
#include "formats/job_files/read_job.h"
#include "real_inputs.h"
#include "scratch_directory.h"

namespace {

using namespace nmk_order;
namespace fs = std::filesystem;

const std::string cover_plate = NMK_SOURCE_DIR "/samples/cover_plate.drl";

class order_command : public testing::Test {
  protected:
    std::string file(const std::string& name) const { return folder.path() + "/" + name; }
    std::string write(const std::string& name, const std::string& text) const {
        return folder.file(name, text);
    }
    std::size_t files() const { return folder.file_count(); }

    ScratchDirectory folder;
};

const char* const square = "x,y\n0,0\n30,40\n0,40\n30,0\n";

TEST_F(order_command, prints_a_table_with_a_row_for_each_tool_and_a_total) {
    const nmk_shell::Printed printed =
        nmk_shell::run({"order", write("s.csv", square), "--rapid", "6000"});
    EXPECT_EQ(printed.code, 0);
    EXPECT_EQ(printed.err, "");
    EXPECT_EQ(printed.out,
              file("s.csv") +
                  ": 4 items, 1 tool, sorted by best from (0, 0) mm\n"
                  "\n"
                  "tool   diameter  items  before  after  saved  longest  time before  after\n"
                  "             mm             mm     mm      %       mm            s      s\n"
                  "all                  4   130.0  100.0   23.1     40.0          1.4    1.3\n"
                  "-------------------------------------------------------------------------\n"
                  "total                4   130.0  100.0   23.1     40.0          1.4    1.3\n"
                  "\n"
                  "Rapids at 6000 mm/min and 1000 mm/s2: 1.4 s before, 1.3 s after.\n");
}

TEST_F(order_command, no_line_of_the_table_is_wider_than_80_columns) {
    std::string points = "x,y,z,tool,diameter\n";
    for (int i = 0; i < 300; ++i) {
        points += std::to_string(i % 2 * 10000) + ".5," + std::to_string(i) +
                  ",0,a long name of a tool " + std::to_string(i % 3) + "," +
                  std::to_string(i % 3 + 100) + ".125\n";
    }
    const nmk_shell::Printed printed =
        nmk_shell::run({"order", write("w.csv", points), "--type", "none"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    std::istringstream lines(printed.out);
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with(folder.path())) {
            EXPECT_LE(line.size(), 80U) << line;
        }
    }
    EXPECT_NE(printed.out.find("\na lo...  "), std::string::npos) << printed.out;
}

TEST_F(order_command, a_file_without_items_is_not_a_success) {
    const struct {
        const char* name;
        const char* text;
    } empty[] = {{"e.drl", "M48\nMETRIC,TZ\nT1C1\n%\nT1\nM30\n"},
                 {"e.csv", "x,y\n"},
                 {"e.tsp", "TYPE: TSP\nDIMENSION: 0\nNODE_COORD_SECTION\nEOF\n"}};
    for (const auto& [name, text] : empty) {
        const std::string path = write(name, text);
        const nmk_shell::Printed printed =
            nmk_shell::run({"order", path, "-o", file("o.csv"), "--json"});
        EXPECT_EQ(printed.code, 1);
        EXPECT_EQ(printed.out, "");
        EXPECT_EQ(printed.err, path + ": no holes or slots to order; --allow-empty accepts that\n");
        EXPECT_FALSE(fs::exists(file("o.csv")));
        const nmk_shell::Printed allowed =
            nmk_shell::run({"order", path, "--allow-empty", "-o", file("a.csv")});
        EXPECT_EQ(allowed.code, 0) << allowed.err;
        EXPECT_NE(allowed.out.find("0 items"), std::string::npos);
        EXPECT_TRUE(fs::exists(file("a.csv")));
        fs::remove(file("a.csv"));
    }
}

TEST_F(order_command, lengths_of_an_inch_file_are_shown_in_inches) {
    const std::string name =
        write("i.drl", "M48\nINCH,TZ,00.0000\nT1C0.028\n%\nT1\nX0Y0\nX30000Y40000\nM30\n");
    const nmk_shell::Printed printed =
        nmk_shell::run({"order", name, "--type", "none", "--start", "1,0"});
    EXPECT_NE(printed.out.find("from (1, 0) in\n"), std::string::npos) << printed.out;
    EXPECT_NE(printed.out.find("\n             in             in     in      %       in  "),
              std::string::npos)
        << printed.out;
    EXPECT_NE(printed.out.find("\nT1       0.0280      2    6.00   6.00    0.0     5.00  "),
              std::string::npos)
        << printed.out;
    const auto json = nlohmann::json::parse(nmk_shell::run({"order", name, "--json"}).out);
    EXPECT_EQ(json["file_units"], "inch");
    EXPECT_EQ(json["tools"][0]["diameter"], 0.7112);
    EXPECT_EQ(json["total"]["after"]["travel"], 127.0);
}

TEST_F(order_command, json_has_the_digits_of_the_file) {
    const std::string name =
        write("i.drl", "M48\nINCH,TZ,00.0000\nT1C0.028\n%\nT1\nX280Y40\nM30\n");
    EXPECT_EQ(nmk_shell::run({"order", name, "-o", file("i.json"), "--quiet"}).code, 0);
    const std::string text = nmk_shell::text_of(file("i.json"));
    EXPECT_NE(text.find("\"diameter\": 0.7112,"), std::string::npos) << text;
    EXPECT_NE(text.find("\"start\": [0.7112, 0.1016, 0]"), std::string::npos) << text;
}

TEST_F(order_command, mentions_coincident_items_equal_diameters_and_tools_defined_twice) {
    const std::string name = write("n.drl",
                                   "M48\nMETRIC,TZ,000.000\nT1C0.8\nT2C0.9\nT3C1.0\nT1C0.9\n%\n"
                                   "T1\nX0Y0\nX1000Y0\nX0Y0\nX0Y0\nT2\nX0Y0\nT3\nX5Y5\nM30\n");
    const auto json =
        nlohmann::json::parse(nmk_shell::run({"order", name, "--type", "none", "--json"}).out);
    EXPECT_EQ(
        json["notes"],
        (nlohmann::json{"T1 is defined twice, with the diameters 0.8 and 0.9; the second (line "
                        "6) is used",
                        "T1: 2 items coincide with another one of this tool",
                        "T1 and T2 have the same diameter, 0.9 mm"}));
    EXPECT_NE(nmk_shell::run({"order", name, "--type", "none"}).out.find("coincide"),
              std::string::npos);
}

TEST_F(order_command, the_tools_of_a_drill_file_survive_a_table) {
    const std::string table = file("t.csv");
    ASSERT_EQ(nmk_shell::run({"order", cover_plate, "--type", "closest", "-o", table}).code, 0);
    EXPECT_TRUE(nmk_shell::text_of(table).starts_with("x,y,z,x2,y2,z2,tool,diameter\n"));
    const auto job = nmk_job_files::read_job_file(table, std::nullopt);
    const auto drill = nmk_job_files::read_job_file(cover_plate, std::nullopt);
    ASSERT_TRUE(bool(job) && bool(drill));
    ASSERT_EQ(job->tools.size(), drill->tools.size());
    EXPECT_EQ(job->items.size(), drill->items.size());
    for (std::size_t i = 0; i < job->tools.size(); ++i) {
        EXPECT_EQ(job->tools[i].name, drill->tools[i].name);
        EXPECT_EQ(job->tools[i].diameter, drill->tools[i].diameter);
    }
    EXPECT_EQ(nmk_shell::run({"order", table, "--type", "xz", "-o", file("again.csv")}).code, 0);
    const auto again = nmk_job_files::read_job_file(file("again.csv"), std::nullopt);
    ASSERT_TRUE(bool(again));
    EXPECT_EQ(again->tools.size(), drill->tools.size());
}

/// Presses Ctrl-C at the first step and counts the bars that were erased.
struct StopWithBar : nmkProgressBreak {
    int increment() override { return 1; }
    int jump_to(double) override { return 1; }
    int send_progress_bar_to_100() override { return ++erased, 1; }
    int erased = 0;
};

TEST_F(order_command, a_stop_is_acknowledged_at_once_with_what_happens_next) {
    const struct {
        OrderType type;
        const char* line;
    } runs[] = {
        {best_order, "nmk order: stopping; the best order so far is kept\n"},
        {nmkSortTypeShortest,
         "nmk order: stopping when T1 is ordered; Ctrl-C again ends with nothing written\n"},
        {nmkSortTypeClosest,
         "nmk order: stopping; items not yet ordered stay in the order of the file\n"}};
    for (const auto& [type, line] : runs) {
        StopWithBar stop;
        std::ostringstream out;
        std::ostringstream err;
        OrderOptions options;
        options.files = {cover_plate};
        options.type = type;
        EXPECT_EQ(run_order(options, out, err, &stop), 0);
        EXPECT_TRUE(err.str().starts_with(line)) << err.str();
        EXPECT_EQ(err.str().find("stopping", std::string(line).size()), std::string::npos);
        EXPECT_GE(stop.erased, 1);
    }
}

/// Presses Ctrl-C at two steps of the work.
struct TwoInterrupts : nmkTerminalProgress {
    TwoInterrupts() : nmkTerminalProgress(nullptr) {}
    int increment() override {
        ++steps;
        if (steps == 10 || steps == 20) std::raise(SIGINT);
        return nmkTerminalProgress::increment();
    }
    int steps = 0;
};

TEST_F(order_command, a_second_interrupt_ends_it_with_nothing_written) {
    const std::string log = file("err.txt");
    const std::size_t before = files();
    const int end = in_a_child([&] {
        std::signal(SIGINT, SIG_DFL);
        std::ofstream err(log);
        std::ostringstream out;
        TwoInterrupts progress;
        OrderOptions options;
        options.type = nmkSortTypeShortest;
        options.files = {cover_plate};
        options.output_file = file("o.drl");
        options.svg_file = file("o.svg");
        return run_order(options, out, err, &progress);
    });
    EXPECT_EQ(end, 1000 + SIGINT);
    EXPECT_EQ(nmk_shell::text_of(log),
              "nmk order: stopping when T1 is ordered; Ctrl-C again ends with nothing written\n");
    EXPECT_EQ(files(), before + 1);
}

TEST_F(order_command, the_page_has_the_total_below_the_rows_of_the_tools) {
    ASSERT_EQ(nmk_shell::run({"order", write("s.csv", square), "--html", file("a.html")}).code, 0);
    const std::string page = nmk_shell::text_of(file("a.html"));
    const auto tools = page.find("<tbody>\n<tr><td>all</td>");
    const auto total = page.find("</tbody>\n<tfoot>\n<tr><td>total</td>");
    EXPECT_NE(tools, std::string::npos);
    EXPECT_NE(total, std::string::npos);
    EXPECT_LT(tools, total);
}

TEST_F(order_command, json_is_valid_with_any_file_name) {
    for (const std::string name : {"plain.csv", "q\"uote\\.csv", "tab\t\x01.csv", "caf\xC3\xA9.csv",
                                   "broken\xFF\xC3.csv", "<a&b>'.csv"}) {
        const nmk_shell::Printed printed =
            nmk_shell::run({"order", write(name, square), "--json", "--svg", file("a"), "--html",
                            file("b"), "-o", file("c.json")});
        EXPECT_EQ(printed.code, 0) << printed.err;
        EXPECT_TRUE(plain_syntax::Json::is_valid(printed.out)) << printed.out;
        EXPECT_TRUE(plain_syntax::Json::is_valid(nmk_shell::text_of(file("c.json"))));
        EXPECT_TRUE(plain_syntax::Xml::is_well_formed(nmk_shell::text_of(file("a")))) << name;
        std::string page = nmk_shell::text_of(file("b"));
        page.replace(page.find("<meta charset=\"utf-8\"/>"), 0, "");
        EXPECT_TRUE(plain_syntax::Xml::is_well_formed(page)) << name;
    }
    const nmk_shell::Printed sample =
        nmk_shell::run({"order", cover_plate, "--json", "--type", "y"});
    EXPECT_TRUE(plain_syntax::Json::is_valid(sample.out));
    EXPECT_NE(sample.out.find("\"items\": 403"), std::string::npos);
}

TEST_F(order_command, quiet_prints_only_json) {
    const std::string name = write("s.csv", square);
    EXPECT_EQ(nmk_shell::run({"order", name, "--quiet"}).out, "");
    EXPECT_TRUE(
        plain_syntax::Json::is_valid(nmk_shell::run({"order", name, "--quiet", "--json"}).out));
}

TEST_F(order_command, the_written_file_has_every_item_of_the_sample_once) {
    for (const std::string name : {"out.drl", "out.csv", "out.json"}) {
        EXPECT_EQ(
            nmk_shell::run({"order", cover_plate, "--type", "closest", "-o", file(name)}).code, 0);
    }
    const auto lines_with = [&](const std::string& name, const std::string& word) {
        std::istringstream lines(nmk_shell::text_of(file(name)));
        std::size_t count = 0;
        for (std::string line; std::getline(lines, line);) {
            count += line.find(word) != std::string::npos ? 1 : 0;
        }
        return count;
    };
    EXPECT_EQ(lines_with("out.drl", "X"), 403U);
    EXPECT_EQ(lines_with("out.drl", "G85"), 38U);
    EXPECT_EQ(lines_with("out.csv", ",") - lines_with("out.csv", "x") - lines_with("out.csv", "#"),
              403U);
    const auto again = nmk_job_files::read_job_file(file("out.drl"), std::nullopt);
    ASSERT_TRUE(bool(again));
}

TEST_F(order_command, the_written_file_has_the_reported_travel) {
    const auto after_of = [](const std::string& json) {
        return nlohmann::json::parse(json)["total"]["after"]["travel"].get<double>();
    };
    const double promised =
        after_of(nmk_shell::run({"order", cover_plate, "--json", "-o", file("o.drl")}).out);
    const double kept =
        after_of(nmk_shell::run({"order", file("o.drl"), "--json", "--type", "none"}).out);
    EXPECT_EQ(promised, kept);
    EXPECT_LT(promised, 5000.0);
}

TEST_F(order_command, outputs_that_cannot_be_written_leave_no_file) {
    const std::string name = write("s.csv", square);
    const std::string lost = file("no/such/directory.svg");
    nmk_shell::expect_refused(nmk_shell::run({"order", name, "--svg", lost}), lost + ": ");
    nmk_shell::expect_refused(
        nmk_shell::run({"order", name, "--svg", file("a.svg"), "--html", lost}), lost + ": ");
    nmk_shell::expect_refused(nmk_shell::run({"order", name, "-o", file("a.csv"), "--svg", lost}),
                              lost + ": ");
    nmk_shell::expect_refused(
        nmk_shell::run({"order", name, "-o", file("a.drl"), "--svg", file("a.svg")}),
        "a drill file can only be written from a drill file");
    nmk_shell::expect_refused(nmk_shell::run({"order", name, "--svg", folder.path()}),
                              "is a directory");
    if (fs::exists("/dev/full")) {
        nmk_shell::expect_refused(nmk_shell::run({"order", name, "--svg", "/dev/full"}),
                                  "/dev/full: cannot be written");
        nmk_shell::expect_refused(
            nmk_shell::run({"order", name, "--html", file("a.html"), "--svg", "/dev/full"}),
            "/dev/full: cannot be written");
    }
    EXPECT_EQ(files(), 1U);
}

TEST_F(order_command, refuses_an_output_that_is_a_symlink_without_a_target) {
    const std::string name = write("s.csv", square);
    const std::string dangling = file("dangling.csv");
    fs::create_symlink(file("missing.csv"), dangling);
    nmk_shell::expect_refused(
        nmk_shell::run({"order", name, "--svg", file("a.svg"), "-o", dangling}),
        dangling + ": is a symlink whose target cannot be found");
    EXPECT_EQ(fs::read_symlink(dangling), file("missing.csv"));
    EXPECT_EQ(files(), 2U);
}

TEST_F(order_command, the_input_file_may_be_ordered_in_place_but_not_replaced_by_a_picture) {
    const std::string name = write("s.csv", square);
    fs::create_symlink(name, file("symlink.csv"));
    fs::create_directory(file("sub"));
    for (const std::string& same : {name, file("symlink.csv"), file("sub/../s.csv")}) {
        nmk_shell::expect_refused(nmk_shell::run({"order", name, "--svg", same}),
                                  "is the input file");
        nmk_shell::expect_refused(nmk_shell::run({"order", name, "--html", same}),
                                  "is the input file");
        nmk_shell::expect_refused(
            nmk_shell::run({"order", same, "--debug", "nmkPointSorter", "--debug-svg", name}),
            "is the input file");
        EXPECT_EQ(nmk_shell::text_of(name), square);
    }
    EXPECT_EQ(nmk_shell::run({"order", name, "-o", file("sub/../s.csv")}).code, 0);
    EXPECT_EQ(nmk_shell::text_of(name).size(), std::string(square).size());
    EXPECT_NE(nmk_shell::text_of(name), square);
}

TEST_F(order_command, labels_the_longest_move_in_both_halves_of_the_picture_of_a_narrow_part) {
    for (const std::string part :
         {"0,0\n1,90\n0,10\n1,60\n0,100\n1,20\n", "0,0\n90,1\n10,0\n60,1\n100,0\n20,1\n"}) {
        nmk_shell::run({"order", write("n.csv", part), "--svg", file("n.svg"), "--quiet"});
        const std::string drawing = nmk_shell::text_of(file("n.svg"));
        int labels = 0;
        for (std::size_t at = 0; (at = drawing.find(">longest ", at)) != std::string::npos; ++at) {
            labels += drawing.compare(at, 13, ">longest move") != 0 ? 1 : 0;
        }
        EXPECT_EQ(labels, 2) << part;
    }
}

TEST_F(order_command, draws_a_debug_channel_of_the_library) {
    const std::string name = write("s.csv", square);
    const nmk_shell::Printed printed = nmk_shell::run(
        {"order", name, "--type", "x", "--debug", "nmkPointSorter", "--debug-svg", file("d.svg")});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_NE(printed.out.find("Wrote "), std::string::npos);
    const std::string drawing = nmk_shell::text_of(file("d.svg"));
    EXPECT_TRUE(plain_syntax::Xml::is_well_formed(drawing));
    EXPECT_NE(drawing.find(">unsorted_points<"), std::string::npos);
    EXPECT_NE(drawing.find(">sorted_points<"), std::string::npos);
    EXPECT_EQ(nmkDebugGeometry::get_from_manager("nmkPointSorter").on(1), 0);
    EXPECT_EQ(nmkDebugGeometry::get_from_manager("nmkPointSorter").size(), 0);
}

TEST_F(order_command, reports_that_nothing_was_drawn_below_the_level_of_the_channel) {
    const std::string name = write("s.csv", square);
    const nmk_shell::Printed printed = nmk_shell::run(
        {"order", name, "--type", "x", "--debug=nmkPointSorter=1", "--debug-svg", file("d.svg")});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_NE(printed.out.find("nothing was drawn on the debug channel"), std::string::npos);
    EXPECT_EQ(nmk_shell::text_of(file("d.svg")).find("sorted_points"), std::string::npos);
}

TEST_F(order_command, draws_one_way_lines_on_the_channel_of_their_state) {
    const std::string name = write("l.csv", "0,0,0,1,0,0\n5,5,0,6,5,0\n9,0,0,8,0,0\n");
    const nmk_shell::Printed printed =
        nmk_shell::run({"order", name, "--type", "one-way", "--debug",
                        "nmkAnnealStateNonReversible", "--debug-svg", file("d.svg")});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_NE(nmk_shell::text_of(file("d.svg")).find(">Before ordering<"), std::string::npos);
}

TEST_F(order_command, refuses_an_unknown_debug_channel_and_one_debug_option_without_the_other) {
    const std::string name = write("s.csv", square);
    const std::string drawing = file("d.svg");
    nmk_shell::expect_refused(
        nmk_shell::run({"order", name, "--debug", "nobody", "--debug-svg", drawing}),
        "unknown debug channel");
    nmk_shell::expect_refused(
        nmk_shell::run({"order", name, "--debug", "nmkPointSorter=0", "--debug-svg", drawing}),
        "expected 1 to 9");
    nmk_shell::expect_refused(
        nmk_shell::run({"order", name, "--debug", "nmkPointSorter=x", "--debug-svg", drawing}),
        "expected 1 to 9");
    nmk_shell::expect_refused(nmk_shell::run({"order", name, "--debug", "nmkPointSorter"}),
                              "must be given together");
    nmk_shell::expect_refused(nmk_shell::run({"order", name, "--debug-svg", drawing}),
                              "must be given together");
    nmk_shell::expect_refused(nmk_shell::run({"order", name, "--debug", "nmkPointSorter",
                                              "--debug-svg", drawing, "--svg", drawing}),
                              "the name of two outputs");
    EXPECT_EQ(files(), 1U);
}

TEST_F(order_command, reports_that_standard_output_is_full) {
    const std::string name = write("s.csv", square);
    std::ostringstream err;
    std::ofstream full("/dev/full");
    if (!full) {
        GTEST_SKIP() << "/dev/full does not exist";
    }
    EXPECT_EQ(nmk_shell::run_tool(nmk_shell::tool_commands, {"order", name}, full, err), 2);
    EXPECT_NE(err.str().find("standard output"), std::string::npos);
}

TEST_F(order_command, bad_input_is_refused_with_one_line_and_writes_no_file) {
    const std::string bad[] = {file("missing.drl"),
                               folder.path(),
                               write("r.csv", "1,2\n1,2,3,4\n"),
                               write("n.csv", "1,2\nnan,4\n"),
                               write("m.drl", "M48\nMETRIC\n"),
                               write("b.drl", std::string("M48\0\xFF\x01", 6))};
    const std::size_t before = files();
    for (const std::string& name : bad) {
        nmk_shell::expect_refused(
            nmk_shell::run({"order", name, "-o", file("o.csv"), "--svg", file("o.svg")}), name);
    }
    EXPECT_EQ(files(), before);
}

TEST_F(order_command, refuses_a_missing_name_and_an_unknown_type) {
    nmk_shell::expect_refused(nmk_shell::run({"order"}), "expected FILE");
    nmk_shell::expect_refused(nmk_shell::run({"order", cover_plate, "--type", "cylinder"}),
                              "--type \"cylinder\": expected best, none, shortest");
}

TEST_F(order_command, the_level_of_the_sorter_chooses_the_older_method) {
    std::string points;
    unsigned word = 1;
    for (int i = 0; i < 80; ++i) {
        word = word * 1664525U + 1013904223U;
        points += std::to_string(word >> 20U);
        points += i % 2 == 0 ? "," : "\n";
    }
    const std::string name = write("p.csv", points);
    const auto out_of = [&](const std::string& level) {
        return nmk_shell::run({"order", name, "--type", "shortest", "--level", level}).out;
    };
    const std::string plain = nmk_shell::run({"order", name, "--type", "shortest"}).out;
    EXPECT_NE(plain, out_of("itemsorter=0"));
    EXPECT_EQ(out_of("itemsorter=default"), plain);
}

struct StopAtOnce : nmkProgressBreak {
    int increment() override { return 1; }
};

TEST_F(order_command, a_stop_still_writes_every_item_and_is_reported) {
    StopAtOnce stop;
    std::ostringstream out;
    std::ostringstream err;
    const auto options = nmk_shell::read_options(
        declare_order_options, {cover_plate, "--type", "closest", "-o", file("o.drl")});
    ASSERT_TRUE(bool(options));
    EXPECT_EQ(run_order(*options, out, err, &stop), 0);
    EXPECT_NE(err.str().find("stopped"), std::string::npos);
    EXPECT_NE(out.str().find("T1: stopped"), std::string::npos);
    EXPECT_NE(out.str().find("T4: not ordered"), std::string::npos);
    EXPECT_NE(nmk_shell::run({"order", file("o.drl"), "--type", "none"}).out.find("403 items"),
              std::string::npos);
}

TEST_F(order_command, the_picture_shows_every_cut_twice_with_y_upwards) {
    EXPECT_EQ(nmk_shell::run({"order", cover_plate, "--type", "xz", "--svg", file("a.svg")}).code,
              0);
    const std::string svg = nmk_shell::text_of(file("a.svg"));
    EXPECT_TRUE(plain_syntax::Xml::is_well_formed(svg));
    EXPECT_LT(svg.size(), 300000U);
    std::size_t circles = 0;
    for (std::size_t at = 0; (at = svg.find("<circle", at)) != svg.npos; ++at) ++circles;
    // 365 holes and 4 starts in each panel; a hole and a start in the legend.
    EXPECT_EQ(circles, 2U * (365U + 4U) + 2U);
    nmk_shell::run({"order", write("two.csv", "0,0\n0,10\n"), "--svg", file("b.svg")});
    const std::string two = nmk_shell::text_of(file("b.svg"));
    const auto cy = [&](std::size_t at) {
        return std::stod(two.substr(two.find("cy=\"", at) + 4));
    };
    const std::size_t first = two.find("<circle");
    EXPECT_GT(cy(first), cy(two.find("<circle", first + 1)));
}

TEST_F(order_command, pictures_of_many_items_have_thinner_travel) {
    const auto drawing_of = [&](int items) {
        std::string points;
        for (int i = 0; i < items; ++i) {
            points += std::to_string(i % 70) + "," + std::to_string(i / 70) + "\n";
        }
        const std::string name = write("many.csv", points);
        EXPECT_EQ(
            nmk_shell::run({"order", name, "--type", "x", "--quiet", "--svg", file("a.svg")}).code,
            0);
        return nmk_shell::text_of(file("a.svg"));
    };
    const std::string few = drawing_of(700);
    const std::string more = drawing_of(1400);
    const std::string many = drawing_of(3500);
    const std::string travel = "stroke-dasharray=\"4.5 2.5\"";
    EXPECT_NE(few.find("stroke-width=\"1.7\" " + travel), std::string::npos);
    EXPECT_NE(more.find("stroke-width=\"1.2\" " + travel), std::string::npos);
    EXPECT_NE(many.find("stroke-width=\"0.8\" " + travel), std::string::npos);
}

TEST_F(order_command, pictures_of_odd_jobs_are_well_formed) {
    const std::string odd[] = {write("one.csv", "5,5\n"), write("same.csv", "1,1\n1,1\n1,1\n"),
                               write("far.csv", "-1e9,0\n1e9,0\n0,1\n"),
                               write("thin.csv", "0,0\n0,1000\n0,500\n"),
                               write("small.csv", "0,0\n1e-7,0\n")};
    for (const std::string& name : odd) {
        const nmk_shell::Printed printed = nmk_shell::run({"order", name, "--svg", file("a.svg")});
        EXPECT_EQ(printed.code, 0) << printed.err;
        const std::string svg = nmk_shell::text_of(file("a.svg"));
        EXPECT_TRUE(plain_syntax::Xml::is_well_formed(svg)) << name;
        EXPECT_EQ(svg.find("nan"), std::string::npos) << name;
        EXPECT_EQ(svg.find("inf"), std::string::npos) << name;
    }
}

TEST_F(order_command, real_files_are_written_with_every_item) {
    const fs::path data(real_inputs::path(""));
    for (const char* const kind : {"drill", "tsp"}) {
        if (const auto missing = real_inputs::missing(kind)) GTEST_SKIP() << *missing;
    }
    std::size_t ordered = 0;
    for (const char* const kind : {"drill", "tsp"}) {
        for (const auto& entry : fs::directory_iterator(data / kind)) {
            const auto job = nmk_job_files::read_job_file(entry.path().string(), std::nullopt);
            if (!bool(job) || job->items.empty() || entry.file_size() > 50000) {
                continue;
            }
            const std::string out = std::string(kind) == "drill" ? file("o.drl") : file("o.csv");
            const nmk_shell::Printed printed =
                nmk_shell::run({"order", entry.path().string(), "--type", "closest", "--json", "-o",
                                out, "--svg", file("o.svg")});
            EXPECT_EQ(printed.code, 0) << printed.err;
            EXPECT_TRUE(plain_syntax::Xml::is_well_formed(nmk_shell::text_of(file("o.svg"))))
                << entry.path();
            const auto again = nmk_job_files::read_job_file(out, std::nullopt);
            ASSERT_TRUE(bool(again)) << entry.path();
            EXPECT_EQ(again->items.size(), job->items.size()) << entry.path();
            ++ordered;
        }
    }
    EXPECT_GE(ordered, 10U);
}

}  // namespace

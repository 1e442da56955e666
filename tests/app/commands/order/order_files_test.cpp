// order_files: `nmk order` with several files and several workers.

#include "commands/order/order_files.h"

#include <gtest/gtest.h>
#include <nmkprogressbreak/nmkProgressBreak.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "app/shell/command_runner.h"
#include "app/text/plain_syntax.h"
#include "commands/order/order_command.h"
#include "commands/order/ordered_run_bytes.h"
#include "real_inputs.h"
#include "scratch_directory.h"

namespace nmk_order {
namespace {

namespace fs = std::filesystem;

const char* const square = "x,y\n0,0\n30,40\n0,40\n30,0\n";
const char* const row = "0,0\n3,4\n0,4\n3,0\n";

std::string drill_program(int tools, int holes) {
    std::string text = "M48\nMETRIC\n";
    for (int tool = 1; tool <= tools; ++tool) {
        text += "T" + std::to_string(tool) + "C0.5\n";
    }
    text += "%\n";
    unsigned word = 7;
    for (int tool = 1; tool <= tools; ++tool) {
        text += "T" + std::to_string(tool) + "\n";
        for (int hole = 0; hole < holes + tool; ++hole) {
            word = word * 1664525U + 1013904223U;
            text += "X" + std::to_string(word >> 24U) + ".0Y" + std::to_string(word >> 16U & 255U) +
                    ".0\n";
        }
    }
    return text + "M30\n";
}

class order_files_command : public testing::Test {
  protected:
    order_files_command() { fs::create_directory(file("out")); }

    std::string file(const std::string& name) const { return folder.path() + "/" + name; }
    std::string write(const std::string& name, const std::string& text) const {
        return folder.file(name, text);
    }
    std::string text(const std::string& name) const { return nmk_shell::text_of(file(name)); }

    ScratchDirectory folder;
};

TEST_F(order_files_command, prints_one_table_with_a_row_for_each_file_and_a_total) {
    const std::string a = write("a.csv", square);
    const std::string b = write("b.csv", row);
    const nmk_shell::Printed printed = nmk_shell::run({"order", a, b, "--acceleration", "2500"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(printed.err, "");
    const std::string blanks(a.size() - 5, ' ');
    EXPECT_EQ(printed.out, "file " + blanks + "  tools  items  before  after  saved  rapids\n" +
                               "     " + blanks + "                    mm     mm      %       s\n" +
                               a + "      1      4   130.0  100.0   23.1     0.8\n" + b +
                               "      1      4    13.0   10.0   23.1     0.2\n" +
                               std::string(a.size() + 44, '-') + "\n" + "total" + blanks +
                               "             8   143.0  110.0   23.1     1.0\n");
}

TEST_F(order_files_command, a_name_without_room_has_a_line_above_its_figures) {
    const std::string a = write("a.csv", square);
    const std::string b = write(std::string(70, 'n') + ".csv", row);
    const std::string out = nmk_shell::run({"order", a, b}).out;
    EXPECT_NE(out.find("\n" + b + "\n "), std::string::npos) << out;
    std::istringstream lines(out);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_TRUE(line == b || line.size() <= 80U) << line;
    }
}

TEST_F(order_files_command, in_place_replaces_each_file_by_what_a_run_of_its_own_writes) {
    const std::string names[] = {"a.csv", "b.drd", "c.txt", "noending", "e.tsp"};
    const std::string texts[] = {
        square, drill_program(3, 20), row, drill_program(2, 5),
        "DIMENSION: 4\nNODE_COORD_SECTION\n1 0 0\n2 3 4\n3 0 4\n4 3 0\nEOF\n"};
    std::vector<std::string> words = {"order", "--in-place", "--jobs", "2"};
    for (std::size_t i = 0; i < std::size(names); ++i) {
        words.push_back(write(names[i], texts[i]));
        const std::string alone = fs::path(names[i]).extension().string();
        EXPECT_EQ(nmk_shell::run({"order", file(names[i]), "-o", file("out/alone" + alone)}).code,
                  0);
        fs::rename(file("out/alone" + alone), file("out/" + names[i]));
    }
    const nmk_shell::Printed printed = nmk_shell::run(words);
    EXPECT_EQ(printed.code, 0) << printed.err;
    for (std::size_t i = 0; i < std::size(names); ++i) {
        EXPECT_EQ(text(names[i]), text("out/" + names[i])) << names[i];
        EXPECT_NE(text(names[i]), texts[i]) << names[i];
        EXPECT_NE(printed.out.find("Wrote " + file(names[i]) + ".\n"), std::string::npos);
    }
}

TEST_F(order_files_command, output_folder_gets_each_file_under_its_name_and_inputs_are_kept) {
    const std::string a = write("a.csv", square);
    const std::string b = write("b.drl", drill_program(1, 9));
    const nmk_shell::Printed printed =
        nmk_shell::run({"order", a, b, "--output-folder", file("out")});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(text("a.csv"), square);
    EXPECT_NE(text("out/a.csv"), square);
    EXPECT_EQ(text("out/a.csv").size(), text("a.csv").size());
    EXPECT_TRUE(text("out/b.drl").starts_with("M48\n"));
}

TEST_F(order_files_command, the_output_is_the_same_for_any_number_of_workers) {
    std::vector<std::string> words = {"order"};
    for (int i = 0; i < 4; ++i) {
        words.push_back(write("f" + std::to_string(i) + ".drl", drill_program(1 + 3 * i, 40)));
    }
    write("out/x", "");
    words.insert(words.end(), {"--output-folder", file("out"), "--effort", "1"});
    std::set<std::string> printed;
    std::set<std::string> written;
    for (const std::string jobs : {"1", "2", "7"}) {
        std::vector<std::string> with_jobs = words;
        with_jobs.insert(with_jobs.end(), {"--jobs", jobs});
        printed.insert(nmk_shell::run(with_jobs).out);
        written.insert(text("out/f0.drl") + text("out/f1.drl") + text("out/f2.drl") +
                       text("out/f3.drl"));
    }
    EXPECT_EQ(printed.size(), 1U);
    EXPECT_EQ(written.size(), 1U);
    EXPECT_EQ(nmk_shell::run({"order", words[4], "--effort", "1", "--jobs", "3"}).out,
              nmk_shell::run({"order", words[4], "--effort", "1"}).out);
    EXPECT_EQ(nmk_shell::run({"order", words[4], "--effort", "1", "--json", "--jobs", "3"}).out,
              nmk_shell::run({"order", words[4], "--effort", "1", "--json"}).out);
}

TEST_F(order_files_command, a_bad_file_does_not_stop_the_others_and_is_reported_at_the_end) {
    const std::string a = write("a.csv", square);
    const std::string bad = write("bad.csv", "1,2\n1,2,3,4\n");
    const std::string b = write("b.csv", row);
    for (const std::string jobs : {"1", "2"}) {
        write("a.csv", square);
        const nmk_shell::Printed printed =
            nmk_shell::run({"order", a, bad, file("missing.drl"), b, "--in-place", "--jobs", jobs});
        EXPECT_EQ(printed.code, 2);
        EXPECT_NE(printed.out.find("\n" + a + " "), std::string::npos) << printed.out;
        EXPECT_NE(printed.out.find("\n" + b + " "), std::string::npos);
        EXPECT_EQ(printed.out.find(bad), std::string::npos);
        EXPECT_TRUE(printed.err.starts_with(bad + ":2: ")) << printed.err;
        EXPECT_NE(printed.err.find("\n" + file("missing.drl") + ": cannot be opened"),
                  std::string::npos);
        EXPECT_NE(text("a.csv"), square);
        EXPECT_EQ(text("bad.csv"), "1,2\n1,2,3,4\n");
    }
}

TEST_F(order_files_command, a_file_that_cannot_be_written_does_not_stop_the_others) {
    const std::string a = write("a.csv", square);
    const std::string b = write("b.csv", row);
    fs::create_directory(file("out/a.csv"));
    const nmk_shell::Printed printed =
        nmk_shell::run({"order", a, b, "--output-folder", file("out")});
    EXPECT_EQ(printed.code, 2);
    EXPECT_TRUE(printed.err.starts_with(file("out/a.csv") + ": ")) << printed.err;
    EXPECT_EQ(text("out/b.csv").size(), text("b.csv").size());
}

TEST_F(order_files_command, json_has_the_figures_of_each_file) {
    const nmk_shell::Printed printed =
        nmk_shell::run({"order", write("a.csv", square), write("b.csv", row), "--json"});
    EXPECT_TRUE(plain_syntax::Json::is_valid(printed.out)) << printed.out;
    EXPECT_NE(printed.out.find("a.csv\""), std::string::npos);
    EXPECT_NE(printed.out.find("b.csv\""), std::string::npos);
    EXPECT_EQ(nmk_shell::run({"order", file("a.csv"), file("b.csv"), "--quiet"}).out, "");
}

struct StopAtOnce : nmkProgressBreak {
    int jump_to(double) override { return 1; }
};

TEST_F(order_files_command, a_stop_keeps_every_item_in_the_order_of_the_file) {
    const std::string a = write("a.csv", square);
    const auto options = nmk_shell::read_options(
        declare_order_options, {a, write("b.csv", row), "--in-place", "--jobs", "2"});
    ASSERT_TRUE(bool(options));
    StopAtOnce stop;
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(run_order(*options, out, err, &stop), 0);
    EXPECT_EQ(text("a.csv"), square);
    EXPECT_NE(err.str().find("stopped"), std::string::npos);
    EXPECT_NE(out.str().find(": all: not ordered"), std::string::npos) << out.str();
}

TEST_F(order_files_command, ordered_runs_survive_the_way_from_a_worker) {
    const std::vector<OrderedRun> runs = {
        {{{3, false}, {1, true}, {4294967295U, false}}, false, {"T1: a note", "T1: another"}},
        {{}, true, {}},
        {{{0, false}}, true, {"T2: not ordered"}}};
    const std::string bytes = bytes_of_runs(runs);
    const std::vector<OrderedRun> again = runs_of_bytes(bytes);
    EXPECT_EQ(bytes_of_runs(again), bytes);
    EXPECT_EQ(again.size(), 3U);
    EXPECT_EQ(again[0].notes[1], "T1: another");
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        EXPECT_LE(runs_of_bytes(bytes.substr(0, length)).size(), 3U);
    }
}

TEST_F(order_files_command, refuses_outputs_that_would_meet) {
    const std::string a = write("a.csv", square);
    const std::string same = write("out/a.csv", row);
    const auto refused = [](const std::vector<std::string>& words, const std::string& expected) {
        std::vector<std::string> all = {"order"};
        all.insert(all.end(), words.begin(), words.end());
        nmk_shell::expect_refused(nmk_shell::run(all), expected);
    };
    fs::create_directory(file("third"));
    refused({a, same, "--output-folder", file("third")}, "is the name of two outputs");
    refused({a, a, "--in-place"}, "is the name of two outputs");
    refused({a, file("out/../a.csv"), "--in-place"}, "is the name of two outputs");
    refused({same, "--output-folder", file("out")}, "is in --output-folder; expected --in-place");
    refused({a, "--output-folder", file("none")}, "expected a directory that exists");
    refused({a, "--output-folder", file("out"), "--in-place"}, "exclude each other");
    refused({a, same, "-o", file("o.csv")}, "take one FILE");
    refused({a, same, "--svg", file("o.svg")}, "take one FILE");
    refused({a, "--in-place", "-o", file("o.csv")}, "cannot be combined with --in-place");
    refused({a, "--jobs", "0"}, "a whole number from 1 to 64");
    refused({a, "--jobs", "2", "--debug", "nmkPointSorter", "--debug-svg", file("d.svg")},
            "cannot be combined with --jobs");
    EXPECT_EQ(text("a.csv"), square);
    EXPECT_EQ(text("out/a.csv"), row);
}

TEST_F(order_files_command, orders_real_drill_files_in_place_with_one_table) {
    if (const auto missing = real_inputs::missing("drill")) GTEST_SKIP() << *missing;
    std::vector<std::string> words = {"order", "--in-place", "--jobs", "2", "--type", "closest"};
    for (const auto& entry : fs::directory_iterator(real_inputs::path("drill"))) {
        if (entry.path().extension() == ".drl") {
            fs::copy(entry.path(), file(entry.path().filename().string()));
            words.push_back(file(entry.path().filename().string()));
        }
    }
    const nmk_shell::Printed printed = nmk_shell::run(words);
    std::size_t tables = 0;
    for (std::size_t at = 0; (at = printed.out.find("\ntotal ", at)) != std::string::npos; ++at) {
        ++tables;
    }
    EXPECT_EQ(tables, 1U) << printed.out;
    EXPECT_NE(printed.out.find("p2g_slots.drl"), std::string::npos);
}

}  // namespace
}  // namespace nmk_order

// route_picture: coordinates, legend and names of the drawings of `nmk route`, and its page.

#include "commands/route/route_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "app/browser/browser.h"
#include "app/draw/drawn_elements.h"
#include "app/shell/command_runner.h"
#include "app/text/plain_syntax.h"
#include "draw/fitted_text.h"
#include "scratch_directory.h"

namespace nmk_route {
namespace {

using nmk_draw::drawn_elements;
using nmk_draw::DrawnElement;

const std::string clamps = NMK_SOURCE_DIR "/samples/clamps.csv";
const std::string workshop = NMK_SOURCE_DIR "/samples/workshop.map";

struct Drawn {
    std::string picture, page;
};

Drawn drawn(std::vector<std::string> words) {
    const ScratchDirectory folder;
    const std::string svg = folder.path() + "/a.svg";
    const std::string html = folder.path() + "/a.html";
    words.insert(words.begin(), "route");
    words.insert(words.end(), {"--quiet", "--svg", svg, "--html", html});
    const nmk_shell::Printed printed = nmk_shell::run(words);
    EXPECT_NE(printed.code, 2) << printed.err;
    return {nmk_shell::text_of(svg), nmk_shell::text_of(html)};
}

/// The ticks of one axis: "middle" those along x, "end" those along y.
std::vector<DrawnElement> ticks(const std::string& svg, const std::string& anchor) {
    std::vector<DrawnElement> found = drawn_elements(svg, "text", "tick");
    std::erase_if(found,
                  [&](const DrawnElement& tick) { return tick.value("text-anchor") != anchor; });
    return found;
}

std::vector<std::string> words_of(const std::vector<DrawnElement>& elements) {
    std::vector<std::string> words;
    for (const DrawnElement& element : elements) words.push_back(element.text);
    return words;
}

TEST(route_picture, has_round_coordinates_on_both_axes) {
    const Drawn map = drawn({workshop, "--start", "3,36", "--goal", "92,36"});
    EXPECT_EQ(
        words_of(ticks(map.picture, "middle")),
        (std::vector<std::string>{"0", "10", "20", "30", "40", "50", "60", "70", "80", "90"}));
    EXPECT_EQ(words_of(ticks(map.picture, "end")),
              (std::vector<std::string>{"0", "10", "20", "30"}));
    EXPECT_EQ(words_of(ticks(map.page, "end")), words_of(ticks(map.picture, "end")));
}

TEST(route_picture, a_coordinate_is_where_the_cell_of_that_coordinate_is) {
    const ScratchDirectory folder;
    const std::string name =
        folder.file("m.map", "type octile\nheight 3\nwidth 5\nmap\n.....\n.....\n.....\n");
    const std::string svg = drawn({name, "--start", "2,2", "--goal", "4,0"}).picture;
    const auto position = [&](const std::string& anchor, const std::string& words) {
        for (const DrawnElement& tick : ticks(svg, anchor)) {
            if (tick.text == words) return tick.origin;
        }
        ADD_FAILURE() << words << " is missing";
        return nmk_draw::SvgPoint{};
    };
    const DrawnElement start = drawn_elements(svg, "circle", "mark").back();
    EXPECT_DOUBLE_EQ(position("middle", "2").x, start.origin.x);
    EXPECT_NEAR(position("end", "2").y - 5.0, start.origin.y, 0.01);
    EXPECT_LT(position("end", "0").y, position("end", "2").y);  // rows of a map run downwards
}

TEST(route_picture, coordinates_of_a_list_run_upwards) {
    const std::string svg = drawn({clamps, "--start", "0,5", "--goal", "8,8"}).picture;
    const std::vector<DrawnElement> rows = ticks(svg, "end");
    ASSERT_GE(rows.size(), 2U);
    EXPECT_GT(rows.front().origin.y, rows.back().origin.y);
    EXPECT_LT(std::stod(rows.front().text), std::stod(rows.back().text));
}

TEST(route_picture, a_single_cell_has_coordinates_too) {
    const std::string svg =
        drawn({clamps, "--box", "7,7,7,7", "--steps", "1", "--start", "7,7", "--goal", "7,7"})
            .picture;
    EXPECT_EQ(words_of(ticks(svg, "middle")), std::vector<std::string>{"7"});
    EXPECT_EQ(words_of(ticks(svg, "end")), std::vector<std::string>{"7"});
}

/// The classes of lines that appear in a part of a drawing.
std::set<std::string> kinds_of_lines(const std::string& svg) {
    std::set<std::string> kinds;
    for (const DrawnElement& element : drawn_elements(svg)) {
        for (const std::string name : {"route", "goal-line", "goal-movement", "borders"}) {
            if (element.is_in(name)) kinds.insert(name);
        }
    }
    return kinds;
}

TEST(route_picture, every_line_that_is_drawn_is_in_the_legend) {
    std::set<std::string> seen;
    for (const std::string kind : {"point", "line", "line-with-gradient", "moving-line"}) {
        std::vector<std::string> words = {clamps, "--start",     "0,5", "--goal",
                                          "8,8",  "--goal-kind", kind};
        if (kind.ends_with("gradient") || kind == "moving-line") {
            words.insert(words.end(), {"--gradient", "0.5", "--forward"});
        }
        const std::string svg = drawn(words).picture;
        const std::size_t legend = svg.find(">free<");
        ASSERT_NE(legend, std::string::npos);
        const std::size_t symbol = svg.rfind("<rect", legend);
        const std::set<std::string> lines = kinds_of_lines(svg.substr(0, symbol));
        EXPECT_EQ(kinds_of_lines(svg.substr(symbol)), lines) << kind;
        seen.insert(lines.begin(), lines.end());
    }
    EXPECT_EQ(seen.size(), 4U);
}

TEST(route_picture, names_the_movement_of_a_goal_that_has_moved) {
    const std::string svg = drawn({clamps, "--start", "0,5", "--goal", "8,8", "--goal-kind",
                                   "moving-line", "--gradient", "0.5", "--forward"})
                                .picture;
    EXPECT_NE(svg.find(">movement of the goal<"), std::string::npos);
    EXPECT_NE(svg.find(">goal at first<"), std::string::npos);
}

/// A map whose cells are blocked at random, but for the corners.
std::string random_map(int side) {
    std::mt19937 random(20261122);
    const std::string size = std::to_string(side);
    std::string text = "type octile\nheight " + size + "\nwidth " + size + "\nmap\n";
    for (int row = 0; row < side; ++row) {
        std::string line(static_cast<std::size_t>(side), '.');
        for (char& cell : line) cell = random() % 10 < 3 ? '@' : '.';
        line.front() = line.back() = '.';
        text += line + "\n";
    }
    return text;
}

TEST(route_picture, of_a_large_map_stays_below_five_megabytes_and_says_what_is_left_out) {
    const ScratchDirectory folder;
    const Drawn large =
        drawn({folder.file("m.map", random_map(1200)), "--start", "0,0", "--goal", "0,300"});
    for (const std::string& file : {large.picture, large.page}) {
        EXPECT_LT(file.size(), 5'000'000U);
        EXPECT_NE(file.find("one in 3 columns and one in 3 rows are drawn."), std::string::npos);
    }
    const Drawn small =
        drawn({folder.file("s.map", random_map(60)), "--start", "0,0", "--goal", "0,30"});
    EXPECT_EQ(small.picture.find("are drawn"), std::string::npos);
}

TEST(route_picture, draws_straight_steps_as_one_line) {
    const ScratchDirectory folder;
    const std::string name =
        folder.file("m.map", "type octile\nheight 3\nwidth 6\nmap\n......\n@@@@..\n......\n");
    const std::string svg = drawn({name, "--start", "0,0", "--goal", "0,2"}).picture;
    const std::string route = drawn_elements(svg, "path", "route").front().value("d");
    EXPECT_EQ(std::count(route.begin(), route.end(), 'M'), 1) << route;
    EXPECT_EQ(std::count(route.begin(), route.end(), 'L'), 3) << route;  // east, south, west
}

TEST(route_picture, long_names_are_cut_with_an_ellipsis) {
    const ScratchDirectory folder;
    const std::string name = folder.file(std::string(240, 'w') + ".map",
                                         "type octile\nheight 2\nwidth 2\nmap\n..\n..\n");
    const std::string svg = drawn({name, "--start", "0,0", "--goal", "1,1"}).picture;
    const DrawnElement heading = drawn_elements(svg, "text", "").front();
    EXPECT_TRUE(heading.text.ends_with("\xE2\x80\xA6"));
    EXPECT_LE(heading.number("x") + nmk_draw::text_width(heading.text, 26.0),
              std::stod(svg.substr(svg.find("width=\"") + 7)));
}

TEST(route_page, has_one_heading_and_its_summary_once) {
    const std::string page = drawn({workshop, "--start", "3,36", "--goal", "92,36"}).page;
    EXPECT_TRUE(plain_syntax::Xml::is_well_formed(page));
    const auto count = [&](const std::string& words) {
        std::size_t found = 0;
        for (std::size_t at = 0; (at = page.find(words, at)) != page.npos; ++at) ++found;
        return found;
    };
    EXPECT_EQ(count("<h1>workshop.map</h1>"), 1U);
    EXPECT_EQ(count("96 x 40 cells, 1103 blocked"), 2U);  // above the drawing, and its name
    EXPECT_EQ(count("route of 103 nodes"), 1U);           // for those who cannot see the drawing
}

TEST(route_page_in_browser, plays_the_search_and_shows_the_route_at_its_end) {
    if (const auto missing = browser::missing()) GTEST_SKIP() << *missing;
    const std::string slide =
        "(() => { const s = document.querySelector('input[type=range]'); s.value = 10; "
        "s.dispatchEvent(new Event('input')); })()";
    const std::string shown =
        "[...document.querySelectorAll('.visited path')].filter((p) => "
        "p.getAttribute('d')).length";
    const std::string route = "document.querySelector('.after-all').style.display";
    const auto lines = browser::drive(
        drawn({workshop, "--start", "3,36", "--goal", "92,36"}).page, {400, 800, ""},
        {shown, route, slide, shown, route, "document.querySelector('output').textContent",
         "document.documentElement.scrollWidth", "!requests", "!errors"});
    EXPECT_EQ(lines[0], "40");
    EXPECT_EQ(lines[1], "\"\"");
    EXPECT_EQ(lines[3], "10");
    EXPECT_EQ(lines[4], "\"none\"");
    EXPECT_EQ(lines[5], "\"step 10 of 40\"");
    EXPECT_EQ(lines[6], "400");
    EXPECT_EQ(lines[7], "[]");
    EXPECT_EQ(lines[8], "[]");
}

}  // namespace
}  // namespace nmk_route

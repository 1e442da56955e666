// order_picture: what the drawings of `nmk order` show, and that no label or mark hides it.

#include "commands/order/order_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <set>

#include "app/commands/order/picture_fixtures.h"
#include "app/draw/drawn_elements.h"
#include "app/shell/command_runner.h"
#include "app/text/plain_syntax.h"
#include "draw/colour_scale.h"
#include "draw/fitted_text.h"
#include "draw/label_places.h"
#include "formats/job_files/read_job.h"
#include "real_inputs.h"
#include "scratch_directory.h"

namespace nmk_order {
namespace {

using nmk_draw::drawn_elements;
using nmk_draw::DrawnElement;

constexpr std::size_t five_megabytes = 5'000'000;

/// The picture that the command draws of a file.
std::string picture_of(const std::string& file, const std::string& type) {
    const ScratchDirectory folder;
    const std::string svg = folder.path() + "/a.svg";
    const std::vector<std::string> words = {"order",         file,      "--type", type,
                                            "--allow-empty", "--quiet", "--svg",  svg};
    EXPECT_EQ(nmk_shell::run(words).code, 0);
    return nmk_shell::text_of(svg);
}

/// The boxes of the labels that begin with these words.
std::vector<nmk_draw::LabelBox> labels(const std::string& svg, const std::string& words) {
    std::vector<nmk_draw::LabelBox> boxes;
    const DrawnElement* box = nullptr;
    const std::vector<DrawnElement> elements = drawn_elements(svg);
    for (const DrawnElement& element : elements) {
        if (element.name == "rect" && element.is_in("label")) {
            box = &element;
        } else if (element.name == "text" && box != nullptr) {
            if (element.text.starts_with(words)) {
                const nmk_draw::SvgPoint corner = box->at("x", "y");
                boxes.push_back({corner.x, corner.y, box->number("width"), box->number("height")});
            }
            box = nullptr;
        }
    }
    return boxes;
}

void expect_longest_moves_in_sight(const std::string& svg, const std::string& name) {
    const std::vector<nmk_draw::LabelBox> boxes = labels(svg, "longest ");
    const std::vector<DrawnElement> moves = drawn_elements(svg, "line", "longest");
    ASSERT_EQ(moves.size(), 3U) << name;  // two panels and the legend
    EXPECT_EQ(boxes.size(), 2U) << name;
    for (const nmk_draw::LabelBox& box : boxes) {
        for (std::size_t i = 0; i < 2; ++i) {
            EXPECT_FALSE(crosses(box, moves[i].at("x1", "y1"), moves[i].at("x2", "y2"))) << name;
        }
    }
}

TEST(order_picture, the_label_of_the_longest_move_never_covers_it) {
    for (const std::string type : {"none", "x", "xz", "closest", "radial"}) {
        expect_longest_moves_in_sight(picture_of(NMK_SOURCE_DIR "/samples/cover_plate.drl", type),
                                      type);
    }
    for (unsigned seed = 1; seed <= 20; ++seed) {
        expect_longest_moves_in_sight(DrawnJob(random_job(2, 10, seed)).picture(),
                                      std::to_string(seed));
    }
}

TEST(order_picture, the_label_of_the_longest_move_never_covers_it_in_real_files) {
    const std::string data = real_inputs::path("");
    int compared = 0;
    for (const std::string kind : {"drill", "tsp"}) {
        if (const auto missing = real_inputs::missing(kind)) GTEST_SKIP() << *missing;
        for (const auto& entry : std::filesystem::directory_iterator(data + kind)) {
            if (!nmk_job_files::read_job_file(entry.path().string(), std::nullopt)) continue;
            const std::string svg = picture_of(entry.path().string(), "xz");
            for (const nmk_draw::LabelBox& box : labels(svg, "longest ")) {
                for (const DrawnElement& move : drawn_elements(svg, "line", "longest")) {
                    EXPECT_FALSE(crosses(box, move.at("x1", "y1"), move.at("x2", "y2")))
                        << entry.path();
                    ++compared;
                }
            }
        }
    }
    EXPECT_GE(compared, 50);
}

TEST(order_picture, the_colours_of_the_travel_begin_anew_for_each_tool) {
    const std::string svg = DrawnJob(random_job(3, 40, 5)).picture();
    std::vector<DrawnElement> moves = drawn_elements(svg, "path", "travel");
    for (const std::string tool : {"0", "1", "2"}) {
        std::vector<std::string> colours;
        for (const DrawnElement& path : moves) {
            if (path.tool == tool) colours.push_back(path.value("stroke"));
        }
        ASSERT_EQ(colours.size(), 2U * 39U);  // 39 colours in each panel
        EXPECT_EQ(colours.front(), nmk_draw::order_colour(0.0));
        EXPECT_EQ(colours.back(), nmk_draw::order_colour(1.0));
    }
}

TEST(order_picture, every_start_and_end_carries_the_name_of_its_tool) {
    const std::string svg = DrawnJob(random_job(5, 12, 3)).picture();
    for (const std::string tool : {"T1", "T2", "T3", "T4", "T5"}) {
        EXPECT_EQ(labels(svg, tool).size(), 4U) << tool;  // a start and an end in each panel
    }
    EXPECT_TRUE(labels(DrawnJob(random_job(1, 12, 3)).picture(), "T1").empty());
}

double largest_radius(const std::string& svg) {
    double largest = 0.0;
    for (const DrawnElement& circle : drawn_elements(svg, "circle", "cuts")) {
        largest = std::max(largest, circle.number("r"));
    }
    return largest;
}

nmk_job::MachiningJob grid_job(std::size_t columns, std::size_t rows,
                               std::optional<double> diameter) {
    nmk_job::MachiningJob job;
    job.file_name = "grid.drl";
    job.tools.push_back({"T1", diameter});
    for (std::size_t i = 0; i < columns * rows; ++i) {
        const std::size_t row = i / columns;
        const auto x = static_cast<double>(i % columns);
        const auto y = static_cast<double>(row);
        job.items.push_back({{x, y, 0.0}, std::nullopt, 0});
    }
    return job;
}

TEST(order_picture, holes_shrink_with_their_spacing_so_that_the_travel_is_seen) {
    double last = 1000.0;
    for (const std::size_t side : {50U, 70U, 99U}) {
        const std::string svg = DrawnJob(grid_job(side, side, std::nullopt)).picture();
        const double spacing = 640.0 / 1.12 / static_cast<double>(side - 1);
        const double radius = largest_radius(svg);
        EXPECT_LT(2 * radius, 0.6 * spacing) << side;
        EXPECT_GT(radius, 0.1 * spacing) << side;
        EXPECT_LT(radius, last) << side;
        last = radius;
    }
}

TEST(order_picture, small_holes_of_a_known_diameter_leave_the_travel_of_5000_in_sight) {
    const std::string svg = DrawnJob(grid_job(100, 50, 0.01)).picture();
    const double spacing = 690.0 / 1.12 / 99.0;
    EXPECT_LT(2 * largest_radius(svg), 0.6 * spacing);
    EXPECT_EQ(drawn_elements(svg, "circle", "cuts").size(), 2U * 5000U);
    EXPECT_EQ(svg.find("are drawn"), std::string::npos);
}

TEST(order_picture, holes_with_room_are_drawn_to_scale) {
    const std::string svg = DrawnJob(grid_job(10, 5, 0.5)).picture();
    EXPECT_NEAR(largest_radius(svg), 0.25 * 690.0 / (9.5 * 1.12), 0.01);
}

/// The moves that the paths of the travel draw in both panels.
std::size_t drawn_moves(const std::string& svg) {
    std::size_t moves = 0;
    for (const DrawnElement& path : drawn_elements(svg, "path", "travel")) {
        const std::string data = path.value("d");
        moves += static_cast<std::size_t>(std::count(data.begin(), data.end(), 'L'));
    }
    return moves;
}

TEST(order_picture, past_20000_items_lines_are_thinned) {
    const std::string thin = "class=\"travel\" fill=\"none\" stroke-width=\"0.5\" stroke-linejoin";
    const std::string few = DrawnJob(random_job(4, 5000, 1)).picture();
    EXPECT_EQ(few.find(thin), std::string::npos);
    const std::string many = DrawnJob(random_job(4, 5002, 1)).picture();
    EXPECT_NE(many.find(thin), std::string::npos);
    EXPECT_EQ(drawn_moves(many), 2U * 4U * 5001U);
    EXPECT_EQ(many.find("are drawn"), std::string::npos);
}

TEST(order_picture, past_40000_items_not_all_are_drawn_and_a_note_says_so) {
    const std::string svg = DrawnJob(random_job(4, 12'500, 1)).picture();
    EXPECT_NEAR(static_cast<double>(drawn_moves(svg)), 4 * 12'499.0, 4.0);
    EXPECT_NE(svg.find("Too many items to draw them all: every 2nd of them and every 2nd move are "
                       "drawn."),
              std::string::npos);
}

nmk_job::MachiningJob with_slots(nmk_job::MachiningJob job) {
    for (nmk_job::JobItem& item : job.items) {
        item.end = giPoint3(item.start.x + 1.25, item.start.y + 0.75, 0.0);
    }
    return job;
}

struct Crowd {
    const char* name;
    std::size_t tools, holes;
    bool slots;

    friend std::ostream& operator<<(std::ostream& out, const Crowd& crowd) {
        return out << crowd.name;
    }
};

class order_picture_of_many : public testing::TestWithParam<Crowd> {};

TEST_P(order_picture_of_many, is_well_formed_and_smaller_than_five_megabytes) {
    const Crowd& crowd = GetParam();
    nmk_job::MachiningJob job = random_job(crowd.tools, crowd.holes, 9);
    const DrawnJob drawn(crowd.slots ? with_slots(std::move(job)) : std::move(job));
    for (const std::string& file : {drawn.picture(), drawn.page()}) {
        EXPECT_LT(file.size(), five_megabytes);
        EXPECT_TRUE(plain_syntax::Xml::is_well_formed(file));
    }
}

INSTANTIATE_TEST_SUITE_P(
    sizes, order_picture_of_many,
    testing::Values(Crowd{"20000_slots", 1, 20'000, true}, Crowd{"30000_holes", 6, 5000, false},
                    Crowd{"40000_slots", 2, 20'000, true}, Crowd{"90000_holes", 3, 30'000, false},
                    Crowd{"120000_slots", 30, 4000, true}, Crowd{"8000_tools", 8000, 2, false},
                    Crowd{"50000_tools", 50'000, 1, false}));

TEST(order_picture, shows_the_lengths_of_an_inch_file_in_inches) {
    const ScratchDirectory folder;
    const std::string file =
        folder.file("i.drl", "M48\nINCH,TZ,00.0000\nT1C0.028\n%\nT1\nX0Y0\nX30000Y40000\nM30\n");
    const std::string svg = picture_of(file, "none");
    for (const char* words : {">travel 5.00 in<", ">travel 5.00 in, saved 0.0 %<", ">0.5 in<",
                              ">longest 5.00 in<", ">T1, 0.028 in<"}) {
        EXPECT_NE(svg.find(words), std::string::npos) << words;
    }
    EXPECT_EQ(svg.find(" mm<"), std::string::npos);
    EXPECT_EQ(svg.find(" mm,"), std::string::npos);
}

TEST(order_picture, past_some_dozens_of_tools_there_are_no_labels_of_tools) {
    const std::string some = DrawnJob(random_job(36, 3, 4)).picture();
    EXPECT_GT(labels(some, "T").size(), 100U);
    EXPECT_NE(some.find(">T36, 0.4 mm<"), std::string::npos);
    const std::string many = DrawnJob(random_job(37, 3, 4)).picture();
    EXPECT_EQ(labels(many, "T").size(), 0U);
    EXPECT_EQ(labels(many, "longest ").size(), 2U);
    EXPECT_NE(many.find(">T35, 0.4 mm<"), std::string::npos);
    EXPECT_EQ(many.find(">T36, 0.4 mm<"), std::string::npos);
    EXPECT_NE(many.find(">2 more tools<"), std::string::npos);
}

TEST(order_picture, the_elements_of_thousands_of_tools_grow_with_their_number_alone) {
    const auto count = [](std::size_t tools) {
        return drawn_elements(DrawnJob(random_job(tools, 2, 4)).picture()).size();
    };
    EXPECT_LT(count(4000), 2 * count(2000) + 1);
}

TEST(order_picture, every_kind_of_line_is_in_the_legend_and_none_that_is_not_drawn) {
    const auto classes_of_lines = [](const std::string& svg, bool legend) {
        std::set<std::string> classes;
        const std::size_t end = svg.rfind("class=\"mark\"");
        const std::string part = legend ? svg.substr(end) : svg.substr(0, end);
        for (const std::string name : {"travel", "longest"}) {
            if (part.find("class=\"" + name + "\"") != std::string::npos) classes.insert(name);
        }
        return classes;
    };
    const std::string svg = DrawnJob(random_job(2, 6, 1)).picture();
    EXPECT_EQ(classes_of_lines(svg, false), classes_of_lines(svg, true));
    EXPECT_EQ(classes_of_lines(svg, true).size(), 2U);
    EXPECT_EQ(svg.find(">slot<"), std::string::npos);
    const std::string single = DrawnJob(random_job(1, 1, 1)).picture();
    EXPECT_EQ(single.find(">longest move<"), std::string::npos);
    EXPECT_EQ(single.find("class=\"longest\""), std::string::npos);
    EXPECT_EQ(single.find("first to last"), std::string::npos);
    const std::string slots = DrawnJob(with_slots(random_job(1, 4, 1))).picture();
    EXPECT_EQ(slots.find(">hole<"), std::string::npos);
    EXPECT_NE(slots.find(">slot<"), std::string::npos);
}

TEST(order_picture, long_names_are_cut_with_an_ellipsis) {
    nmk_job::MachiningJob job = random_job(3, 4, 2);
    for (nmk_job::JobTool& tool : job.tools) tool.name += std::string(400, 'w');
    job.file_name = std::string(300, 'm') + ".drl";
    const std::string svg = DrawnJob(job).picture();
    EXPECT_TRUE(plain_syntax::Xml::is_well_formed(svg));
    const double width = std::stod(svg.substr(svg.find("width=\"") + 7));
    int cut = 0;
    for (const DrawnElement& text : drawn_elements(svg, "text", "")) {
        const double length = nmk_draw::text_width(text.text, text.number("font-size"));
        EXPECT_LE(length, width) << text.text;
        if (text.value("text-anchor").empty()) {
            EXPECT_LE(text.at("x", "y").x + length, width) << text.text;
        }
        cut += text.text.ends_with("\xE2\x80\xA6") ? 1 : 0;
    }
    // The heading, three rows, three entries of the legend, and the labels that have room.
    EXPECT_GE(cut, 7 + 6);
}

TEST(order_picture, travel_across_tools_belongs_to_no_tool) {
    const DrawnJob drawn(random_job(3, 10, 2), true);
    for (const DrawnElement& path : drawn_elements(drawn.picture(), "path", "travel")) {
        EXPECT_EQ(path.tool, "");
    }
    EXPECT_TRUE(plain_syntax::Xml::is_well_formed(drawn.picture()));
    EXPECT_TRUE(plain_syntax::Xml::is_well_formed(drawn.page()));
}

}  // namespace
}  // namespace nmk_order

// curve_picture: what a picture of curves shows.

#include <ostream>
#include <regex>

#include "app/commands/curve/curve_runner.h"
#include "scratch_directory.h"

namespace nmk_curve {
namespace {

/// The picture that the command draws.
std::string picture_of(std::vector<std::string> words, int code = 0) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/a.svg";
    words.insert(words.end(), {"--svg", name, "--quiet"});
    const nmk_shell::Printed printed = curve(words);
    EXPECT_EQ(printed.code, code) << printed.err;
    return nmk_shell::text_of(name);
}

int count_of(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++count;
    return count;
}

struct PictureCase {
    const char* name;
    std::vector<std::string> words;
    int curves, tangents, controls, samples;
    const char* view;
};

std::ostream& operator<<(std::ostream& out, const PictureCase& each) { return out << each.name; }

class curve_picture_of : public testing::TestWithParam<PictureCase> {};

TEST_P(curve_picture_of, shows_curves_and_marks) {
    const std::string svg = picture_of(GetParam().words);
    const std::size_t legend = svg.rfind("</g>");
    ASSERT_NE(legend, svg.npos);
    const std::string plot = svg.substr(0, legend);
    EXPECT_EQ(count_of(plot, "class=\"curve\""), GetParam().curves);
    EXPECT_EQ(count_of(plot, "class=\"tangent\""), GetParam().tangents);
    EXPECT_EQ(count_of(plot, "class=\"control\""), GetParam().controls);
    EXPECT_EQ(count_of(plot, "class=\"sample\""), GetParam().samples);
    EXPECT_NE(svg.find(GetParam().view), svg.npos);
    const std::regex not_finite("[-\" ,](nan|inf)[\" ,]");
    EXPECT_FALSE(std::regex_search(svg, not_finite));
}

constexpr const char* from_above = "X to the right, Y upwards";
constexpr const char* from_front = "X to the right, Z upwards";
constexpr const char* from_right = "Y to the right, Z upwards";

const PictureCase pictures[] = {
    {"an_arc", {"arc", "0,0", "1,1", "2,0"}, 1, 2, 0, 0, from_above},
    {"a_bezier", {"bezier", "0,0", "1,2", "2,0", "3,1"}, 1, 2, 4, 0, from_above},
    {"samples", {"line", "0,0", "1,1", "--points", "9"}, 1, 2, 0, 9, from_above},
    {"a_polyline", {"polyline", "0,0", "1,1", "2,0"}, 1, 2, 3, 0, from_above},
    {"a_point", {"point", "1,2"}, 1, 0, 0, 0, from_above},
    {"a_half_line", {"half-line", "1,2", "--direction", "1,1"}, 1, 1, 0, 0, from_above},
    {"a_curve_that_is_flat_in_Y", {"arc", "0,0,0", "1,0,1", "2,0,0"}, 1, 2, 0, 0, from_front},
    {"a_curve_that_is_flat_in_X", {"arc", "5,0,0", "5,1,1", "5,2,0"}, 1, 2, 0, 0, from_right},
    {"a_line_seen_end_on_has_no_arrow", {"line", "0,0,0", "0,0,1"}, 1, 2, 0, 0, from_front},
    {"the_largest_coordinates",
     {"polyline", "-1e9,-1e9,-1e9", "1e9,1e9,1e9", "1e9,-1e9"},
     1,
     2,
     3,
     0,
     "upwards"},
    {"a_drawing", {"info", bracket}, 9, 0, 6, 0, from_above},
    {"pieces", {"split", bracket, "--curve", "1"}, 8, 0, 0, 0, from_above},
};

INSTANTIATE_TEST_SUITE_P(all, curve_picture_of, testing::ValuesIn(pictures),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(curve_picture, marks_the_nearest_point) {
    const std::string svg = picture_of({"closest", bracket, "20,90", "--curve", "1"});
    EXPECT_NE(svg.find("point and nearest point"), svg.npos);
    EXPECT_GE(count_of(svg, "class=\"found\""), 3);
}

TEST(curve_picture, marks_the_place_of_a_difference_with_the_names_of_both_files) {
    const ScratchDirectory scratch;
    const std::string a = scratch.file("a.csv", "0,0\n5,0\n9,3\n");
    const std::string b = scratch.file("b.csv", "0,1\n5,0\n9,3\n");
    const std::string svg = picture_of({"compare", a, b}, 1);
    EXPECT_NE(svg.find("difference"), svg.npos);
    EXPECT_NE(svg.find("b.csv"), svg.npos);
    EXPECT_EQ(picture_of({"compare", a, a}).find("difference"), std::string::npos);
}

TEST(curve_picture, draws_an_infinite_line_through_the_frame) {
    const std::string svg = picture_of({"infinite-line", "0,0", "--direction", "1,0"});
    EXPECT_EQ(count_of(svg, "class=\"curve\""), 1);
    EXPECT_EQ(svg.find(">start<"), svg.npos);
}

}  // namespace
}  // namespace nmk_curve

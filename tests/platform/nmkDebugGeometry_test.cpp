// Debug channels: when they take drawings, and the SVG that they write.

#include <nmkarcline/nmkDebugGeometry.h>

#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <thread>

#include <gtest/gtest.h>

namespace {

const giUnitVec3 upright(0.0, 0.0, 1.0);

// A channel of the test's own name, empty and off before and after.
class nmkDebugGeometryTest : public testing::Test {
  protected:
    nmkDebugGeometryTest()
        : channel(nmkDebugGeometry::get_from_manager(
              testing::UnitTest::GetInstance()->current_test_info()->name())) {}
    ~nmkDebugGeometryTest() override {
        channel.switch_off();
        channel.clear();
    }

    std::string svg() const {
        std::ostringstream out;
        channel.write_svg(out);
        return out.str();
    }

    nmkDebugGeometry& channel;
};

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++found;
    return found;
}

}  // namespace

class nmkDebugGeometry_channel : public nmkDebugGeometryTest {};
class nmkDebugGeometry_drawing : public nmkDebugGeometryTest {};

TEST_F(nmkDebugGeometry_channel, is_off_until_it_is_switched_on) {
    EXPECT_EQ(channel.on(1), 0);
    channel.append_cross_drawing({0.0, 0.0, 0.0}, 1.0, 0, 1, "unsorted_points", 1);
    EXPECT_EQ(channel.size(), 0);
}

TEST_F(nmkDebugGeometry_channel, takes_its_own_level_and_those_below) {
    channel.switch_on(2);
    EXPECT_EQ(channel.on(1), 1);
    EXPECT_EQ(channel.on(2), 1);
    EXPECT_EQ(channel.on(3), 0);
    EXPECT_EQ(channel.on(0), 0);
    channel.append_circle_drawing({0.0, 0.0, 0.0}, 1.0, upright, "a", 3);
    EXPECT_EQ(channel.size(), 0);
    channel.append_circle_drawing({0.0, 0.0, 0.0}, 1.0, upright, "a", 2);
    EXPECT_EQ(channel.size(), 1);
    channel.switch_off();
    EXPECT_EQ(channel.on(1), 0);
    EXPECT_EQ(channel.size(), 1);
}

TEST_F(nmkDebugGeometry_channel, is_the_same_object_for_the_same_name) {
    nmkDebugGeometry& other = nmkDebugGeometry::get_from_manager("nmkDebugGeometry_test_other");
    EXPECT_NE(&channel, &other);
    channel.switch_on(1);
    EXPECT_EQ(other.on(1), 0);
    const std::string same_name = "nmkDebugGeometry_test_other";
    EXPECT_EQ(&other, &nmkDebugGeometry::get_from_manager(same_name.c_str()));
    EXPECT_EQ(&nmkDebugGeometry::get_from_manager(nullptr),
              &nmkDebugGeometry::get_from_manager(""));
}

TEST_F(nmkDebugGeometry_channel, keeps_what_several_threads_send) {
    channel.switch_on(1);
    const auto send = [this] {
        for (int each = 0; each < 500; ++each) {
            channel.append_cross_drawing({1.0, 2.0, 3.0}, 1.0, 0, 1, "x", 1);
        }
    };
    std::thread first(send);
    std::thread second(send);
    first.join();
    second.join();
    EXPECT_EQ(channel.size(), 1000);
}

TEST_F(nmkDebugGeometry_drawing, has_a_line_for_each_path_of_a_list) {
    nmkAbsPolyArcLineVecListIter paths;
    paths.insert_last(nmkDebugGeometryUtils::line_drawing({0.0, 0.0, 0.0}, {10.0, 0.0, 0.0}));
    paths.insert_last(nmkDebugGeometryUtils::line_drawing({10.0, 0.0, 0.0}, {10.0, 5.0, 0.0}));
    paths.next();  // the cursor does not matter
    channel.switch_on(1);
    channel.copy_iter(paths, "Before ordering", 1);
    EXPECT_EQ(svg(),
              "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"840.000\" height=\"440.000\" "
              "viewBox=\"0 0 840.000 440.000\">\n"
              "  <g fill=\"none\">\n"
              "    <title>Before ordering</title>\n"
              "    <polyline stroke=\"#1f77b4\" stroke-width=\"1\" "
              "points=\"20.000,420.000 820.000,420.000\"/>\n"
              "    <polyline stroke=\"#1f77b4\" stroke-width=\"1\" "
              "points=\"820.000,420.000 820.000,20.000\"/>\n"
              "  </g>\n"
              "</svg>\n");
}

TEST_F(nmkDebugGeometry_drawing, a_cross_is_two_bars_of_its_size) {
    channel.switch_on(1);
    channel.append_cross_drawing({5.0, 5.0, 0.0}, 2.0, 1, 3, "cross", 1);
    const std::string drawing = svg();
    EXPECT_NE(drawing.find("stroke=\"#d62728\" stroke-width=\"3\" "
                           "points=\"20.000,420.000 820.000,420.000\""),
              std::string::npos)
        << drawing;
    EXPECT_NE(drawing.find("points=\"420.000,820.000 420.000,20.000\""), std::string::npos);
}

TEST_F(nmkDebugGeometry_drawing, a_circle_is_as_wide_as_high_and_one_on_edge_is_flat) {
    channel.switch_on(1);
    channel.append_circle_drawing({1.0, 1.0, 0.0}, 3.0, upright, "round", 1);
    EXPECT_NE(svg().find("width=\"840.000\" height=\"840.000\""), std::string::npos);
    channel.clear();
    channel.append_circle_drawing({1.0, 1.0, 0.0}, 3.0, giUnitVec3(0.0, 1.0, 0.0), "edge", 1);
    EXPECT_NE(svg().find("width=\"840.000\" height=\"40.000\""), std::string::npos) << svg();
}

TEST_F(nmkDebugGeometry_drawing, groups_by_label_and_escapes_it) {
    channel.switch_on(1);
    for (const char* label : {"a<b>&\"c\"", "second", "a<b>&\"c\""}) {
        channel.append_cross_drawing({0.0, 0.0, 0.0}, 1.0, 0, 1, label, 1);
    }
    const std::string drawing = svg();
    EXPECT_EQ(count(drawing, "<g "), 2U);
    EXPECT_EQ(count(drawing, "<title>a&lt;b&gt;&amp;&quot;c&quot;</title>"), 1U);
}

TEST_F(nmkDebugGeometry_drawing, leaves_out_paths_that_are_unset_or_not_finite) {
    channel.switch_on(1);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    channel.append_cross_drawing({nan, 0.0, 0.0}, 1.0, 0, 1, "none", 1);
    channel.append_cross_drawing({HUGE_VAL, 0.0, 0.0}, 1.0, 0, 1, "none", 1);
    nmkAbsPolyArcLineVecListIter paths;
    paths.insert_last(nmkDebugGeometryUtils::line_drawing(giPoint3(), {1.0, 1.0, 1.0}));
    paths.insert_last({});
    channel.copy_iter(paths, nullptr, 1);
    EXPECT_EQ(count(svg(), "<polyline"), 0U);
}

TEST_F(nmkDebugGeometry_drawing, never_writes_nan_or_infinity) {
    channel.switch_on(1);
    nmkAbsPolyArcLineVecListIter paths;
    paths.insert_last(
        nmkDebugGeometryUtils::line_drawing({-1.7e308, 0.0, 0.0}, {1.7e308, 1.0, 0.0}));
    paths.insert_last(nmkDebugGeometryUtils::line_drawing({0.0, 0.0, 0.0}, {5e-324, 0.0, 0.0}));
    channel.copy_iter(paths, "huge", 1);
    EXPECT_EQ(svg().find("nan"), std::string::npos);
    EXPECT_EQ(svg().find("inf"), std::string::npos);
}

TEST_F(nmkDebugGeometry_drawing, is_written_whole_or_not_at_all) {
    const std::filesystem::path directory = std::filesystem::temp_directory_path() /
                                            ("nmkDebugGeometry_test_" + std::to_string(getpid()));
    std::filesystem::create_directory(directory);
    channel.switch_on(1);
    channel.append_cross_drawing({0.0, 0.0, 0.0}, 1.0, 0, 1, "cross", 1);
    const std::filesystem::path path = directory / "drawing.svg";
    EXPECT_TRUE(channel.write_svg(path.string()));
    std::ostringstream written;
    written << std::ifstream(path).rdbuf();
    EXPECT_EQ(written.str(), svg());
    EXPECT_FALSE(channel.write_svg((directory / "no such directory" / "drawing.svg").string()));
    std::filesystem::remove(path);
    EXPECT_TRUE(std::filesystem::is_empty(directory));
    std::filesystem::remove_all(directory);
}

TEST_F(nmkDebugGeometry_drawing, draws_a_circle_about_an_axis_of_no_direction_in_the_plan) {
    channel.switch_on(1);
    const giUnitVec3 no_direction(giUnit::already, 0.0, 0.0, 0.0);
    channel.append_circle_drawing({0.0, 0.0, 0.0}, 2.0, no_direction, "circle", 1);
    EXPECT_NE(svg().find("width=\"840.000\" height=\"840.000\""), std::string::npos) << svg();
}

TEST_F(nmkDebugGeometry_drawing, shows_a_circle_about_a_slanted_axis_as_an_ellipse) {
    channel.switch_on(1);
    channel.append_circle_drawing({0.0, 0.0, 0.0}, 1.0, giUnitVec3(0.6, 0.0, 0.8), "circle", 1);
    EXPECT_NE(svg().find("width=\"680.000\" height=\"840.000\""), std::string::npos) << svg();
}

TEST_F(nmkDebugGeometry_drawing, takes_colours_modulo_the_palette_and_weights_from_1_up) {
    channel.switch_on(1);
    channel.append_cross_drawing({0.0, 0.0, 0.0}, 1.0, -1, 0, "cross", 1);
    channel.append_cross_drawing({0.0, 0.0, 0.0}, 1.0, 8, -3, "cross", 1);
    EXPECT_EQ(count(svg(), "stroke=\"#7f7f7f\" stroke-width=\"1\""), 2U) << svg();
    EXPECT_EQ(count(svg(), "stroke=\"#1f77b4\" stroke-width=\"1\""), 2U) << svg();
}

TEST_F(nmkDebugGeometry_drawing, replaces_control_characters_of_a_label_by_spaces) {
    channel.switch_on(1);
    channel.append_cross_drawing({0.0, 0.0, 0.0}, 1.0, 0, 1, "a\x01\nb", 1);
    EXPECT_EQ(count(svg(), "<title>a  b</title>"), 1U);
}

TEST_F(nmkDebugGeometry_drawing, leaves_a_directory_of_its_name_alone) {
    const std::filesystem::path directory = std::filesystem::temp_directory_path() /
                                            ("nmkDebugGeometry_taken_" + std::to_string(getpid()));
    std::filesystem::create_directories(directory / "drawing.svg");
    EXPECT_FALSE(channel.write_svg((directory / "drawing.svg").string()));
    EXPECT_TRUE(std::filesystem::is_directory(directory / "drawing.svg"));
    EXPECT_FALSE(std::filesystem::exists(directory / "drawing.svg.part"));
    std::filesystem::remove_all(directory);
}

TEST_F(nmkDebugGeometry_channel, drops_a_list_of_paths_while_it_is_off) {
    nmkAbsPolyArcLineVecListIter paths;
    paths.insert_last(nmkDebugGeometryUtils::line_drawing({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}));
    channel.copy_iter(paths, "line", 1);
    EXPECT_EQ(channel.size(), 0);
    channel.switch_on(-2);  // as good as off
    EXPECT_EQ(channel.on(1), 0);
    EXPECT_NE(paths.next(), nullptr);
    EXPECT_EQ(paths.next(), nullptr);
    paths.reset();
    EXPECT_NE(paths.next(), nullptr);
}

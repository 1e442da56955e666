// model_view: pictures and pages that `nmk model view` writes.

#include "commands/model/model_view.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "app/browser/browser.h"
#include "app/commands/model/model_fixtures.h"
#include "app/draw/drawn_elements.h"
#include "app/text/plain_syntax.h"
#include "commands/model/mesh_raster.h"
#include "commands/model/model_command.h"
#include "commands/model/reduced_mesh.h"
#include "commands/model/shaded_view.h"

namespace nmk_model {
namespace {

using model_samples::binary_stl;
using nmk_shell::expect_refused;
using nmk_shell::Printed;
using nmk_shell::text_of;

class Silent : public nmkProgressBreak {};

const std::string housing = NMK_SOURCE_DIR "/samples/housing.stl";

Colour pixel(const nmk_draw::PixelImage& image, int x, int y) {
    const std::size_t at = 3 * static_cast<std::size_t>(y * image.width + x);
    return {image.rgb[at], image.rgb[at + 1], image.rgb[at + 2]};
}

/// More blue than red, as outsides are.
bool is_outside(const Colour& colour) { return colour[2] > colour[0] + 10; }
bool is_inside(const Colour& colour) { return colour[0] > colour[2] + 30 && colour[1] > 80; }
bool is_white(const Colour& colour) { return colour == Colour{255, 255, 255}; }

std::size_t count_of(const nmk_draw::PixelImage& image, const Colour& colour) {
    std::size_t count = 0;
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) count += pixel(image, x, y) == colour ? 1 : 0;
    }
    return count;
}

ShadedView view_of(const Facets& facets, ViewSide side, ImageSize largest = {200, 200}) {
    Silent silent;
    const WeldedMesh mesh = mesh_of(facets);
    auto view = shaded_view(mesh, drawn_edges(mesh), side, largest, silent);
    EXPECT_TRUE(view.has_value());
    return *view;
}

TEST(mesh_raster, keeps_the_nearer_of_two_triangles_whatever_their_order) {
    const SamplePoint far[] = {{0, 0, 1}, {40, 0, 1}, {0, 40, 1}};
    const SamplePoint near[] = {{0, 0, 2}, {40, 0, 2}, {0, 40, 2}};
    const Colour red = {200, 0, 0};
    const Colour blue = {0, 0, 200};
    for (const bool is_far_first : {true, false}) {
        MeshRaster raster(20, 20);
        if (is_far_first) raster.draw_triangle(far[0], far[1], far[2], red);
        raster.draw_triangle(near[0], near[1], near[2], blue);
        if (!is_far_first) raster.draw_triangle(far[0], far[1], far[2], red);
        EXPECT_EQ(pixel(raster.image(), 3, 3), blue);
        EXPECT_TRUE(is_white(pixel(raster.image(), 19, 19)));
    }
}

TEST(mesh_raster, divides_triangles_that_cut_each_other_where_they_do) {
    MeshRaster raster(20, 20);
    const Colour red = {200, 0, 0};
    const Colour blue = {0, 0, 200};
    raster.draw_triangle({0, 0, 0}, {80, 0, 80}, {0, 80, 0}, red);
    raster.draw_triangle({0, 0, 20}, {80, 0, 20}, {0, 80, 20}, blue);
    EXPECT_EQ(pixel(raster.image(), 5, 5), blue);
    EXPECT_EQ(pixel(raster.image(), 14, 5), red);
}

// The plane through corners that are nearly on one line has little of its slope left.
TEST(mesh_raster, draws_a_sliver_no_nearer_than_its_nearest_corner) {
    MeshRaster raster(20, 20);
    const Colour red = {200, 0, 0};
    const Colour blue = {0, 0, 200};
    EXPECT_GT(raster.draw_triangle({2.25, 1.25, 0}, {16.75, 11.75, 0},
                                   {2.3406250000000002, 1.315625, 1}, red),
              0);
    raster.draw_triangle({0, 0, 2}, {80, 0, 2}, {0, 80, 2}, blue);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 20; ++x) EXPECT_EQ(pixel(raster.image(), x, y), blue) << x << ' ' << y;
    }
}

TEST(mesh_raster, draws_neighbours_without_gap_and_without_overlap) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> place(-5.0, 45.0);
    for (int round = 0; round < 200; ++round) {
        const SamplePoint a{place(random), place(random), 0};
        const SamplePoint b{place(random), place(random), 0};
        const SamplePoint c{place(random), place(random), 0};
        const SamplePoint middle{(a.x + b.x + c.x) / 3, (a.y + b.y + c.y) / 3, 0};
        MeshRaster whole(20, 20);
        MeshRaster parts(20, 20);
        const std::int64_t covered = whole.draw_triangle(a, b, c, {1, 2, 3});
        const std::int64_t sum = parts.draw_triangle(a, b, middle, {1, 2, 3}) +
                                 parts.draw_triangle(b, c, middle, {1, 2, 3}) +
                                 parts.draw_triangle(c, a, middle, {1, 2, 3});
        EXPECT_EQ(sum, covered) << round;
        EXPECT_EQ(parts.image().rgb, whole.image().rgb) << round;
    }
}

TEST(mesh_raster, draws_the_hidden_part_of_a_line_with_a_pen_for_that) {
    MeshRaster raster(20, 20);
    raster.draw_triangle({0, 0, 5}, {20, 0, 5}, {0, 80, 5}, {9, 9, 9});
    const MeshRaster::Pen front{{200, 0, 0}, 2, 0.0, false};
    const MeshRaster::Pen behind{{0, 200, 0}, 2, 0.0, true};
    const std::int64_t seen = raster.draw_line({0, 9, 1}, {40, 9, 1}, front);
    const std::int64_t hidden = raster.draw_line({0, 9, 1}, {40, 9, 1}, behind);
    EXPECT_GT(seen, 30);
    EXPECT_GT(hidden, 30);
    EXPECT_EQ(pixel(raster.image(), 2, 4)[1], 200);
    EXPECT_EQ(pixel(raster.image(), 15, 4)[0], 200);
}

TEST(mesh_raster, clips_what_lies_outside) {
    MeshRaster raster(10, 10);
    EXPECT_GT(raster.draw_triangle({-1e12, -1e12, 0}, {1e12, -1e12, 0}, {0, 1e12, 0}, {1, 1, 1}),
              0);
    EXPECT_EQ(raster.draw_triangle({-50, 0, 0}, {-20, 0, 0}, {-20, 15, 0}, {1, 1, 1}), 0);
    raster.draw_line({-1e12, 3, 9}, {1e12, 3, 9}, {{5, 5, 5}, 3, 0.0, false});
    EXPECT_EQ(raster.image().rgb.size(), 300U);
}

TEST(shaded_view, of_a_cube_fills_its_square_and_shows_no_inside) {
    const ShadedView view = view_of(cube({0, 0, 0}, 10), ViewSide::front);
    EXPECT_TRUE(is_outside(pixel(view.image, 60, 100)));
    EXPECT_FALSE(view.shows_inside);
    EXPECT_FALSE(view.has_hidden_free);
    EXPECT_EQ(count_of(view.image, free_edge_colour), 0U);
    EXPECT_DOUBLE_EQ(view.pixels_a_mm, 18.4);
    EXPECT_EQ(view.image.width, 200);
}

TEST(shaded_view, shows_the_inside_through_an_opening_with_a_red_rim) {
    const ShadedView view = view_of(open_box(10), ViewSide::iso);
    EXPECT_TRUE(view.shows_inside);
    EXPECT_GT(count_of(view.image, free_edge_colour), 300U);
    bool has_inside = false;
    for (int y = 0; y < view.image.height; ++y) {
        has_inside = has_inside || is_inside(pixel(view.image, view.image.width / 2, y));
    }
    EXPECT_TRUE(has_inside);
}

TEST(shaded_view, lights_the_inside_that_it_shows) {
    const ShadedView view = view_of(open_box(10), ViewSide::top);
    const Colour floor = pixel(view.image, 60, 100);
    EXPECT_TRUE(is_inside(floor));
    EXPECT_GT(floor[0], inside_colour[0] * 9 / 10);
}

// Rounding may let some samples of a back through at the rim of a closed model.
TEST(shaded_view, of_a_few_samples_of_a_back_shows_no_inside) {
    const auto with_back = [](double size) {
        const Facets back = {{50, 50, 101, 50, 50 + size, 101, 50 + size, 50, 101}};
        return view_of(joined(cube({0, 0, 0}, 100), back), ViewSide::top);
    };
    EXPECT_FALSE(with_back(1.0).shows_inside);
    EXPECT_TRUE(with_back(10.0).shows_inside);
}

TEST(drawn_edges, of_more_than_two_triangles_are_neither_free_nor_sharp) {
    const WeldedMesh mesh = mesh_of(joined(cube({0, 0, 0}, 1), cube({1, 1, 0}, 1)));
    const DrawnEdges edges = drawn_edges(mesh);
    EXPECT_TRUE(edges.free.empty());
    EXPECT_EQ(edges.sharp.size(), 22U);
}

TEST(shaded_view, draws_free_edges_behind_the_model_as_hidden) {
    // The opening is on top, which is behind as seen from below.
    const ShadedView view =
        view_of(joined(open_box(10), {{2, 2, 10, 8, 2, 10, 5, 8, 10}}), ViewSide::bottom);
    EXPECT_FALSE(view.shows_inside);
    EXPECT_TRUE(view.has_hidden_free);
    EXPECT_GT(count_of(view.image, hidden_edge_colour), 20U);
}

struct SideCase {
    const char* name;
    ViewSide side;
    int width, height;  // of a model of 10 x 20 x 40 in the view
};

std::ostream& operator<<(std::ostream& out, const SideCase& one) { return out << one.name; }

class shaded_view_from : public testing::TestWithParam<SideCase> {};

TEST_P(shaded_view_from, the_side_has_the_extents_of_the_model) {
    const Facets plate = {{0, 0, 0, 10, 20, 40, 10, 0, 0}, {0, 0, 0, 10, 20, 0, 0, 20, 40}};
    const ShadedView view = view_of(plate, GetParam().side, {416, 416});
    EXPECT_NEAR((view.image.width - 16) / view.pixels_a_mm, GetParam().width, 0.11);
    EXPECT_NEAR((view.image.height - 16) / view.pixels_a_mm, GetParam().height, 0.11);
}

INSTANTIATE_TEST_SUITE_P(sides, shaded_view_from,
                         testing::Values(SideCase{"front", ViewSide::front, 10, 40},
                                         SideCase{"back", ViewSide::back, 10, 40},
                                         SideCase{"left", ViewSide::left, 20, 40},
                                         SideCase{"right", ViewSide::right, 20, 40},
                                         SideCase{"top", ViewSide::top, 10, 20},
                                         SideCase{"bottom", ViewSide::bottom, 10, 20}),
                         testing::PrintToStringParamName());

TEST(view_axes, are_right_handed_unit_vectors) {
    for (const auto& side : view_sides()) {
        const ViewAxes axes = view_axes(side.value);
        const giVector3 cross = axes.right.cross(axes.up);
        EXPECT_NEAR(cross.dot(axes.towards), 1.0, 1e-15) << side.name;
        EXPECT_NEAR(axes.up.dot(axes.up), 1.0, 1e-15) << side.name;
    }
}

TEST(shaded_view, of_a_flat_model_on_its_edge_is_a_thin_image) {
    const ShadedView view = view_of(model_samples::grid(3), ViewSide::front);
    EXPECT_EQ(view.image.width, 200);
    EXPECT_EQ(view.image.height, 48);
    const ShadedView point = view_of({{1, 1, 1, 1, 1, 1, 1, 1, 1}}, ViewSide::top);
    EXPECT_EQ(point.image.width, 48);
    EXPECT_EQ(point.pixels_a_mm, 1.0);
}

TEST(reduced_mesh, keeps_a_small_mesh_as_it_is) {
    const WeldedMesh mesh = mesh_of(cube({0, 0, 0}, 1));
    Stopper silent(1'000'000);
    EXPECT_EQ(reduced_mesh(mesh, 12, silent)->triangles, mesh.triangles);
}

TEST(reduced_mesh, keeps_the_shape_of_a_large_mesh_within_the_limit) {
    const WeldedMesh mesh = mesh_of(model_samples::grid(100));
    Stopper silent(1'000'000);
    const WeldedMesh reduced = *reduced_mesh(mesh, 3000, silent);
    EXPECT_LE(reduced.triangles.size(), 3000U);
    EXPECT_GE(reduced.triangles.size(), 2000U);
    double area = 0.0;
    for (std::size_t i = 0; i < reduced.triangles.size(); ++i) area += reduced.normal(i).z / 2;
    EXPECT_NEAR(area, 10000.0, 600.0);
}

class model_view : public testing::Test {
  protected:
    std::string file(const std::string& name) const { return folder.path() + "/" + name; }

    ScratchDirectory folder;
};

TEST_F(model_view, writes_a_well_formed_picture_with_image_scale_and_legend) {
    const Printed printed = run_words({"view", housing, "--svg", file("a.svg")});
    ASSERT_EQ(printed.code, 0) << printed.err;
    EXPECT_NE(printed.out.find("2276 triangles"), std::string::npos);
    const std::string svg = text_of(file("a.svg"));
    EXPECT_TRUE(plain_syntax::Xml::is_well_formed(svg));
    EXPECT_NE(svg.find("href=\"data:image/png;base64,"), std::string::npos);
    for (const std::string words : {">outside<", ">inside<", ">free edge<", ">sharp edge<", " mm<",
                                    ">housing.stl<", "not closed: 22 free edges", "view iso"}) {
        EXPECT_NE(svg.find(words), std::string::npos) << words;
    }
    EXPECT_LT(svg.size(), 400'000U);
}

TEST_F(model_view, writes_the_same_bytes_every_time) {
    run_words({"view", housing, "--svg", file("a.svg"), "--html", file("a.html"), "--quiet"});
    run_words({"view", housing, "--svg", file("b.svg"), "--html", file("b.html"), "--quiet"});
    EXPECT_EQ(text_of(file("a.svg")), text_of(file("b.svg")));
    EXPECT_EQ(text_of(file("a.html")), text_of(file("b.html")));
}

TEST_F(model_view, of_a_large_model_has_a_bounded_size) {
    const std::string input = folder.file("a.stl", binary_stl(model_samples::grid(280)));
    const Printed printed =
        run_words({"view", input, "--svg", file("a.svg"), "--html", file("a.html")});
    ASSERT_EQ(printed.code, 0) << printed.err;
    EXPECT_LT(text_of(file("a.svg")).size(), 1'000'000U);
    EXPECT_LT(text_of(file("a.html")).size(), 5'000'000U);
    EXPECT_NE(text_of(file("a.html")).find("a coarser model"), std::string::npos);
}

TEST_F(model_view, of_a_model_without_triangles_ends_with_1_and_writes_nothing) {
    const Printed printed =
        run_words({"view", folder.file("a.stl", binary_stl({})), "--svg", file("a.svg")});
    EXPECT_EQ(printed.code, 1);
    EXPECT_EQ(folder.file_count(), 1U);
}

TEST_F(model_view, leaves_no_file_whenever_it_is_stopped) {
    ModelOptions options;
    options.action = Action::view;
    options.files = {folder.file("a.stl", binary_stl(model_samples::grid(60)))};
    options.svg_file = file("a.svg");
    std::set<int> codes;
    for (int call = 6; call < 40 && !codes.contains(0); ++call) {
        Stopper stopper(call);
        std::ostringstream out;
        std::ostringstream err;
        codes.insert(run_model(options, out, err, stopper));
        EXPECT_EQ(folder.file_count(), codes.contains(0) ? 2U : 1U);
    }
    EXPECT_EQ(codes, (std::set<int>{0, 1}));
}

TEST_F(model_view, leaves_no_file_when_its_drawing_is_stopped) {
    ModelOptions options;
    options.action = Action::view;
    options.files = {folder.file("a.stl", binary_stl(model_samples::grid(280)))};
    options.svg_file = file("a.svg");
    Stopper stopper(1, "Drawing");
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(run_model(options, out, err, stopper), 1);
    EXPECT_EQ(err.str(), "nmk model: stopped; nothing was written\n");
    EXPECT_EQ(folder.file_count(), 1U);
}

TEST_F(model_view, leaves_no_page_whenever_its_making_is_stopped) {
    ModelOptions options;
    options.action = Action::view;
    options.files = {folder.file("a.stl", binary_stl(model_samples::grid(280)))};
    options.html_file = file("a.html");
    std::size_t stops = 0;
    for (int call = 1; stops == 0 || folder.file_count() == 1; ++call) {
        Stopper stopper(call, "Reducing");
        std::ostringstream out;
        std::ostringstream err;
        const int code = run_model(options, out, err, stopper);
        EXPECT_EQ(folder.file_count(), code == 0 ? 2U : 1U);
        if (code == 0) break;
        EXPECT_EQ(err.str(), "nmk model: stopped; nothing was written\n");
        ++stops;
    }
    EXPECT_GE(stops, 5U) << "trials of a grid";
}

class model_view_options : public testing::TestWithParam<WrongWords> {};

TEST_P(model_view_options, that_are_wrong_are_refused) {
    expect_refused(run_words(GetParam().words), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    words, model_view_options,
    testing::Values(
        WrongWords{"no_output", {"view", "a.stl"}, "expected --svg OUT or --html OUT"},
        WrongWords{"two_files", {"view", "a.stl", "b.stl", "--svg", "c.svg"}, "expected one file"},
        WrongWords{
            "one_name_for_both", {"view", "a.stl", "--svg", "c", "--html", "./c"}, "two outputs"},
        WrongWords{"the_input", {"view", "a.stl", "--svg", "./a.stl"}, "is the input file"},
        WrongWords{"unknown_side", {"view", "a.stl", "--svg", "c", "--from", "behind"}, "iso"},
        WrongWords{"json", {"view", "a.stl", "--svg", "c", "--json"}, "--json does not apply"},
        WrongWords{"svg_of_info", {"info", "a.stl", "--svg", "c"}, "apply to view only"},
        WrongWords{
            "html_of_convert", {"convert", "a.stl", "b.nmt", "--html", "c"}, "apply to view only"},
        WrongWords{"side_of_info", {"info", "a.stl", "--from", "top"}, "apply to view only"}),
    testing::PrintToStringParamName());

TEST_F(model_view, page_loads_nothing_and_keeps_hostile_names_as_text) {
    const std::string name = "<img src=x onerror='window.broken=1'>&.stl";
    const std::string input = folder.file(name, binary_stl(cube({0, 0, 0}, 1)));
    run_words({"view", input, "--html", file("a.html"), "--quiet"});
    const std::string page = text_of(file("a.html"));
    EXPECT_TRUE(plain_syntax::Xml::is_well_formed(page));
    EXPECT_NE(page.find("default-src 'none'"), std::string::npos);
    EXPECT_EQ(page.find("<img"), std::string::npos);
    for (const std::string words : {" src=\"", " href=", "url(", "@import", "fetch("}) {
        EXPECT_EQ(page.find(words), std::string::npos) << words;
    }
}

class model_page_in_browser : public model_view {
  protected:
    void SetUp() override {
        if (const auto missing = browser::missing()) GTEST_SKIP() << *missing;
    }

    std::string page_of(const std::string& input) {
        EXPECT_EQ(run_words({"view", input, "--html", file("page.html"), "--quiet"}).code, 0);
        return text_of(file("page.html"));
    }
};

/// What the canvas has: the number of its colours and the part of its pixels that are drawn.
const std::string drawn =
    "(() => { const c = document.querySelector('canvas.model'); "
    "const d = c.getContext('2d').getImageData(0, 0, c.width, c.height).data; "
    "const colours = new Set(); let n = 0; for (let i = 0; i < d.length; i += 4) "
    "{ if (d[i + 3]) { ++n; colours.add((d[i] << 16) | (d[i + 1] << 8) | d[i + 2]); } } "
    "return [colours.size, n / (d.length / 4)]; })()";
const std::string settled = "new Promise((done) => setTimeout(done, 400))";
const std::string pixels_now =
    "document.querySelector('canvas.model').toDataURL().length + ' ' + "
    "document.querySelector('canvas.model').toDataURL().slice(2000, 2400)";

TEST_F(model_page_in_browser, shows_a_shaded_model_and_loads_nothing) {
    const auto lines = browser::drive(page_of(housing), {1000, 900, ""},
                                      {settled, drawn, "!screenshot canvas.model", "!requests",
                                       "!errors", "document.documentElement.scrollWidth"});
    const auto canvas = nlohmann::json::parse(lines[1]);
    EXPECT_GT(canvas[0].get<int>(), 40);
    EXPECT_GT(canvas[1].get<double>(), 0.15);
    const auto screen = nlohmann::json::parse(lines[2]);
    EXPECT_GT(screen["colours"].get<int>(), 200);
    EXPECT_GT(screen["drawn"].get<double>(), 0.15);
    EXPECT_LT(screen["drawn"].get<double>(), 0.9);
    EXPECT_GT(screen["spread"].get<double>(), 20.0);
    EXPECT_EQ(lines[3], "[]");
    EXPECT_EQ(lines[4], "[]");
    EXPECT_EQ(lines[5], "1000");
}

TEST_F(model_page_in_browser, turns_with_mouse_and_keys_and_returns_to_its_start) {
    const auto lines =
        browser::drive(page_of(housing), {1000, 900, ""},
                       {settled, pixels_now, "!drag canvas.model 120 40", settled, pixels_now,
                        "document.querySelector('canvas.model').focus()", "!key ArrowLeft", settled,
                        pixels_now, "!key 0", settled, pixels_now, "!errors"});
    EXPECT_NE(lines[1], lines[4]);
    EXPECT_NE(lines[4], lines[8]);
    EXPECT_EQ(lines[1], lines[11]);
    EXPECT_EQ(lines[12], "[]");
}

TEST_F(model_page_in_browser, zooms_and_shows_named_sides) {
    const auto lines =
        browser::drive(page_of(housing), {1000, 900, ""},
                       {settled, drawn, "!click button[data-model-zoom]", settled, drawn,
                        "!click button[data-axes]:nth-child(6)", settled, drawn,
                        "!wheel canvas.model -200 ctrl", settled, drawn, "!errors"});
    const auto part = [&](std::size_t line) {
        return nlohmann::json::parse(lines[line])[1].get<double>();
    };
    EXPECT_GT(part(4), 1.3 * part(1));
    EXPECT_NE(part(7), part(1));
    EXPECT_GT(part(10), 1.3 * part(7));
    EXPECT_EQ(lines[11], "[]");
}

TEST_F(model_page_in_browser, fits_into_400_pixels) {
    const auto lines = browser::drive(page_of(housing), {400, 800, "dark"},
                                      {"document.documentElement.scrollWidth", "!errors"});
    EXPECT_EQ(lines[0], "400");
    EXPECT_EQ(lines[1], "[]");
}

}  // namespace
}  // namespace nmk_model

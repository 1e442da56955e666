// model_figures: figures of models whose figures are known, and compared with the plain way.

#include "commands/model/model_figures.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "app/commands/model/model_fixtures.h"
#include "app/commands/model/plain_edges.h"
#include "commands/model/mesh_edges.h"

namespace nmk_model {
namespace {

TEST(model_figures, of_a_closed_cube) {
    const ModelFigures figures = figures_of(cube({1, 2, 3}, 10));
    EXPECT_EQ(figures.triangles, 12);
    EXPECT_EQ(figures.stored_nodes, 36);
    EXPECT_EQ(figures.welded_nodes, 8);
    EXPECT_EQ(figures.box.min(), giPoint3(1, 2, 3));
    EXPECT_EQ(figures.box.max(), giPoint3(11, 12, 13));
    EXPECT_EQ(figures.area, 600.0);
    EXPECT_EQ(figures.volume, 1000.0);
    EXPECT_EQ(figures.free_edges, 0);
    EXPECT_EQ(figures.crowded_edges, 0);
    EXPECT_EQ(figures.opposed_edges, 0);
    EXPECT_EQ(figures.degenerate_triangles, 0);
    EXPECT_EQ(figures.shells, 1);
}

TEST(model_figures, of_an_open_box_have_four_free_edges_and_no_volume) {
    const ModelFigures figures = figures_of(open_box(10));
    EXPECT_EQ(figures.area, 500.0);
    EXPECT_EQ(figures.volume, std::nullopt);
    EXPECT_EQ(figures.free_edges, 4);
    EXPECT_EQ(figures.shells, 1);
}

TEST(model_figures, count_two_cubes_that_do_not_touch_as_two_shells) {
    const ModelFigures figures = figures_of(joined(cube({0, 0, 0}, 1), cube({5, 0, 0}, 2)));
    EXPECT_EQ(figures.shells, 2);
    EXPECT_EQ(figures.volume, 9.0);
}

TEST(model_figures, count_cubes_that_touch_in_a_corner_as_two_shells) {
    const ModelFigures figures = figures_of(joined(cube({0, 0, 0}, 1), cube({1, 1, 1}, 1)));
    EXPECT_EQ(figures.welded_nodes, 15);
    EXPECT_EQ(figures.shells, 2);
    EXPECT_EQ(figures.crowded_edges, 0);
}

TEST(model_figures, of_cubes_that_share_an_edge_have_one_crowded_edge_and_the_volume_of_both) {
    const ModelFigures figures = figures_of(joined(cube({0, 0, 0}, 1), cube({1, 1, 0}, 1)));
    EXPECT_EQ(figures.crowded_edges, 1);
    EXPECT_EQ(figures.free_edges, 0);
    EXPECT_EQ(figures.shells, 1);
    EXPECT_EQ(figures.volume, 2.0);
}

TEST(model_figures, of_a_cube_inside_out_have_a_volume_below_zero) {
    Facets facets = cube({0, 0, 0}, 2);
    for (model_samples::Corners& corners : facets) {
        std::swap_ranges(corners.begin(), corners.begin() + 3, corners.begin() + 3);
    }
    EXPECT_EQ(figures_of(facets).volume, -8.0);
}

TEST(model_figures, of_a_cube_with_one_triangle_turned_have_no_volume) {
    Facets facets = cube({0, 0, 0}, 2);
    std::swap_ranges(facets[4].begin(), facets[4].begin() + 3, facets[4].begin() + 3);
    const ModelFigures figures = figures_of(facets);
    EXPECT_EQ(figures.opposed_edges, 3);
    EXPECT_EQ(figures.free_edges, 0);
    EXPECT_EQ(figures.volume, std::nullopt);
}

TEST(model_figures, count_triangles_without_area_and_keep_the_cube_closed) {
    Facets facets = cube({0, 0, 0}, 1);
    facets.push_back({0, 0, 0, 1, 0, 0, 1, 0, 0});
    facets.push_back({7, 7, 7, 7, 7, 7, 7, 7, 7});
    const ModelFigures figures = figures_of(facets);
    EXPECT_EQ(figures.degenerate_triangles, 2);
    EXPECT_EQ(figures.free_edges, 0);
    EXPECT_EQ(figures.shells, 1);
    EXPECT_EQ(figures.volume, 1.0);
}

TEST(model_figures, count_a_triangle_on_one_line_as_degenerate_with_its_edges) {
    const ModelFigures figures = figures_of({{0, 0, 0, 1, 0, 0, 2, 0, 0}});
    EXPECT_EQ(figures.degenerate_triangles, 1);
    EXPECT_EQ(figures.free_edges, 3);
    EXPECT_EQ(figures.area, 0.0);
}

TEST(model_figures, of_no_triangles_are_zero) {
    const ModelFigures figures = figures_of({});
    EXPECT_TRUE(figures.box.is_empty());
    EXPECT_EQ(figures.shells, 0);
    EXPECT_FALSE(figures.is_closed());
}

TEST(model_figures, weld_zero_and_negative_zero_and_nothing_else) {
    const Facets facets = {{0.0, 0, 0, 1, 0, 0, 0, 1, 0}, {-0.0, 0, 0, 0, 1, 0, -1e-300, 0, 0}};
    EXPECT_EQ(figures_of(facets).welded_nodes, 4);
}

TEST(model_figures, of_a_cube_far_away_keep_the_digits_of_its_volume) {
    const ModelFigures figures = figures_of(cube({1e7, -1e7, 1e7}, 1));
    EXPECT_EQ(figures.volume, 1.0);
    // Exact in a double, while the product of a place and an area is not.
    const double size = 1.0 + 0x1p-20;
    const auto volume = figures_of(cube({0x1p23, -0x1p23, 0x1p23}, size)).volume;
    EXPECT_NEAR(volume.value_or(0.0), size * size * size, 1e-14);
}

TEST(model_figures, join_blocks_at_the_places_that_they_share) {
    Model model;
    model.format = ModelFormat::nmt;
    const Facets facets = cube({0, 0, 0}, 1);
    const auto half = facets.begin() + 6;
    for (const Facets& part : {Facets(facets.begin(), half), Facets(half, facets.end())}) {
        model.blocks.push_back(std::make_unique<giTriBlock>());
        model_samples::fill_unshared(*model.blocks.back(), part);
    }
    const ModelFigures figures = model_figures(model, welded_mesh(model));
    EXPECT_EQ(figures.blocks, 2);
    EXPECT_EQ(figures.welded_nodes, 8);
    EXPECT_EQ(figures.volume, 1.0);
}

TEST(mesh_edges, are_those_of_the_plain_way_for_random_triangles) {
    std::mt19937 random(20261122);
    for (int round = 0; round < 300; ++round) {
        const Facets facets = random_facets(1 + round % 40, 2 + round % 3, random);
        const PlainEdges plain(facets);
        const ModelFigures figures = figures_of(facets);
        EXPECT_EQ(figures.welded_nodes, static_cast<std::int64_t>(plain.places.size())) << round;
        EXPECT_EQ(figures.free_edges, plain.free_edges) << round;
        EXPECT_EQ(figures.crowded_edges, plain.crowded) << round;
        EXPECT_EQ(figures.opposed_edges, plain.opposed) << round;
        EXPECT_EQ(figures.shells, plain.shells) << round;
        EXPECT_EQ(figures.is_closed(), plain.is_closed) << round;
    }
}

TEST(mesh_edges, are_walked_once_each_in_the_order_of_their_nodes) {
    std::mt19937 random(7);
    const WeldedMesh mesh = mesh_of(random_facets(200, 4, random));
    std::pair<std::uint32_t, std::uint32_t> last{0, 0};
    std::size_t uses = 0;
    MeshEdges(mesh).for_each([&](const MeshEdge& edge) {
        EXPECT_LT(last, std::pair(edge.low, edge.high));
        EXPECT_LT(edge.low, edge.high);
        last = {edge.low, edge.high};
        uses += edge.uses.size();
    });
    std::size_t sides = 0;
    for (const MeshTriangle& triangle : mesh.triangles)
        sides += has_repeated_node(triangle) ? 0 : 3;
    EXPECT_EQ(uses, sides);
    EXPECT_GT(uses, 0U);
}

TEST(samples, of_the_housing_are_the_output_of_their_script) {
    if (std::system("python3 -c pass > /dev/null 2>&1") != 0) {
        GTEST_SKIP() << "python3 is not installed";
    }
    const ScratchDirectory folder;
    const std::string script = folder.path() + "/make_housing.py";
    std::filesystem::copy_file(NMK_SOURCE_DIR "/samples/make_housing.py", script);
    ASSERT_EQ(std::system(("python3 '" + script + "'").c_str()), 0);
    EXPECT_EQ(nmk_shell::text_of(folder.path() + "/housing.stl"),
              nmk_shell::text_of(NMK_SOURCE_DIR "/samples/housing.stl"));
}

}  // namespace
}  // namespace nmk_model

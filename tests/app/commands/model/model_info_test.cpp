// model_info: what `nmk model info` prints.

#include "commands/model/model_info.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "app/commands/model/model_fixtures.h"
#include "app/shell/standard_input.h"
#include "commands/model/model_command.h"
#include "real_inputs.h"

namespace nmk_model {
namespace {

using Json = nlohmann::json;
using model_samples::binary_stl;
using nmk_shell::expect_refused;
using nmk_shell::Printed;

class model_info : public testing::Test {
  protected:
    std::string cube_file(const std::string& name = "cube.stl") {
        return folder.file(name, binary_stl(cube({0, 0, 0}, 25.4)));
    }

    ScratchDirectory folder;
};

TEST_F(model_info, prints_a_line_for_each_figure) {
    const std::string file = folder.file("cube.stl", binary_stl(cube({0, 0, 0}, 1.0)));
    const Printed printed = run_words({"info", file, "--units", "inch"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(printed.out, file +
                               ": binary STL, units inch\n\n"
                               "Blocks                            1\n"
                               "Triangles                         12\n"
                               "Nodes                             36, welded 8\n"
                               "Size, mm                          25.4 x 25.4 x 25.4\n"
                               "Box, mm                           0 0 0 to 25.4 25.4 25.4\n"
                               "Size, inches                      1 x 1 x 1\n"
                               "Box, inches                       0 0 0 to 1 1 1\n"
                               "Area, mm2                         3870.96\n"
                               "Volume, mm3                       16387.064\n"
                               "Free edges                        0\n"
                               "Edges of more than two triangles  0\n"
                               "Edges wound against each other    0\n"
                               "Degenerate triangles              0\n"
                               "Shells                            1\n");
}

TEST_F(model_info, prints_a_row_for_each_of_several_files) {
    const std::string a = cube_file();
    const std::string b = folder.file("b.stl", binary_stl(open_box(1)));
    const Printed printed = run_words({"info", a, b});
    EXPECT_EQ(printed.code, 0);
    std::istringstream lines(printed.out);
    std::vector<std::string> words;
    std::string row;
    for (int i = 0; i < 4; ++i) std::getline(lines, row);
    std::istringstream last(row);
    for (std::string word; last >> word;) words.push_back(word);
    words.erase(words.begin());
    EXPECT_EQ(words, (std::vector<std::string>{"10", "8", "4", "0", "0", "1", "no"}));
}

TEST_F(model_info, continues_behind_a_file_that_cannot_be_read) {
    const Printed printed = run_words({"info", "/none.stl", cube_file(), folder.path()});
    EXPECT_EQ(printed.code, 2);
    EXPECT_NE(printed.out.find(" 12 "), std::string::npos) << printed.out;
    EXPECT_EQ(std::count(printed.err.begin(), printed.err.end(), '\n'), 2) << printed.err;
    EXPECT_NE(printed.err.find("/none.stl: cannot be opened"), std::string::npos);
    EXPECT_NE(printed.err.find("is a directory"), std::string::npos);
}

TEST_F(model_info, prints_json_of_all_files_that_can_be_read) {
    const Printed printed = run_words({"info", cube_file(), "/none.stl", "--json"});
    EXPECT_EQ(printed.code, 2);
    const Json json = Json::parse(printed.out);
    ASSERT_EQ(json["files"].size(), 1U);
    const Json& one = json["files"][0];
    EXPECT_EQ(one["format"], "stl-binary");
    EXPECT_EQ(one["closed"], true);
    EXPECT_EQ(one["shells"], 1);
    EXPECT_NEAR(one["volume"].get<double>(), 16387.064, 0.01);
    EXPECT_NEAR(one["box_in_inches"]["max"][2].get<double>(), 1.0, 1e-6);
}

TEST_F(model_info, reads_standard_input) {
    const StandardInput input(binary_stl(cube({0, 0, 0}, 1)));
    const Printed printed = run_words({"info", "-"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_TRUE(printed.out.starts_with("standard input: binary STL")) << printed.out;
}

TEST_F(model_info, reports_triangles_that_are_left_out) {
    Facets facets = cube({0, 0, 0}, 1);
    facets.push_back({0, 0, 1e300, 1, 0, 0, 0, 1, 0});
    const Printed printed = run_words({"info", folder.file("a.stl", binary_stl(facets))});
    EXPECT_EQ(printed.code, 0);
    EXPECT_NE(printed.out.find("Left out                          1 with"), std::string::npos);
}

TEST_F(model_info, of_an_empty_model_has_no_box) {
    const std::string file = folder.file("a.stl", binary_stl({}));
    EXPECT_NE(run_words({"info", file}).out.find("Box                               none\n"),
              std::string::npos);
    const Json json = Json::parse(run_words({"info", file, "--json"}).out);
    EXPECT_EQ(json["files"][0]["box"], nullptr);
    EXPECT_EQ(json["files"][0]["volume"], nullptr);
}

TEST_F(model_info, prints_nothing_when_it_is_quiet) {
    EXPECT_EQ(run_words({"info", cube_file(), "--quiet"}).out, "");
    EXPECT_NE(run_words({"info", cube_file(), "--quiet", "--json"}).out, "");
}

TEST_F(model_info, ends_with_1_and_prints_nothing_after_a_request_to_stop) {
    ModelOptions options;
    options.files = {cube_file(), folder.file("b.stl", binary_stl(model_samples::grid(50)))};
    Stopper stopper(3);
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(run_model(options, out, err, stopper), 1);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), "nmk model: stopped; nothing was printed\n");
}

class model_options : public testing::TestWithParam<WrongWords> {};

TEST_P(model_options, that_are_wrong_are_refused) {
    expect_refused(run_words(GetParam().words), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    words, model_options,
    testing::Values(WrongWords{"no_action", {}, "ACTION"},
                    WrongWords{"unknown_action", {"inof", "a.stl"}, "did you mean info?"},
                    WrongWords{"no_file", {"info"}, "FILE"},
                    WrongWords{"empty_name", {"info", ""}, "expected"},
                    WrongWords{
                        "unknown_units", {"info", "a.stl", "--units", "cm"}, "expected mm or inch"},
                    WrongWords{"unknown_format", {"info", "a.stl", "--format", "obj"}, "stl"}),
    testing::PrintToStringParamName());

struct RealModel {
    const char* name;
    const char* format;
    int triangles, nodes, degenerate, free_edges, crowded_edges;
    bool is_closed;
};

std::ostream& operator<<(std::ostream& out, const RealModel& model) { return out << model.name; }

class model_info_of_real_models : public testing::TestWithParam<RealModel> {};

TEST_P(model_info_of_real_models, are_those_that_are_known_of_them) {
    const RealModel& model = GetParam();
    const std::string name = std::string("stl/") + model.name + ".stl";
    if (const auto missing = real_inputs::missing(name)) GTEST_SKIP() << *missing;
    const Printed printed = run_words({"info", real_inputs::path(name), "--json"});
    ASSERT_EQ(printed.code, 0) << printed.err;
    const Json one = Json::parse(printed.out)["files"][0];
    EXPECT_EQ(one["format"], model.format);
    EXPECT_EQ(one["triangles"], model.triangles);
    EXPECT_EQ(one["welded_nodes"], model.nodes);
    EXPECT_EQ(one["degenerate_triangles"], model.degenerate);
    EXPECT_EQ(one["free_edges"], model.free_edges);
    EXPECT_EQ(one["edges_of_more_than_two"], model.crowded_edges);
    EXPECT_EQ(one["closed"], model.is_closed);
}

INSTANTIATE_TEST_SUITE_P(
    files, model_info_of_real_models,
    testing::Values(
        RealModel{"microstl_crazy_whitespace_ascii", "stl-text", 1, 3, 0, 3, 0, false},
        RealModel{"numpystl_rear_case_solid", "stl-binary", 18808, 9404, 0, 0, 0, true},
        RealModel{"numpystl_CubeInvalidUnicode", "stl-binary", 12, 8, 0, 0, 0, true},
        RealModel{"assimp_Spider_binary", "stl-binary", 1368, 722, 56, 72, 0, false},
        RealModel{"assimp_Wuson_colour", "stl-binary", 3732, 2117, 0, 412, 0, false},
        RealModel{"assimp_triangle_two_solids", "stl-text", 2, 6, 0, 6, 0, false},
        RealModel{"trimesh_idler_riser_solid_open", "stl-binary", 1572, 803, 0, 44, 0, false},
        RealModel{"trimesh_shared_edge_nonmanifold", "stl-binary", 24, 14, 0, 0, 1, true},
        RealModel{"openstl_KEY_solid", "stl-binary", 12, 8, 0, 0, 0, true}),
    testing::PrintToStringParamName());

}  // namespace
}  // namespace nmk_model

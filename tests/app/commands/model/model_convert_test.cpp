// model_convert: models that `nmk model convert` writes.

#include "commands/model/model_convert.h"

#include <gtest/gtest.h>
#include <nmktoolbox/trifile/nmkGiTriBlockColour.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <set>

#include "app/commands/model/model_fixtures.h"
#include "app/shell/standard_input.h"
#include "child_process.h"
#include "commands/model/change_model.h"
#include "commands/model/model_command.h"
#include "flue_samples.h"
#include "nmt_samples.h"

namespace nmk_model {
namespace {

using model_samples::binary_stl;
using nmk_shell::expect_refused;
using nmk_shell::Printed;
using nmk_shell::text_of;

class Silent : public nmkProgressBreak {};

class model_convert : public testing::Test {
  protected:
    std::string file(const std::string& name) const { return folder.path() + "/" + name; }

    std::unique_ptr<Model> model_of(const std::string& name) const {
        Silent silent;
        ReadingFailure failure;
        auto model = read_model(file(name), {}, silent, failure);
        EXPECT_NE(model, nullptr) << failure.error.text();
        return model;
    }

    Printed convert(const std::string& name, const std::string& bytes, const std::string& output,
                    std::vector<std::string> more = {}) {
        more.insert(more.begin(), {"convert", folder.file(name, bytes), file(output)});
        return run_words(more);
    }

    ScratchDirectory folder;
};

Facets facets_of(const Model& model) {
    Facets all;
    for (const auto& block : model.blocks) all = joined(all, model_samples::corners_of(*block));
    return all;
}

/// Normal and corners of each facet of a binary STL.
std::vector<std::array<float, 12>> stl_facets(const std::string& bytes) {
    std::vector<std::array<float, 12>> facets((bytes.size() - 84) / 50);
    for (std::size_t i = 0; i < facets.size(); ++i) {
        std::memcpy(facets[i].data(), bytes.data() + 84 + 50 * i, sizeof facets[i]);
    }
    return facets;
}

struct Conversion {
    const char* name;
    const char* input;
    std::string bytes;
    const char* output;
};

std::ostream& operator<<(std::ostream& out, const Conversion& one) { return out << one.name; }

class model_convert_of : public testing::TestWithParam<Conversion> {
  protected:
    ScratchDirectory folder;
};

TEST_P(model_convert_of, the_format_keeps_every_triangle_in_its_place) {
    const std::string input = folder.file(GetParam().input, GetParam().bytes);
    const std::string output = folder.path() + "/" + GetParam().output;
    const Printed printed = run_words({"convert", input, output});
    ASSERT_EQ(printed.code, 0) << printed.err;
    Silent silent;
    ReadingFailure failure;
    const auto before = read_model(input, {}, silent, failure);
    const auto after = read_model(output, {}, silent, failure);
    ASSERT_TRUE(before != nullptr && after != nullptr) << failure.error.text();
    EXPECT_EQ(facets_of(*after), facets_of(*before));
    EXPECT_FALSE(facets_of(*after).empty());
}

const Facets tetrahedron = model_samples::tetrahedron();

INSTANTIATE_TEST_SUITE_P(
    formats, model_convert_of,
    testing::Values(Conversion{"binary_stl_to_nmt", "a.stl", binary_stl(tetrahedron), "b.nmt"},
                    Conversion{"text_stl_to_binary", "a.stl", model_samples::text_stl(tetrahedron),
                               "b.STL"},
                    Conversion{"flue_to_stl", "a.tri", flue_samples::file({{}, {}}), "b.stl"},
                    Conversion{"flue_to_nmt", "a.tri", flue_samples::file({{}, {}}), "b.nmlmt"},
                    Conversion{"nmt_to_stl", "a.nmt", nmt_samples::file({{}, {}}), "b.stl"},
                    Conversion{"ttr_to_nmt", "a.ttr", model_samples::ttr(tetrahedron), "b.nmt"}),
    testing::PrintToStringParamName());

TEST_F(model_convert, prints_what_it_has_written) {
    const Printed printed = convert("a.stl", binary_stl(tetrahedron), "b.nmt");
    EXPECT_EQ(printed.code, 0);
    EXPECT_EQ(printed.out,
              file("a.stl") + ": 4 triangles in 1 block\nWrote " + file("b.nmt") + ".\n");
    EXPECT_EQ(convert("a.stl", binary_stl(tetrahedron), "b.nmt", {"--quiet"}).out, "");
}

TEST_F(model_convert, writes_unit_normals_into_stl) {
    convert("a.stl", binary_stl(cube({0, 0, 0}, 5)), "b.stl");
    const auto facets = stl_facets(text_of(file("b.stl")));
    ASSERT_EQ(facets.size(), 12U);
    EXPECT_EQ(facets[0][2], -1.0F);
    EXPECT_EQ(facets[11][2], 1.0F);
    for (const auto& facet : facets) {
        EXPECT_EQ(std::abs(facet[0]) + std::abs(facet[1]) + std::abs(facet[2]), 1.0F);
    }
}

TEST_F(model_convert, scales_and_converts_inches) {
    const std::string bytes = binary_stl({{0, 0, 0, 1, 0, 0, 0, 2, 0}});
    convert("a.stl", bytes, "b.nmt", {"--units", "inch", "--scale", "10"});
    EXPECT_EQ(facets_of(*model_of("b.nmt"))[0],
              (model_samples::Corners{0, 0, 0, 254, 0, 0, 0, 508, 0}));
}

TEST_F(model_convert, writes_millimetres_of_an_nmt_in_inches) {
    convert("a.nmt", nmt_samples::file({{}}, false), "b.nmt");
    const auto model = model_of("b.nmt");
    EXPECT_EQ(model->file_units, ModelUnits::millimetres);
    EXPECT_EQ(facets_of(*model)[0][3], 25.4);
}

TEST_F(model_convert, keeps_blocks_and_colours_unless_they_are_merged) {
    const std::string bytes = nmt_samples::file({{.colour = 5}, {.colour = 6}});
    convert("a.nmt", bytes, "b.nmt");
    EXPECT_EQ(text_of(file("b.nmt")).size(),
              bytes.size() - std::strlen("sample") + std::strlen("a.nmt"));
    EXPECT_EQ(text_of(file("b.nmt")).substr(28 + 5), bytes.substr(28 + 6));
    convert("a.nmt", bytes, "b.nmt", {"--merge"});
    EXPECT_EQ(model_of("b.nmt")->blocks.size(), 1U);
    EXPECT_EQ(model_of("b.nmt")->triangle_count(), 2);
    nmkGiTriBlockColourcoFeature colour;
    const bool has_colour = model_of("b.nmt")->blocks[0]->get(colour) != 0;
    EXPECT_TRUE(!has_colour || colour->get_colour() < 0);
}

TEST(add_missing_normals, replaces_those_that_are_not_one_for_each_node) {
    Model model;
    model.blocks.push_back(std::make_unique<giTriBlock>());
    giTriBlock& block = *model.blocks.front();
    model_samples::fill_unshared(block, {{0, 0, 0, 1, 0, 0, 0, 1, 0}});
    giNormArrcoFeature normals;
    block.add(normals);
    normals->add(giVector3(1, 0, 0));
    add_missing_normals(model);
    EXPECT_EQ(model_samples::normals_of(block), std::vector<giVector3>(3, giVector3(0, 0, 1)));
}

TEST_F(model_convert, keeps_normals_only_where_they_are_wanted) {
    const std::string bytes = nmt_samples::file({{.has_normals = true, .normal_x = 0.5}});
    convert("a.nmt", bytes, "b.nmt");
    EXPECT_FALSE(model_samples::has_normals(*model_of("b.nmt")->blocks[0]));
    convert("a.nmt", bytes, "b.nmt", {"--normals"});
    EXPECT_EQ(model_samples::normals_of(*model_of("b.nmt")->blocks[0])[2], giVector3(0.5, 0, 1));
}

TEST_F(model_convert, computes_normals_of_nodes_as_the_mean_of_their_triangles_by_area) {
    // A large triangle in z = 0 and one of a third of its area in x = 0 share two nodes.
    convert("a.stl", binary_stl({{0, 0, 0, 3, 0, 0, 0, 1, 0}, {0, 0, 0, 0, 1, 0, 0, 0, 4}}),
            "b.nmt", {"--normals"});
    const auto normals = model_samples::normals_of(*model_of("b.nmt")->blocks[0]);
    ASSERT_EQ(normals.size(), 4U);
    EXPECT_EQ(normals[0], giVector3(0.8, 0, 0.6));
    EXPECT_EQ(normals[1], giVector3(0, 0, 1));
    EXPECT_EQ(normals[3], giVector3(1, 0, 0));
}

TEST_F(model_convert, gives_nodes_without_area_a_zero_normal) {
    convert("a.stl", binary_stl({{1, 1, 1, 1, 1, 1, 1, 1, 1}}), "b.nmt", {"--normals"});
    EXPECT_EQ(model_samples::normals_of(*model_of("b.nmt")->blocks[0])[0], giVector3());
}

TEST_F(model_convert, keeps_the_normals_of_merged_blocks_that_all_have_them) {
    const nmt_samples::Block block{.has_normals = true};
    convert("a.nmt", nmt_samples::file({block, block}), "b.nmt", {"--merge", "--normals"});
    const auto normals = model_samples::normals_of(*model_of("b.nmt")->blocks[0]);
    ASSERT_EQ(normals.size(), 6U);
    EXPECT_EQ(normals[5], giVector3(0, 0, 1));
}

TEST_F(model_convert, leaves_out_triangles_and_nodes_without_a_place) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Facets facets = tetrahedron;
    facets.push_back({0, 0, 0, 1, 0, 0, 0, 1e30, 0});
    facets.push_back({0, 0, 0, 1, 0, 0, 0, nan, 0});
    const Printed printed = convert("a.stl", binary_stl(facets), "b.nmt");
    EXPECT_EQ(printed.code, 0);
    EXPECT_NE(printed.out.find("Left out 2 triangles with"), std::string::npos) << printed.out;
    EXPECT_EQ(model_samples::nodes_of(*model_of("b.nmt")->blocks[0]).size(), 4U);
    EXPECT_EQ(facets_of(*model_of("b.nmt")), tetrahedron);
}

TEST_F(model_convert, writes_stl_to_standard_output_and_reads_standard_input) {
    const std::string bytes = binary_stl(tetrahedron);
    const StandardInput input(bytes);
    const Printed printed = run_words({"convert", "-", "-"});
    EXPECT_EQ(printed.code, 0);
    EXPECT_EQ(printed.out.substr(80, 4), bytes.substr(80, 4));
    EXPECT_EQ(printed.out.size(), bytes.size());
    EXPECT_EQ(printed.err, "standard input: 4 triangles in 1 block\n");
}

TEST_F(model_convert, of_a_model_without_triangles_ends_with_1_and_writes_nothing) {
    const Printed printed = convert("a.stl", binary_stl({}), "b.nmt");
    EXPECT_EQ(printed.code, 1);
    EXPECT_EQ(printed.err, file("a.stl") + ": has no triangles; nothing was written\n");
    EXPECT_FALSE(std::filesystem::exists(file("b.nmt")));
}

TEST_F(model_convert, of_a_cut_file_keeps_the_output_as_it_was) {
    folder.file("b.nmt", "before");
    const Printed printed = convert("a.stl", binary_stl(tetrahedron).substr(0, 200), "b.nmt");
    expect_refused(printed, "the data are bad or cut");
    EXPECT_EQ(text_of(file("b.nmt")), "before");
    EXPECT_EQ(folder.file_count(), 2U);
}

TEST_F(model_convert, leaves_no_file_on_a_full_disk) {
    const std::string input = folder.file("a.stl", binary_stl(model_samples::grid(50)));
    EXPECT_EQ(with_little_room(4096,
                               [&] {
                                   return run_words({"convert", input, file("b.stl")}).code;
                               }),
              2);
    EXPECT_EQ(folder.file_count(), 1U);
}

TEST_F(model_convert, leaves_no_file_whenever_it_is_stopped) {
    ModelOptions options;
    options.action = Action::convert;
    options.files = {folder.file("a.stl", binary_stl(model_samples::grid(100))), file("b.nmt")};
    std::set<int> codes;
    for (int call = 1; call < 40; ++call) {
        Stopper stopper(call);
        std::ostringstream out;
        std::ostringstream err;
        const int code = run_model(options, out, err, stopper);
        codes.insert(code);
        if (code == 0) break;
        EXPECT_EQ(code, 1) << call;
        EXPECT_EQ(out.str(), "");
        EXPECT_EQ(err.str(), "nmk model: stopped; nothing was written\n");
        EXPECT_EQ(folder.file_count(), 1U);
    }
    EXPECT_EQ(codes, (std::set<int>{0, 1}));
    EXPECT_EQ(folder.file_count(), 2U);
}

class model_convert_options : public testing::TestWithParam<WrongWords> {};

TEST_P(model_convert_options, that_are_wrong_are_refused) {
    std::vector<std::string> words = GetParam().words;
    words.insert(words.begin(), "convert");
    expect_refused(run_words(words), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    words, model_convert_options,
    testing::Values(
        WrongWords{"no_output", {"a.stl"}, "expected two files"},
        WrongWords{"three_files", {"a.stl", "b.stl", "c.stl"}, "expected two files"},
        WrongWords{"unknown_format", {"a.stl", "b.obj"}, "ends in .stl, .nmt or .nmlmt"},
        WrongWords{"itself", {"a.stl", "./a.stl"}, "is the input file"},
        WrongWords{"no_scale", {"a.stl", "b.stl", "--scale", "0"}, "a number above 0"},
        WrongWords{"negative_scale", {"a.stl", "b.stl", "--scale", "-2"}, "a number above 0"},
        WrongWords{"scale_of_nan", {"a.stl", "b.stl", "--scale", "nan"}, "a number above 0"},
        WrongWords{"normals_of_stl", {"a.nmt", "b.stl", "--normals"}, "does not apply to STL"},
        WrongWords{"json", {"a.nmt", "b.stl", "--json"}, "--json does not apply"}),
    testing::PrintToStringParamName());

TEST(model_info_options, of_convert_are_refused) {
    for (const std::vector<std::string>& more :
         {std::vector<std::string>{"--scale", "2"}, {"--merge"}, {"--normals"}}) {
        std::vector<std::string> words = {"info", "a.stl"};
        words.insert(words.end(), more.begin(), more.end());
        expect_refused(run_words(words), "apply to convert only");
    }
}

}  // namespace
}  // namespace nmk_model

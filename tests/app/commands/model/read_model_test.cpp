// read_model: models of every format, and files that are none.

#include "commands/model/read_model.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>
#include <filesystem>
#include <limits>

#include "app/commands/model/model_fixtures.h"
#include "app/shell/standard_input.h"
#include "commands/model/usable_triangles.h"
#include "flue_samples.h"
#include "nmt_samples.h"

namespace nmk_model {
namespace {

using model_samples::binary_stl;
using model_samples::text_stl;
using model_samples::ttr;

class Silent : public nmkProgressBreak {};

std::unique_ptr<Model> read(const std::string& file, ReadingFailure& failure,
                            const ReadingOptions& options = {}) {
    Silent silent;
    return read_model(file, options, silent, failure);
}

struct FormatCase {
    const char* name;
    const char* file;  // its name
    std::string bytes;
    ModelFormat format;
    std::int64_t triangles;
};

std::ostream& operator<<(std::ostream& out, const FormatCase& one) { return out << one.name; }

class read_model_of : public testing::TestWithParam<FormatCase> {
  protected:
    ScratchDirectory folder;
};

TEST_P(read_model_of, the_format_reads_its_triangles) {
    ReadingFailure failure;
    const auto model = read(folder.file(GetParam().file, GetParam().bytes), failure);
    ASSERT_NE(model, nullptr) << failure.error.text();
    EXPECT_EQ(model->format, GetParam().format);
    EXPECT_EQ(model->triangle_count(), GetParam().triangles);
}

const Facets tetrahedron = model_samples::tetrahedron();

INSTANTIATE_TEST_SUITE_P(
    names, read_model_of,
    testing::Values(
        FormatCase{"binary_stl", "a.stl", binary_stl(tetrahedron), ModelFormat::binary_stl, 4},
        FormatCase{"binary_stl_with_solid_as_its_header", "a.STL",
                   binary_stl(tetrahedron, 4, "solid"), ModelFormat::binary_stl, 4},
        FormatCase{"text_stl", "a.stl", text_stl(tetrahedron), ModelFormat::text_stl, 4},
        FormatCase{"empty_binary_stl", "a.stl", binary_stl({}), ModelFormat::binary_stl, 0},
        FormatCase{"flue", "a.tri", flue_samples::file({{}}), ModelFormat::flue, 1},
        FormatCase{"nmt", "a.nmt", nmt_samples::file({{}, {}}), ModelFormat::nmt, 2},
        FormatCase{"nmt_of_the_second_name", "a.nmlmt", nmt_samples::file({{}}), ModelFormat::nmt,
                   1},
        FormatCase{"ttr", "a.ttr", ttr(tetrahedron), ModelFormat::ttr, 4},
        FormatCase{"binary_stl_by_content", "a", binary_stl(tetrahedron), ModelFormat::binary_stl,
                   4},
        FormatCase{"binary_stl_with_more_behind_it_by_content", "a",
                   binary_stl(tetrahedron) + "more", ModelFormat::binary_stl, 4},
        FormatCase{"text_stl_by_content", "a.txt", " \n" + text_stl(tetrahedron),
                   ModelFormat::text_stl, 4},
        FormatCase{"flue_by_content", "a", flue_samples::file({{}}), ModelFormat::flue, 1},
        FormatCase{"nmt_by_content", "a", nmt_samples::file({{}}), ModelFormat::nmt, 1},
        FormatCase{"ttr_by_content", "a", ttr(tetrahedron), ModelFormat::ttr, 4}),
    testing::PrintToStringParamName());

struct BadCase {
    const char* name;
    const char* file;
    std::string bytes;
    const char* message;
};

std::ostream& operator<<(std::ostream& out, const BadCase& one) { return out << one.name; }

class read_model_refuses : public testing::TestWithParam<BadCase> {
  protected:
    ScratchDirectory folder;
};

TEST_P(read_model_refuses, the_file_with_a_message) {
    const std::string name = folder.file(GetParam().file, GetParam().bytes);
    ReadingFailure failure;
    EXPECT_EQ(read(name, failure), nullptr);
    EXPECT_FALSE(failure.is_stopped);
    EXPECT_EQ(failure.error.text(), name + ": " + GetParam().message);
}

const char* const unknown = "unknown format; expected STL, Flue text, NMT or TTR, or a --format";
const char* const bad_stl = "the data are bad or cut; expected a binary STL model";
const char* const bad_text = "the data are bad or cut; expected a text STL model";

INSTANTIATE_TEST_SUITE_P(
    files, read_model_refuses,
    testing::Values(
        BadCase{"empty", "a.stl", "", "the header is bad or cut; expected a binary STL model"},
        BadCase{"empty_of_no_format", "a", "", unknown},
        BadCase{"of_no_format", "a.txt", "hello\nworld\n", unknown},
        BadCase{"of_nul_bytes_alone", "a", std::string(200, '\0'), unknown},
        BadCase{"with_the_mark_of_flue_in_the_first_column", "a", "\n* mark\n1\nindex\n", unknown},
        BadCase{"cut_binary_stl", "a.stl", binary_stl(tetrahedron).substr(0, 200), bad_stl},
        BadCase{"cut_text_stl", "a.stl", text_stl(tetrahedron).substr(0, 200), bad_text},
        BadCase{"huge_count", "a.stl", binary_stl(tetrahedron, 0xFFFFFFFF), bad_stl},
        BadCase{"cut_ttr", "a.ttr", ttr(tetrahedron).substr(0, 200),
                "the data are bad or cut; expected a TTR model"},
        BadCase{"huge_count_of_ttr", "a.ttr", ttr(tetrahedron, 0x80000000),
                "the data are bad or cut; expected a TTR model"},
        BadCase{"cut_nmt", "a.nmt", nmt_samples::file({{}}).substr(0, 60),
                "the data are bad or cut; expected an NMT model"},
        BadCase{"nmt_without_its_letters", "a.nmt", std::string(40, 'x'),
                "the header is bad or cut; expected an NMT model"},
        BadCase{"nmt_with_a_node_it_lacks", "a.nmt", nmt_samples::file({{.triangle = {0, 1, 3}}}),
                "the data are bad or cut; expected an NMT model"},
        BadCase{"cut_flue", "a.tri", flue_samples::header(1) + "block\n\n\n0 0 3 1\n\n",
                "the data are bad or cut; expected a Flue text model"}),
    testing::PrintToStringParamName());

class read_model : public testing::Test {
  protected:
    std::string problem(const std::string& file) {
        ReadingFailure failure;
        EXPECT_EQ(read(file, failure), nullptr);
        return failure.error.text();
    }

    ScratchDirectory folder;
};

TEST_F(read_model, reports_why_a_name_cannot_be_opened) {
    EXPECT_EQ(problem("/none.stl"), "/none.stl: cannot be opened: No such file or directory");
    EXPECT_EQ(problem(folder.path()), folder.path() + ": is a directory; expected a file");
    const std::string itself = folder.path() + "/itself.stl";
    std::filesystem::create_symlink(itself, itself);
    EXPECT_EQ(problem(itself), itself + ": cannot be opened: Too many levels of symbolic links");
}

TEST_F(read_model, refuses_a_pipe_without_waiting_for_it) {
    const std::string pipe = folder.path() + "/pipe.stl";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(problem(pipe),
              pipe + ": is not a regular file; expected one, or \"-\" for standard input");
    EXPECT_EQ(problem("/dev/zero"),
              "/dev/zero: is not a regular file; expected one, or \"-\" for standard input");
}

TEST_F(read_model, reads_standard_input_by_its_content) {
    const StandardInput input(binary_stl(model_samples::grid(60)));
    ReadingFailure failure;
    const auto model = read("-", failure);
    ASSERT_NE(model, nullptr) << failure.error.text();
    EXPECT_EQ(model->name, "standard input");
    EXPECT_EQ(model->triangle_count(), 7200);
}

TEST_F(read_model, takes_the_format_that_it_is_given) {
    ReadingFailure failure;
    const auto model =
        read(folder.file("a.stl", ttr(tetrahedron)), failure, {FormatChoice::ttr, {}});
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(model->format, ModelFormat::ttr);
}

TEST_F(read_model, converts_inches_where_the_file_does_not_state_its_units) {
    ReadingFailure failure;
    const ReadingOptions inches{FormatChoice::automatic, ModelUnits::inches};
    const auto model =
        read(folder.file("a.stl", binary_stl({{0, 0, 0, 1, 0, 0, 0, 2, 0}})), failure, inches);
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(model_samples::nodes_of(*model->blocks[0])[2], giPoint3(0, 50.8, 0));
}

TEST_F(read_model, takes_the_units_of_nmt_from_the_file) {
    ReadingFailure failure;
    const ReadingOptions inches{FormatChoice::automatic, ModelUnits::inches};
    const auto mm = read(folder.file("mm.nmt", nmt_samples::file({{}})), failure, inches);
    const auto inch = read(folder.file("inch.nmt", nmt_samples::file({{}}, false)), failure);
    ASSERT_TRUE(mm != nullptr && inch != nullptr);
    EXPECT_EQ(model_samples::nodes_of(*mm->blocks[0])[1], giPoint3(1, 0, 0));
    EXPECT_EQ(model_samples::nodes_of(*inch->blocks[0])[1], giPoint3(25.4, 0, 0));
    EXPECT_EQ(inch->file_units, ModelUnits::inches);
}

TEST_F(read_model, leaves_out_and_counts_triangles_without_finite_places) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    const Facets facets = {{0, 0, nan, 1, 0, 0, 0, 1, 0},
                           {0, 0, 0, 1, 0, 0, 0, 1, 0},
                           {0, 0, 0, infinite, 0, 0, 0, 1, 0},
                           {0, 0, 0, 1, -2e9, 0, 0, 1, 0}};
    ReadingFailure failure;
    const auto model = read(folder.file("a.stl", binary_stl(facets)), failure);
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(model->triangle_count(), 1);
    EXPECT_EQ(model->invalid_triangles, 3);
    EXPECT_EQ(welded_mesh(*model).nodes.size(), 3U);
}

TEST(remove_unusable, keeps_the_normals_of_the_nodes_that_stay) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    giTriBlock block;
    model_samples::fill_unshared(block,
                                 {{nan, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 0, 0, 1, 0, 0, 0, 1, 0}});
    giNormArrcoFeature normals;
    block.add(normals);
    for (int i = 0; i < 6; ++i) normals->add(giVector3(i, 0, 1));
    EXPECT_EQ(remove_unusable(block, 1e9), 1);
    EXPECT_EQ(model_samples::triangles_of(block), std::vector<giTriangle>{giTriangle(2, 3, 4)});
    EXPECT_EQ(model_samples::normals_of(block),
              (std::vector<giVector3>{{1, 0, 1}, {2, 0, 1}, {3, 0, 1}, {4, 0, 1}, {5, 0, 1}}));
}

TEST_F(read_model, of_every_prefix_gives_a_model_or_a_message) {
    const std::pair<const char*, std::string> files[] = {
        {"a.stl", binary_stl(tetrahedron)},  {"b.stl", text_stl({tetrahedron[0]})},
        {"c.tri", flue_samples::file({{}})}, {"d.nmt", nmt_samples::file({{}})},
        {"e.ttr", ttr(tetrahedron)},         {"f", nmt_samples::file({{}})}};
    for (const auto& [name, bytes] : files) {
        for (std::size_t size = 0; size <= bytes.size(); ++size) {
            ReadingFailure failure;
            const auto model = read(folder.file(name, bytes.substr(0, size)), failure);
            EXPECT_EQ(model == nullptr, !failure.error.message.empty()) << name << size;
            EXPECT_TRUE(model != nullptr || size < bytes.size()) << name;
        }
    }
}

TEST_F(read_model, stops_when_the_reporter_requests_it) {
    Stopper stopper(3);
    ReadingFailure failure;
    const std::string file = folder.file("a.stl", binary_stl(model_samples::grid(100)));
    EXPECT_EQ(nmk_model::read_model(file, {}, stopper, failure), nullptr);
    EXPECT_TRUE(failure.is_stopped);
}

}  // namespace
}  // namespace nmk_model

#include <gtest/gtest.h>
#include <stlfile/TriangleFileSTL.h>

#include <limits>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <tuple>

#include "model_samples.h"
#include "real_inputs.h"

using model_samples::Corners;
using model_samples::MemoryFile;

namespace {

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

// An ordered map from places to indices.
class MapUnduplicator : public slfINodeUnduplicator {
  public:
    void clear() override { m_known.clear(); }
    long long node_index(const giPoint3& point, long long index) override {
        return m_known.try_emplace({point.x, point.y, point.z}, index).first->second;
    }

  private:
    std::map<std::tuple<double, double, double>, long long> m_known;
};

// What reading a whole file has given.
struct Read {
    int header = 0;
    int status = -1;  // of the last get_block
    int ignored = 0;
    giTriBlock block;
};

// Reads a file block by block until the status is not 0.
std::unique_ptr<Read> read_all(TriangleFile& file, const std::string& bytes) {
    auto read = std::make_unique<Read>();
    read->header = file.read_init(utPtrClaimed, new MemoryFile(bytes));
    if (read->header != 0) return read;
    do read->status = file.get_block(read->block);
    while (read->status == 0);
    read->ignored = file.invalid_data_ignored();
    return read;
}

std::unique_ptr<Read> read_all(const std::string& bytes) {
    MapUnduplicator unduplicator;
    TriangleFileSTL file(&unduplicator);
    return read_all(file, bytes);
}

std::size_t triangle_count(const Read& read) {
    return model_samples::triangles_of(read.block).size();
}

struct TextCase {
    const char* name;
    const char* text;
    int status;
    std::size_t triangles;
};

std::ostream& operator<<(std::ostream& out, const TextCase& each) { return out << each.name; }

class TriangleFileSTL_text : public testing::TestWithParam<TextCase> {};

struct RealCase {
    const char* name;
    const char* file;
    std::size_t triangles;
    std::size_t nodes;
};

std::ostream& operator<<(std::ostream& out, const RealCase& each) { return out << each.name; }

class TriangleFileSTL_real : public testing::TestWithParam<RealCase> {};

// Counts its calls and stops the reading at one of them.
struct Percent {
    static int show(int percent, void* data) {
        auto* const self = static_cast<Percent*>(data);
        self->last = percent;
        return ++self->calls == self->stop_at ? 1 : 0;
    }
    int calls = 0;
    int stop_at = 0;
    int last = -1;
};

constexpr char facet[] =
    "facet normal 0 0 1 outer loop vertex 0 0 0 vertex 1 0 0 vertex 0 1 0 endloop endfacet\n";

}  // namespace

TEST(TriangleFile, of_a_null_file_cannot_be_opened) {
    TriangleFileSTL file(nullptr);
    giTriBlock block;
    double corners[9];
    EXPECT_NE(file.read_init(utPtrClaimed, nullptr), 0);
    EXPECT_EQ(file.get_block(block), 1);
    EXPECT_EQ(file.read_next(corners), 1);
    EXPECT_TRUE(file.get_box().is_empty());
    file.read_close();
}

TEST(TriangleFile, leaves_a_borrowed_file_to_its_owner) {
    MemoryFile bytes(model_samples::binary_stl(model_samples::tetrahedron()));
    {
        TriangleFileSTL file(nullptr);
        EXPECT_EQ(file.read_init(utPtrBorrow, &bytes), 0);
    }
    EXPECT_TRUE(bytes.is_open());
}

TEST(TriangleFile, once_closed_is_at_the_end_of_the_data) {
    for (const std::string& bytes : {model_samples::binary_stl(model_samples::tetrahedron()),
                                     model_samples::text_stl(model_samples::tetrahedron())}) {
        TriangleFileSTL file(nullptr);
        double corners[9];
        giTriBlock block;
        ASSERT_EQ(file.read_init(utPtrClaimed, new MemoryFile(bytes)), 0);
        EXPECT_EQ(file.read_next(corners), 0);
        file.read_close();
        EXPECT_EQ(file.read_next(corners), 1);
        EXPECT_EQ(file.get_block(block), 1);
        EXPECT_EQ(file.percent_read(), 0);
        EXPECT_EQ(block.size(), 0);
        file.read_close();
    }
}

TEST(TriangleFile, show_percent_without_a_function_goes_on) {
    const TriangleFileSTL file(nullptr);
    EXPECT_EQ(file.show_percent(), 0);
}

TEST(TriangleFileSTL, corners_at_equal_places_share_a_node) {
    const auto read = read_all(model_samples::binary_stl(model_samples::tetrahedron()));
    EXPECT_EQ(read->status, 1);
    EXPECT_EQ(model_samples::nodes_of(read->block).size(), 4U);
    EXPECT_EQ(model_samples::corners_of(read->block), model_samples::tetrahedron());
    EXPECT_FALSE(model_samples::has_normals(read->block));
    EXPECT_EQ(read->block.size(), 2);
}

TEST(TriangleFileSTL, without_an_unduplicator_each_corner_is_a_node) {
    TriangleFileSTL file(nullptr);
    const auto read = read_all(file, model_samples::binary_stl(model_samples::tetrahedron()));
    EXPECT_EQ(model_samples::nodes_of(read->block).size(), 12U);
}

TEST(TriangleFileSTL, triangles_are_appended_behind_those_of_the_block) {
    MapUnduplicator unduplicator;
    giTriBlock block;
    for (int i = 0; i < 2; ++i) {
        TriangleFileSTL file(&unduplicator);
        const std::string bytes = model_samples::binary_stl(model_samples::tetrahedron());
        ASSERT_EQ(file.read_init(utPtrClaimed, new MemoryFile(bytes)), 0);
        EXPECT_EQ(file.get_block(block), 0);
    }
    EXPECT_EQ(model_samples::nodes_of(block).size(), 8U);
    EXPECT_EQ(model_samples::corners_of(block)[5], model_samples::tetrahedron()[1]);
}

TEST(TriangleFileSTL, a_second_reading_is_at_the_end_and_adds_nothing) {
    TriangleFileSTL file(nullptr);
    const auto read = read_all(file, model_samples::binary_stl(model_samples::tetrahedron()));
    EXPECT_EQ(file.get_block(read->block), 1);
    EXPECT_EQ(triangle_count(*read), 4U);
}

TEST(TriangleFileSTL, box_is_that_of_the_triangles) {
    TriangleFileSTL file(nullptr);
    read_all(file, model_samples::binary_stl({{-1, 2, 3, 4, -5, 6, 7, 8, -9}}));
    EXPECT_EQ(file.get_box().min(), giPoint3(-1, -5, -9));
    EXPECT_EQ(file.get_box().max(), giPoint3(7, 8, 6));
}

TEST(TriangleFileSTL, a_binary_file_may_say_solid_and_be_longer_than_its_facets) {
    const auto triangles = model_samples::tetrahedron();
    for (const char* rest : {"", "rest"}) {
        const auto read = read_all(model_samples::binary_stl(triangles, 4, "solid sample") + rest);
        EXPECT_EQ(read->status, 1);
        EXPECT_EQ(triangle_count(*read), 4U);
    }
}

TEST(TriangleFileSTL, a_file_is_binary_that_holds_the_triangles_it_counts) {
    EXPECT_EQ(TriangleFileSTL::binary_length(0), 84);
    EXPECT_EQ(TriangleFileSTL::binary_length(0xFFFFFFFF), 84 + 50 * 0xFFFFFFFFLL);
    for (const std::uint32_t count : {0U, 1U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        const std::int64_t length = TriangleFileSTL::binary_length(count);
        EXPECT_FALSE(TriangleFileSTL::is_binary(length - 1, count)) << count;
        EXPECT_TRUE(TriangleFileSTL::is_binary(length, count)) << count;
        EXPECT_TRUE(TriangleFileSTL::is_binary(length + 1, count)) << count;
    }
}

TEST(TriangleFileSTL, a_file_without_triangles_gives_no_block) {
    const auto read = read_all(model_samples::binary_stl({}));
    EXPECT_EQ(read->status, 1);
    EXPECT_EQ(read->block.size(), 0);
}

TEST(TriangleFileSTL, every_prefix_of_a_binary_file_gives_its_whole_triangles) {
    const std::string bytes = model_samples::binary_stl(model_samples::tetrahedron());
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        const auto read = read_all(bytes.substr(0, size));
        if (size < 84) {
            EXPECT_NE(read->header, 0) << size;
            continue;
        }
        EXPECT_EQ(read->status, size < bytes.size() ? 3 : 1) << size;
        EXPECT_EQ(triangle_count(*read), (size - 84) / 50) << size;
    }
}

TEST(TriangleFileSTL, every_prefix_of_a_text_gives_its_whole_triangles) {
    const std::string text = model_samples::text_stl(model_samples::tetrahedron());
    const std::size_t end = text.rfind("endsolid") + 8;
    for (std::size_t size = 0; size <= text.size(); ++size) {
        const auto read = read_all(text.substr(0, size));
        if (size < 5) {
            EXPECT_NE(read->header, 0) << size;
            continue;
        }
        EXPECT_EQ(read->status, size < end ? 3 : 1) << size;
        EXPECT_LE(triangle_count(*read), 4U) << size;
    }
}

TEST(TriangleFileSTL, a_forged_count_ends_with_the_file) {
    for (const std::uint32_t count : model_samples::forged_counts) {
        const auto read = read_all(model_samples::binary_stl(model_samples::tetrahedron(), count));
        EXPECT_EQ(read->status, count <= 4 ? 1 : 3) << count;
        EXPECT_EQ(triangle_count(*read), std::min(count, 4U)) << count;
    }
}

TEST(TriangleFileSTL, triangles_with_nan_are_delivered) {
    const auto read =
        read_all(model_samples::binary_stl({{0, 0, 0, not_a_number, 1, 0, 1, 0, 0}, {}}));
    EXPECT_EQ(read->status, 1);
    EXPECT_EQ(triangle_count(*read), 2U);
    EXPECT_EQ(read->ignored, 0);
}

TEST(TriangleFileSTL, triangles_with_nan_are_bad_data_where_that_is_asked_for) {
    TriangleFileSTL file(nullptr);
    file.nan_cause_error(1);
    file.ignore_nan_triangles(1);
    const auto read =
        read_all(file, model_samples::binary_stl({{}, {0, 0, not_a_number, 0, 0, 0, 0, 0, 0}, {}}));
    EXPECT_EQ(read->status, 3);
    EXPECT_EQ(triangle_count(*read), 1U);
}

TEST(TriangleFileSTL, triangles_with_nan_are_left_out_and_counted_where_that_is_asked_for) {
    TriangleFileSTL file(nullptr);
    file.ignore_nan_triangles(1);
    const Corners bad = {0, 0, 0, 0, 99, 0, 0, 0, not_a_number};
    const auto read = read_all(file, model_samples::binary_stl({bad, {}, bad}));
    EXPECT_EQ(read->status, 1);
    EXPECT_EQ(triangle_count(*read), 1U);
    EXPECT_EQ(read->ignored, 2);
    EXPECT_EQ(file.get_box().max(), giPoint3(0, 0, 0));
}

TEST(TriangleFileSTL, the_percent_function_is_called_at_each_multiple_of_1000_triangles) {
    TriangleFileSTL file(nullptr);
    Percent percent;
    file.set_percent_func(Percent::show, &percent);
    read_all(file, model_samples::binary_stl(model_samples::grid(50)));
    EXPECT_EQ(percent.calls, 5);
    EXPECT_EQ(percent.last, 80);
    EXPECT_EQ(file.percent_read(), 100);
}

TEST(TriangleFileSTL, the_percent_function_stops_the_reading_before_the_triangle) {
    for (const bool is_binary : {true, false}) {
        TriangleFileSTL file(nullptr);
        Percent percent;
        percent.stop_at = 2;
        file.set_percent_func(Percent::show, &percent);
        const auto triangles = model_samples::grid(50);
        const auto read = read_all(file, is_binary ? model_samples::binary_stl(triangles)
                                                   : model_samples::text_stl(triangles));
        EXPECT_EQ(read->status, 2);
        EXPECT_EQ(triangle_count(*read), 1000U);
    }
}

TEST(TriangleFileSTL, a_text_gives_the_triangles_of_the_binary_file) {
    const auto triangles = model_samples::grid(40);
    const auto binary = read_all(model_samples::binary_stl(triangles));
    const auto text = read_all(model_samples::text_stl(triangles));
    EXPECT_EQ(text->status, 1);
    EXPECT_EQ(model_samples::corners_of(text->block), triangles);
    EXPECT_EQ(model_samples::triangles_of(text->block), model_samples::triangles_of(binary->block));
}

TEST(TriangleFileSTL, a_large_binary_file_that_is_cut_gives_its_whole_triangles) {
    const auto triangles = model_samples::grid(40);
    const std::string bytes = model_samples::binary_stl(triangles);
    for (const std::size_t whole : {63U, 64U, 65U, 999U, 1000U, 1001U, 3199U}) {
        for (const std::size_t part : {0U, 1U, 49U}) {
            const auto read = read_all(bytes.substr(0, 84 + 50 * whole + part));
            EXPECT_EQ(read->status, 3) << whole;
            const auto corners = model_samples::corners_of(read->block);
            EXPECT_TRUE(std::equal(corners.begin(), corners.end(), triangles.begin(),
                                   triangles.begin() + static_cast<std::ptrdiff_t>(whole)))
                << whole;
        }
    }
}

TEST(TriangleFileSTL, get_block_continues_behind_read_next) {
    const auto triangles = model_samples::grid(40);
    TriangleFileSTL file(nullptr);
    const std::string bytes = model_samples::binary_stl(triangles);
    ASSERT_EQ(file.read_init(utPtrClaimed, new MemoryFile(bytes)), 0);
    Corners corners;
    for (int i = 0; i < 70; ++i) ASSERT_EQ(file.read_next(corners.data()), 0);
    EXPECT_EQ(corners, triangles[69]);
    giTriBlock block;
    EXPECT_EQ(file.get_block(block), 0);
    EXPECT_EQ(model_samples::corners_of(block),
              std::vector<Corners>(triangles.begin() + 70, triangles.end()));
    EXPECT_EQ(file.read_next(corners.data()), 1);
}

TEST(TriangleFileSTL, a_word_that_only_begins_as_expected_is_bad_data) {
    const std::string text = std::string("solid\n") + facet;
    const std::size_t end = text.rfind('\n');
    const auto read = read_all(text.substr(0, end) + "s" + text.substr(end) + "endsolid\n");
    EXPECT_EQ(read->status, 3);
    EXPECT_EQ(triangle_count(*read), 0U);
}

TEST(TriangleFileSTL, a_second_file_begins_with_an_empty_box) {
    TriangleFileSTL file(nullptr);
    read_all(file, model_samples::binary_stl({{9, 9, 9, 9, 9, 9, 9, 9, 9}}));
    read_all(file, model_samples::binary_stl({{1, 1, 1, 1, 1, 1, 1, 1, 1}}));
    EXPECT_EQ(file.get_box().max(), giPoint3(1, 1, 1));
}

TEST(TriangleFileSTL, words_and_numbers_may_lie_across_pieces_of_the_file) {
    const auto triangles = model_samples::tetrahedron();
    const std::string text = model_samples::text_stl(triangles);
    constexpr std::size_t piece = 65536;
    for (std::size_t before = 0; before < text.size(); ++before) {
        const auto read = read_all(std::string(piece - before, ' ') + text);
        EXPECT_EQ(read->status, 1) << before;
        EXPECT_EQ(model_samples::corners_of(read->block), triangles) << before;
    }
}

TEST(TriangleFileSTL, white_space_without_end_ends_with_the_file) {
    EXPECT_EQ(read_all(std::string(300000, '\n'))->status, 3);
    EXPECT_EQ(read_all("solid " + std::string(300000, 'x'))->status, 3);
    EXPECT_EQ(read_all("solid a\nfacet normal 0 0 0 outer loop vertex " + std::string(300000, '1'))
                  ->status,
              3);
}

TEST_P(TriangleFileSTL_text, is_read) {
    const auto read = read_all(GetParam().text);
    EXPECT_EQ(read->header, 0);
    EXPECT_EQ(read->status, GetParam().status);
    EXPECT_EQ(triangle_count(*read), GetParam().triangles);
}

INSTANTIATE_TEST_SUITE_P(
    texts, TriangleFileSTL_text,
    testing::Values(
        TextCase{"without_facets", "solid\nendsolid\n", 1, 0},
        TextCase{"with_words_in_capitals",
                 "SOLID a\nFACET NORMAL 0 0 0\nOUTER LOOP\nVERTEX 0 0 0\nVertex 1 0 0\nVERTEX 0 1 "
                 "0\nENDLOOP\nENDFACET\nENDSOLID a\n",
                 1, 1},
        TextCase{"with_lines_that_end_in_two_characters",
                 "solid a b c\r\nfacet normal 0 0 0\r\nouter loop\r\nvertex 0 0 0\r\nvertex 1 0 "
                 "0\r\nvertex 0 1 0\r\nendloop\r\nendfacet\r\nendsolid a b c\r\n",
                 1, 1},
        TextCase{"on_one_line",
                 "solid a facet normal 0 0 1 outer loop vertex 0 0 0 vertex 1 0 0 vertex 0 1 0 "
                 "endloop endfacet endsolid a",
                 1, 1},
        TextCase{"without_normals",
                 "solid\nfacet outer loop vertex 0 0 0 vertex 1 0 0 vertex 0 1 0 endloop endfacet "
                 "endsolid",
                 1, 1},
        TextCase{"with_words_as_normal",
                 "solid\nfacet normal nan -nan inf outer loop vertex 0 0 0 vertex 1 0 0 vertex 0 1 "
                 "0 endloop endfacet endsolid",
                 1, 1},
        TextCase{"with_numbers_that_nothing_separates",
                 "solid\nfacet outer loop vertex 0-1+2 vertex 1 0 0 vertex 0 1 0 endloop endfacet "
                 "endsolid",
                 1, 1},
        TextCase{"with_a_name_of_keywords",
                 "solid facet endsolid\nfacet outer loop vertex 0 0 0 vertex 1 0 0 vertex 0 1 0 "
                 "endloop endfacet endsolid",
                 1, 1},
        TextCase{"with_two_solids",
                 "solid a\nfacet outer loop vertex 0 0 0 vertex 1 0 0 vertex 0 1 0 endloop "
                 "endfacet\nendsolid a\n\nsolid b\nfacet outer loop vertex 0 0 0 vertex 1 0 0 "
                 "vertex 0 1 0 endloop endfacet\nendsolid b",
                 1, 2},
        TextCase{"with_a_vertex_that_is_nan",
                 "solid\nfacet outer loop vertex nan 0 0 vertex 1 0 0 vertex 0 1 0 endloop "
                 "endfacet endsolid",
                 3, 0},
        TextCase{"with_a_number_past_the_largest",
                 "solid\nfacet outer loop vertex 1e999 0 0 vertex 1 0 0 vertex 0 1 0 endloop "
                 "endfacet endsolid",
                 3, 0},
        TextCase{"with_four_vertices",
                 "solid\nfacet outer loop vertex 0 0 0 vertex 1 0 0 vertex 0 1 0 vertex 0 2 0 "
                 "endloop endfacet endsolid",
                 3, 0},
        TextCase{"with_rubbish_behind", "solid\nendsolid\nrubbish", 3, 0},
        TextCase{"with_a_word_glued_to_the_first", "solidified\nendsolid\n", 3, 0}),
    testing::PrintToStringParamName());

TEST(TriangleFileSTL, after_bad_data_a_text_stays_at_them) {
    const std::string text = std::string("solid\n") + facet + "rubbish\n" + facet + "endsolid\n";
    TriangleFileSTL file(nullptr);
    const auto read = read_all(file, text);
    EXPECT_EQ(read->status, 3);
    EXPECT_EQ(triangle_count(*read), 1U);
    EXPECT_EQ(file.get_block(read->block), 3);
}

TEST_P(TriangleFileSTL_real, has_the_figures_that_are_known_of_it) {
    const std::string name = std::string("stl/") + GetParam().file;
    if (const auto missing = real_inputs::missing(name)) GTEST_SKIP() << *missing;
    MapUnduplicator unduplicator;
    TriangleFileSTL file(&unduplicator);
    const std::string path = real_inputs::path(name);
    ASSERT_EQ(file.read_init(utPtrClaimed, new nmkNMTFileMFC(path.c_str(), apNMKModeRead)), 0);
    giTriBlock block;
    EXPECT_EQ(file.get_block(block), 0);
    EXPECT_EQ(file.get_block(block), 1);
    EXPECT_EQ(model_samples::triangles_of(block).size(), GetParam().triangles);
    EXPECT_EQ(model_samples::nodes_of(block).size(), GetParam().nodes);
}

INSTANTIATE_TEST_SUITE_P(
    models, TriangleFileSTL_real,
    testing::Values(
        RealCase{"text_of_odd_white_space", "microstl_crazy_whitespace_ascii.stl", 1, 3},
        RealCase{"binary_that_says_solid", "numpystl_rear_case_solid.stl", 18808, 9404},
        RealCase{"header_that_is_not_utf8", "numpystl_CubeInvalidUnicode.stl", 12, 8},
        RealCase{"degenerate_triangles", "assimp_Spider_binary.stl", 1368, 722},
        RealCase{"attributes_of_every_facet", "assimp_Wuson_colour.stl", 3732, 2117},
        RealCase{"text_of_two_solids", "assimp_triangle_two_solids.stl", 2, 6},
        RealCase{"open_shell", "trimesh_idler_riser_solid_open.stl", 1572, 803},
        RealCase{"cubes_that_share_an_edge", "trimesh_shared_edge_nonmanifold.stl", 24, 14},
        RealCase{"small_binary_that_says_solid", "openstl_KEY_solid.stl", 12, 8}),
    testing::PrintToStringParamName());

#include <gtest/gtest.h>
#include <nmktoolbox/trifile/nmkGiTriData.h>
#include <nmktoolbox/trifile/nmkTriFileReader.h>
#include <sys/stat.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "comma_locale.h"
#include "flue_samples.h"
#include "model_samples.h"
#include "nmt_samples.h"
#include "real_inputs.h"
#include "scratch_directory.h"
#include "trifile/sample_clipboard.h"
#include "trifile/unit_switch.h"

namespace {

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

// Records ranges and positions, and stops the reading at one of these.
class Progress : public nmkProgressBreak {
  public:
    void set_range(double range) override { ranges.push_back(range); }
    int jump_to(double position) override {
        positions.push_back(position);
        return positions.size() == stop_at ? 1 : 0;
    }

    std::vector<double> ranges;
    std::vector<double> positions;
    std::size_t stop_at = 0;
};

// Supplies the bytes of a test, whatever the name is.
class BytesMaker : public nmkNMTFileMaker {
  public:
    explicit BytesMaker(std::string bytes) : nmkNMTFileMaker("model"), m_bytes(std::move(bytes)) {}

  protected:
    std::unique_ptr<nmkNMTFile> create_basic_nmt_file() override {
        return std::make_unique<model_samples::MemoryFile>(m_bytes);
    }

  private:
    std::string m_bytes;
};

// A reader of bytes under a name.
struct Opened {
    Opened(const char* name, std::string bytes, int merge = 0, int with_normals = 1,
           double scale = 1.0, std::size_t stop_at = 0)
        : maker(std::move(bytes)) {
        progress.stop_at = stop_at;
        reader =
            std::make_unique<nmkTriFileReader>(name, progress, merge, with_normals, scale, maker);
    }

    nmkTriFileReader* operator->() const { return reader.get(); }

    BytesMaker maker;
    Progress progress;
    std::unique_ptr<nmkTriFileReader> reader;
};

// A list that owns its blocks.
struct Blocks {
    Blocks() = default;
    Blocks(const Blocks&) = delete;
    Blocks& operator=(const Blocks&) = delete;
    ~Blocks() {
        for (giTriBlock* block : list) delete block;
    }

    giTriBlockcoSListPtrcoPtrcoSList list;
};

std::string tetrahedron_stl() { return model_samples::binary_stl(model_samples::tetrahedron()); }

std::string two_flue_blocks() {
    return flue_samples::file({flue_samples::with_normals(), flue_samples::with_normals()});
}

// An NMT file of a block without nodes and one with a triangle.
std::string empty_block_first() {
    return nmt_samples::written([](nmkNMTFileWrite& writer) {
        writer.write_header("", true, 2, 3, 1);
        writer.write_block(0, 0, false, -1);
        return nmt_samples::write_block(writer, nmt_samples::Block());
    });
}

struct NameCase {
    const char* name;
    const char* filename;
    std::string bytes;
    bool is_valid;
};

std::ostream& operator<<(std::ostream& out, const NameCase& each) { return out << each.name; }

class nmkTriFileReader_names : public testing::TestWithParam<NameCase> {};

}  // namespace

TEST_P(nmkTriFileReader_names, choose_the_format) {
    Opened opened(GetParam().filename, GetParam().bytes);
    EXPECT_EQ(opened->is_valid(), GetParam().is_valid);
    giTriBlock block;
    EXPECT_EQ(opened->get_block(&block), 1);
    EXPECT_EQ(model_samples::triangles_of(block).empty(), !GetParam().is_valid);
}

INSTANTIATE_TEST_SUITE_P(
    extensions, nmkTriFileReader_names,
    testing::Values(NameCase{"tri", "a.tri", flue_samples::file({{}}), true},
                    NameCase{"nmt", "a.nmt", nmt_samples::file({{}}), true},
                    NameCase{"nmlmt", "a.nmlmt", nmt_samples::file({{}}), true},
                    NameCase{"stl", "a.stl", tetrahedron_stl(), true},
                    NameCase{"ttr", "a.ttr", model_samples::ttr(model_samples::tetrahedron()),
                             true},
                    NameCase{"mixed_case", "/a/b.sTL", tetrahedron_stl(), true},
                    NameCase{"an_extension_alone", ".stl", tetrahedron_stl(), true},
                    NameCase{"an_extension_behind_it", "a.stl.bak", tetrahedron_stl(), false},
                    NameCase{"no_dot", "astl", tetrahedron_stl(), false},
                    NameCase{"a_name_that_is_too_short", "stl", tetrahedron_stl(), false},
                    NameCase{"null", nullptr, tetrahedron_stl(), false},
                    NameCase{"bytes_of_another_format", "a.nmt", tetrahedron_stl(), false}),
    testing::PrintToStringParamName());

TEST(nmkTriFileReader, an_invalid_one_reads_nothing) {
    Progress progress;
    nmkTriFileReader reader("/no such directory/a.stl", progress, 0, 1, 1.0);
    giTriBlock block;
    Blocks blocks;
    EXPECT_FALSE(reader.is_valid());
    EXPECT_EQ(reader.get_block(&block), 1);
    EXPECT_EQ(reader.get_blocks(&blocks.list), 1);
    EXPECT_TRUE(reader.get_box().is_empty());
    EXPECT_EQ(reader.invalid_data_ignored(), 0);
    reader.read_close();
}

TEST(nmkTriFileReader, directories_pipes_devices_and_symlinks_to_themselves_are_invalid) {
    const ScratchDirectory scratch;
    const std::string directory = scratch.path() + "/directory.stl";
    const std::string pipe = scratch.path() + "/pipe.stl";
    const std::string link = scratch.path() + "/link.stl";
    std::filesystem::create_directory(directory);
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const std::string device = scratch.path() + "/device.stl";
    std::filesystem::create_symlink(link, link);
    std::filesystem::create_symlink("/dev/zero", device);
    for (const std::string& name : {directory, pipe, link, device}) {
        Progress progress;
        EXPECT_FALSE(nmkTriFileReader(name.c_str(), progress, 0, 1, 1.0).is_valid()) << name;
    }
}

TEST(nmkTriFileReader, the_range_is_100_also_where_the_file_cannot_be_opened) {
    Progress progress;
    const nmkTriFileReader missing("/no such directory/a.stl", progress, 0, 1, 1.0);
    EXPECT_EQ(progress.ranges, std::vector<double>{100.0});
    Progress silent;
    const nmkTriFileReader unknown("a.txt", silent, 0, 1, 1.0);
    EXPECT_TRUE(silent.ranges.empty());
}

TEST(nmkTriFileReader, an_extension_alone_reads_the_clipboard) {
    const SampleClipboard clipboard(nmt_samples::file({{}}));
    Progress progress;
    nmkTriFileReader reader(".nmt", progress, 0, 1, 1.0);
    ASSERT_TRUE(reader.is_valid());
    giTriBlock block;
    EXPECT_EQ(reader.get_block(&block), 1);
    EXPECT_EQ(model_samples::triangles_of(block).size(), 1U);
}

TEST(nmkTriFileReader, every_extension_alone_reads_the_clipboard_in_its_own_format) {
    const std::pair<const char*, std::string> files[] = {
        {".stl", tetrahedron_stl()},
        {"/models/.tri", two_flue_blocks()},
        {".nmlmt", nmt_samples::file({{}})},
        {".ttr", model_samples::ttr(model_samples::tetrahedron())}};
    for (const auto& [name, bytes] : files) {
        const SampleClipboard clipboard(bytes);
        Progress progress;
        nmkTriFileReader reader(name, progress, 0, 1, 1.0);
        giTriBlock block;
        EXPECT_EQ(reader.get_block(&block), 1) << name;
        EXPECT_FALSE(model_samples::triangles_of(block).empty()) << name;
        EXPECT_EQ(clipboard.asked_format.view(), "nmt") << name;
    }
}

TEST(nmkTriFileReader, without_a_clipboard_an_extension_alone_is_invalid) {
    Progress progress;
    EXPECT_FALSE(nmkTriFileReader(".nmt", progress, 0, 1, 1.0).is_valid());
}

TEST(nmkTriFileReader, get_block_returns_1_for_a_good_file_and_shares_nodes) {
    Opened opened("a.stl", tetrahedron_stl());
    giTriBlock block;
    EXPECT_EQ(opened->get_block(&block), 1);
    EXPECT_EQ(model_samples::nodes_of(block).size(), 4U);
    EXPECT_EQ(model_samples::corners_of(block), model_samples::tetrahedron());
    EXPECT_EQ(opened->get_block(&block), 1);
    EXPECT_EQ(model_samples::triangles_of(block).size(), 4U);
}

TEST(nmkTriFileReader, a_second_reading_returns_1_and_adds_nothing) {
    const auto triangles = model_samples::tetrahedron();
    const std::pair<const char*, std::string> files[] = {
        {"a.stl", tetrahedron_stl()},
        {"a.stl", model_samples::text_stl(triangles)},
        {"a.tri", two_flue_blocks()},
        {"a.nmt", nmt_samples::file({{}, {}})},
        {"a.ttr", model_samples::ttr(triangles)}};
    for (const auto& [name, bytes] : files) {
        Opened opened(name, bytes);
        giTriBlock block;
        EXPECT_EQ(opened->get_block(&block), 1) << name;
        const auto read = model_samples::corners_of(block);
        EXPECT_FALSE(read.empty()) << name;
        EXPECT_EQ(opened->get_block(&block), 1) << name;
        EXPECT_EQ(model_samples::corners_of(block), read) << name;
        Blocks blocks;
        EXPECT_EQ(opened->get_blocks(&blocks.list), 1) << name;
        EXPECT_EQ(blocks.list.size(), 0) << name;
    }
}

TEST(nmkTriFileReader, get_block_appends_all_blocks_of_the_file) {
    Opened opened("a.tri", two_flue_blocks());
    giTriBlock block;
    EXPECT_EQ(opened->get_block(&block), 1);
    EXPECT_EQ(model_samples::triangles_of(block).size(), 2U);
    EXPECT_TRUE(model_samples::has_normals(block));
}

TEST(nmkTriFileReader, normals_that_are_not_wanted_are_removed) {
    Opened opened("a.stl", tetrahedron_stl(), 0, 0);
    giTriBlock block;
    giNormArrcoFeature normals;
    block.add(normals);
    EXPECT_EQ(opened->get_block(&block), 1);
    EXPECT_FALSE(model_samples::has_normals(block));
}

TEST(nmkTriFileReader, normals_that_are_not_wanted_are_removed_also_behind_a_failure) {
    Opened opened("a.stl", model_samples::binary_stl(model_samples::tetrahedron(), 9), 0, 0);
    giTriBlock block;
    giNormArrcoFeature normals;
    block.add(normals);
    EXPECT_EQ(opened->get_block(&block), 3);
    EXPECT_FALSE(model_samples::has_normals(block));
}

TEST(nmkTriFileReader, normals_that_are_not_wanted_are_not_parsed) {
    flue_samples::Block unreadable = flue_samples::with_normals();
    unreadable.nodes[1] = "not a number";
    for (const int with_normals : {0, 1}) {
        Opened opened("a.tri", flue_samples::file({unreadable}), 0, with_normals);
        giTriBlock block;
        EXPECT_EQ(opened->get_block(&block), with_normals != 0 ? 3 : 1);
    }
}

TEST(nmkTriFileReader, the_box_of_the_nodes_follows_what_is_read) {
    const std::pair<const char*, std::string> files[] = {
        {"a.stl", model_samples::binary_stl({{0, 0, 0, 1, 0, 0, 0, 1, 0}})},
        {"a.stl", model_samples::text_stl({{0, 0, 0, 1, 0, 0, 0, 1, 0}})},
        {"a.tri", flue_samples::file({{}})},
        {"a.nmt", nmt_samples::file({{}})},
        {"a.ttr", model_samples::ttr({{0, 0, 0, 1, 0, 0, 0, 1, 0}})}};
    for (const auto& [name, bytes] : files) {
        const double scale = 2.0;
        Opened opened(name, bytes, 0, 1, scale);
        giTriBlock block;
        model_samples::add_node(block, {-1, -1, -1});
        giNodeXYZ nodes;
        ASSERT_EQ(block.get(nodes), 1);
        EXPECT_EQ(nodes->box().max(), giPoint3(-1, -1, -1)) << name;
        EXPECT_EQ(opened->get_block(&block), 1) << name;
        const double size = std::string_view(name) == "a.stl" ? scale : 1.0;
        EXPECT_EQ(nodes->box().max(), giPoint3(size, size, 0)) << name;
    }
}

TEST(nmkTriFileReader, get_block_keeps_what_was_read_before_a_failure) {
    Opened opened("a.stl", model_samples::binary_stl(model_samples::tetrahedron(), 9));
    giTriBlock block;
    EXPECT_EQ(opened->get_block(&block), 3);
    EXPECT_EQ(model_samples::triangles_of(block).size(), 4U);
}

TEST(nmkTriFileReader, stl_is_scaled) {
    Opened opened("a.stl", tetrahedron_stl(), 0, 1, 25.4);
    giTriBlock block;
    model_samples::add_node(block, {1, 1, 1});
    EXPECT_EQ(opened->get_block(&block), 1);
    EXPECT_EQ(model_samples::nodes_of(block)[0], giPoint3(1, 1, 1));
    EXPECT_EQ(model_samples::nodes_of(block)[2], giPoint3(0, 25.4, 0));
    EXPECT_EQ(opened->get_box().max(), giPoint3(25.4, 25.4, 25.4));
}

TEST(nmkTriFileReader, the_other_formats_are_not_scaled) {
    const std::pair<const char*, std::string> files[] = {
        {"a.tri", flue_samples::file({{}})},
        {"a.nmt", nmt_samples::file({{}})},
        {"a.ttr", model_samples::ttr({{0, 0, 0, 1, 0, 0, 0, 1, 0}})}};
    for (const auto& [name, bytes] : files) {
        Opened opened(name, bytes, 0, 1, 25.4);
        giTriBlock block;
        EXPECT_EQ(opened->get_block(&block), 1) << name;
        EXPECT_EQ(model_samples::nodes_of(block)[1], giPoint3(1, 0, 0)) << name;
        EXPECT_EQ(opened->get_box().max(), giPoint3(1, 1, 0)) << name;
    }
}

TEST(nmkTriFileReader, nodes_read_before_a_failure_are_not_scaled) {
    Opened opened("a.stl", model_samples::binary_stl(model_samples::tetrahedron(), 9), 0, 1, 2.0);
    giTriBlock block;
    EXPECT_EQ(opened->get_block(&block), 3);
    EXPECT_EQ(model_samples::nodes_of(block)[1], giPoint3(0, 1, 0));
}

TEST(nmkTriFileReader, each_coordinate_is_scaled_by_itself) {
    Opened opened("a.stl", model_samples::binary_stl({{infinity, 2, 3, -0.0, 1, 1, 0, 0, 0}}), 0, 1,
                  2.0);
    giTriBlock block;
    EXPECT_EQ(opened->get_block(&block), 1);
    EXPECT_EQ(model_samples::nodes_of(block)[0], giPoint3(infinity, 4, 6));
    EXPECT_TRUE(std::signbit(model_samples::nodes_of(block)[1].x));
}

TEST(nmkTriFileReader, a_negative_scale_gives_a_sorted_box) {
    Opened opened("a.stl", model_samples::binary_stl({{1, 2, 3, 4, 5, 6, 7, 8, 9}}), 0, 1, -2.0);
    EXPECT_TRUE(opened->get_box().is_empty());
    giTriBlock block;
    EXPECT_EQ(opened->get_block(&block), 1);
    EXPECT_EQ(opened->get_box().min(), giPoint3(-14, -16, -18));
    EXPECT_EQ(opened->get_box().max(), giPoint3(-2, -4, -6));
}

TEST(nmkTriFileReader, get_blocks_lists_each_block) {
    Opened opened("a.tri", two_flue_blocks());
    Blocks blocks;
    EXPECT_EQ(opened->get_blocks(&blocks.list), 1);
    ASSERT_EQ(blocks.list.size(), 2);
    EXPECT_EQ(model_samples::triangles_of(*blocks.list.read_last()).size(), 1U);
    giNodeXYZ nodes;
    giTriArrcoFeature triangles;
    blocks.list.read_first()->get(triangles);
    EXPECT_EQ(triangles->page_size(), 1);
}

TEST(nmkTriFileReader, with_merge_get_blocks_lists_one) {
    Opened opened("a.tri", two_flue_blocks(), 1);
    Blocks blocks;
    EXPECT_EQ(opened->get_blocks(&blocks.list), 1);
    ASSERT_EQ(blocks.list.size(), 1);
    EXPECT_EQ(model_samples::triangles_of(*blocks.list.read_first()).size(), 2U);
}

TEST(nmkTriFileReader, with_merge_a_small_first_block_does_not_make_the_pages_small) {
    for (const int merge : {0, 1}) {
        Blocks blocks;
        Opened opened("a.tri", flue_samples::file({{}, flue_samples::large(3, 1000)}), merge);
        EXPECT_EQ(opened->get_blocks(&blocks.list), 1);
        giTriArrcoFeature triangles;
        ASSERT_NE(blocks.list.read_first()->get(triangles), 0);
        EXPECT_EQ(triangles->page_size(), merge != 0 ? 256 : 1);
    }
}

TEST(nmkTriFileReader, a_block_without_nodes_is_not_listed) {
    Opened opened("a.nmt", empty_block_first());
    Blocks blocks;
    EXPECT_EQ(opened->get_blocks(&blocks.list), 1);
    EXPECT_EQ(blocks.list.size(), 1);
}

TEST(nmkTriFileReader, with_merge_an_empty_first_block_leaves_the_list_empty) {
    Opened opened("a.nmt", empty_block_first(), 1);
    Blocks blocks;
    EXPECT_EQ(opened->get_blocks(&blocks.list), 1);
    EXPECT_EQ(blocks.list.size(), 0);
}

TEST(nmkTriFileReader, get_blocks_scales_each_node_once) {
    Opened opened("a.stl", tetrahedron_stl(), 1, 1, 2.0);
    Blocks blocks;
    EXPECT_EQ(opened->get_blocks(&blocks.list), 1);
    ASSERT_EQ(blocks.list.size(), 1);
    EXPECT_EQ(model_samples::nodes_of(*blocks.list.read_first())[1], giPoint3(0, 2, 0));
}

TEST(nmkTriFileReader, without_normals_blocks_that_were_in_the_list_lose_theirs) {
    Blocks blocks;
    auto before = std::make_unique<giTriBlock>();
    giNormArrcoFeature normals;
    before->add(normals);
    blocks.list.insert_last(before.release());
    Opened opened("a.tri", two_flue_blocks(), 0, 0);
    EXPECT_EQ(opened->get_blocks(&blocks.list), 1);
    EXPECT_EQ(blocks.list.size(), 3);
    for (const giTriBlock* block : blocks.list) EXPECT_FALSE(model_samples::has_normals(*block));
}

TEST(nmkTriFileReader, a_failure_empties_the_list_also_of_blocks_that_were_there) {
    for (const int merge : {0, 1}) {
        Blocks blocks;
        blocks.list.insert_last(std::make_unique<giTriBlock>().release());
        const std::string bytes = two_flue_blocks();
        Opened opened("a.tri", bytes.substr(0, bytes.size() - 6) + "9 9 9\n", merge);
        EXPECT_EQ(opened->get_blocks(&blocks.list), 3);
        EXPECT_EQ(blocks.list.size(), 0);
    }
}

TEST(nmkTriFileReader, a_break_in_get_blocks_leaves_the_list_empty) {
    Opened opened("a.stl", model_samples::binary_stl(model_samples::grid(50)), 0, 1, 1.0, 3);
    Blocks blocks;
    EXPECT_EQ(opened->get_blocks(&blocks.list), 2);
    EXPECT_EQ(blocks.list.size(), 0);
    EXPECT_EQ(opened.progress.positions, (std::vector<double>{0, 20, 40}));
}

TEST(nmkTriFileReader, a_break_behind_a_listed_block_leaves_the_list_empty) {
    for (const int merge : {0, 1}) {
        Opened opened("a.tri", two_flue_blocks(), merge, 1, 1.0, 2);
        Blocks blocks;
        EXPECT_EQ(opened->get_blocks(&blocks.list), 2);
        EXPECT_EQ(blocks.list.size(), 0);
    }
}

TEST(nmkTriFileReader, nan_flags_reach_the_format_at_the_next_block) {
    const std::string bytes =
        model_samples::binary_stl({{not_a_number, 0, 0, 0, 0, 0, 0, 0, 0}, {}});
    giTriBlock block;
    Opened ignoring("a.stl", bytes);
    ignoring->ignore_nan_triangles(1);
    EXPECT_EQ(ignoring->get_block(&block), 1);
    EXPECT_EQ(ignoring->invalid_data_ignored(), 1);
    EXPECT_EQ(model_samples::triangles_of(block).size(), 1U);
    Opened refusing("a.stl", bytes);
    refusing->nan_cause_error(1);
    EXPECT_EQ(refusing->get_block(&block), 3);
    Opened delivering("a.stl", bytes);
    giTriBlock all;
    EXPECT_EQ(delivering->get_block(&all), 1);
    EXPECT_EQ(model_samples::triangles_of(all).size(), 2U);
}

TEST(nmkTriFileReader, once_closed_is_at_the_end_of_the_data) {
    for (const auto& [name, bytes] :
         {std::pair("a.stl", tetrahedron_stl()), std::pair("a.tri", two_flue_blocks()),
          std::pair("a.nmt", nmt_samples::file({{}})),
          std::pair("a.ttr", model_samples::ttr(model_samples::tetrahedron()))}) {
        Opened opened(name, bytes);
        opened->read_close();
        giTriBlock block;
        EXPECT_EQ(opened->get_block(&block), 1) << name;
        EXPECT_TRUE(model_samples::triangles_of(block).empty()) << name;
        opened->read_close();
    }
}

TEST(nmkTriFileReader, numbers_are_read_alike_in_every_locale) {
    const CommaLocale comma;
    std::string bytes = flue_samples::file({{}});
    bytes.replace(bytes.find("1 0 0"), 5, "1.5 0");
    bytes.insert(bytes.find("1.5 0") + 5, " 0");
    Opened opened("a.tri", bytes);
    giTriBlock block;
    EXPECT_EQ(opened->get_block(&block), 1);
    EXPECT_EQ(model_samples::nodes_of(block)[1], giPoint3(1.5, 0, 0));
}

TEST(nmkTriFileReader, numbers_have_a_decimal_point_as_long_as_it_exists) {
    const CommaLocale comma;
    if (!comma.holds_for_the_c_library()) GTEST_SKIP() << "no locale with a decimal comma";
    {
        const Opened invalid("a.txt", "");
        EXPECT_FALSE(comma.holds_for_the_c_library());
    }
    EXPECT_TRUE(comma.holds_for_the_c_library());
}

TEST(nmkTriFileReader, reads_a_real_model_from_the_disk) {
    const std::string name = "stl/numpystl_rear_case_solid.stl";
    if (const auto missing = real_inputs::missing(name)) GTEST_SKIP() << *missing;
    Progress progress;
    nmkTriFileReader reader(real_inputs::path(name).c_str(), progress, 0, 1, 1.0);
    giTriBlock block;
    EXPECT_EQ(reader.get_block(&block), 1);
    EXPECT_EQ(model_samples::triangles_of(block).size(), 18808U);
    EXPECT_EQ(model_samples::nodes_of(block).size(), 9404U);
}

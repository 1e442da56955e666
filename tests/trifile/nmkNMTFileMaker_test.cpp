#include <gtest/gtest.h>
#include <nmknmt/nmkNMTFileMFC.h>
#include <nmktoolbox/trifile/nmkNMTFileMaker.h>

#include <memory>
#include <ostream>
#include <string>

#include "scratch_directory.h"
#include "trifile/sample_clipboard.h"

namespace {

// Records what it is asked for.
class RecordingMaker : public nmkNMTFileMaker {
  public:
    using nmkNMTFileMaker::filename;
    using nmkNMTFileMaker::nmkNMTFileMaker;

    int basic_files = 0;

  protected:
    std::unique_ptr<nmkNMTFile> create_basic_nmt_file() override {
        ++basic_files;
        return nullptr;
    }
};

std::string line_of(nmkNMTFile& file) {
    char line[100];
    return file.gets(line, sizeof line) != nullptr ? line : "";
}

struct NameCase {
    const char* name;
    const char* filename;
};

std::ostream& operator<<(std::ostream& out, const NameCase& each) { return out << each.name; }

class nmkNMTFileMaker_clipboard : public testing::TestWithParam<NameCase> {};

}  // namespace

TEST(nmkNMTFileMaker, opens_the_named_file) {
    const ScratchDirectory scratch;
    const std::string name = scratch.file("model.nmt", "bytes");
    nmkNMTFileMaker maker(name.c_str());
    const auto file = maker.create_nmt_file();
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(line_of(*file), "bytes");
}

TEST(nmkNMTFileMaker, a_missing_file_gives_an_object_that_is_not_open) {
    nmkNMTFileMaker maker("/no such directory/model.nmt");
    const auto file = maker.create_nmt_file();
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(line_of(*file), "");
}

TEST(nmkNMTFileMaker, a_derived_maker_supplies_the_file) {
    RecordingMaker maker("model.nmt");
    EXPECT_EQ(maker.create_nmt_file(), nullptr);
    EXPECT_EQ(maker.basic_files, 1);
    EXPECT_STREQ(maker.filename(), "model.nmt");
}

TEST_P(nmkNMTFileMaker_clipboard, is_where_the_data_come_from) {
    SampleClipboard clipboard("clipped");
    RecordingMaker maker(GetParam().filename);
    const auto file = maker.create_nmt_file();
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(line_of(*file), "clipped");
    EXPECT_EQ(clipboard.asked_format.view(), "nmt");
    EXPECT_EQ(maker.basic_files, 0);
    EXPECT_EQ(maker.filename(), nullptr);
}

TEST_P(nmkNMTFileMaker_clipboard, that_is_missing_gives_no_file) {
    RecordingMaker maker(GetParam().filename);
    EXPECT_EQ(maker.create_nmt_file(), nullptr);
    EXPECT_EQ(maker.basic_files, 0);
}

INSTANTIATE_TEST_SUITE_P(names, nmkNMTFileMaker_clipboard,
                         testing::Values(NameCase{"a_null_name", nullptr},
                                         NameCase{"an_extension_alone", ".nmt"},
                                         NameCase{"a_directory_and_an_extension", "/models/.nmt"},
                                         NameCase{"another_extension_alone", ".stl"}),
                         testing::PrintToStringParamName());

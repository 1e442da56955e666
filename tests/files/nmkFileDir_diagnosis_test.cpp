// Which processes hold a file that cannot be deleted.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <stdlib.h>

#include <iomanip>
#include <iostream>
#include <locale>
#include <regex>
#include <sstream>
#include <string>

#include "files/deletion_diagnosis.h"
#include "holding_child.h"
#include "scratch_directory.h"
#include "tree_samples.h"

namespace {

// The switch of the environment, for the length of a test.
class DiagnosisSwitch {
  public:
    DiagnosisSwitch() { ::setenv("NMK_DIAGNOSE_UNLINK", "1", 1); }
    ~DiagnosisSwitch() { ::unsetenv("NMK_DIAGNOSE_UNLINK"); }
};

// What is written to the standard output meanwhile.
std::string written_by_diagnosis(const nmkFileDir& name) {
    std::ostringstream text;
    std::streambuf* const before = std::cout.rdbuf(text.rdbuf());
    nmk_files::write_deletion_diagnosis(std::cout, name.get().view());
    std::cout.rdbuf(before);
    return text.str();
}

}  // namespace

TEST(nmkFileDir_diagnosis, without_the_switch_has_no_effect_at_all) {
    const ScratchDirectory scratch;
    const std::string file = scratch.file("f", "x");
    const HoldingChild holder([&] { ::open(file.c_str(), O_RDONLY); });
    ::unsetenv("NMK_DIAGNOSE_UNLINK");
    EXPECT_EQ(written_by_diagnosis(named(file)), "");
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST(nmkFileDir_diagnosis, reports_the_time_the_name_and_the_process_that_holds_the_file) {
    const ScratchDirectory scratch;
    const std::string file = scratch.file("f.tri", "x");
    const HoldingChild holder([&] { ::open(file.c_str(), O_RDONLY); });
    const DiagnosisSwitch on;
    const std::string text = written_by_diagnosis(named(file));
    const std::regex expected(
        "\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d failed to delete: " + file + "\n" +
        "files_tests +pid: " + std::to_string(holder.process()) + " +type: File +fd \\d+: " + file +
        "\n");
    EXPECT_TRUE(std::regex_match(text, expected)) << text;
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST(nmkFileDir_diagnosis, of_a_file_without_holders_is_one_line) {
    const ScratchDirectory scratch;
    const std::string file = scratch.file("f", "x");
    const DiagnosisSwitch on;
    const std::string text = written_by_diagnosis(named(file));
    EXPECT_TRUE(text.ends_with(" failed to delete: " + file + "\n")) << text;
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1);
    EXPECT_EQ(named(file).delete_file(), 1);
}

TEST(nmkFileDir_diagnosis, the_time_is_the_local_one) {
    const DiagnosisSwitch on;
    const std::time_t before = std::time(nullptr);
    const std::string text = written_by_diagnosis(named("missing"));
    const std::time_t after = std::time(nullptr);
    std::tm read{};
    std::istringstream(text) >> std::get_time(&read, "%Y-%m-%d %H:%M:%S");
    read.tm_isdst = -1;
    const std::time_t seconds = std::mktime(&read);
    EXPECT_GE(seconds, before);
    EXPECT_LE(seconds, after);
}

TEST(nmkFileDir_diagnosis, is_flushed_to_the_output_at_once) {
    struct Flushed : std::stringbuf {
        int sync() override {
            when_flushed = str();
            return 0;
        }
        std::string when_flushed;
    };
    const DiagnosisSwitch on;
    Flushed buffer;
    std::streambuf* const before = std::cout.rdbuf(&buffer);
    nmk_files::write_deletion_diagnosis(std::cout, "missing");
    std::cout.rdbuf(before);
    EXPECT_TRUE(buffer.when_flushed.ends_with(" failed to delete: missing\n"));
}

TEST(nmkFileDir_diagnosis, puts_the_fill_and_the_flags_of_the_output_back) {
    const DiagnosisSwitch on;
    std::cout << std::left << std::hex << std::setfill('*');
    const std::string text = written_by_diagnosis(named("missing"));
    EXPECT_EQ(std::cout.fill(), '*');
    EXPECT_NE(std::cout.flags() & std::ios_base::hex, std::ios_base::fmtflags());
    EXPECT_NE(std::cout.flags() & std::ios_base::left, std::ios_base::fmtflags());
    std::cout << std::right << std::dec << std::setfill(' ');
    EXPECT_TRUE(std::regex_match(text, std::regex("\\d{4}-\\d\\d-\\d\\d \\d\\d:.*\n"))) << text;
}

TEST(nmkFileDir_diagnosis, writes_its_numbers_the_same_in_every_locale) {
    struct Grouped : std::numpunct<char> {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\1"; }
    };
    const ScratchDirectory scratch;
    const std::string file = scratch.file("f.tri", "x");
    const HoldingChild holder([&] { ::open(file.c_str(), O_RDONLY); });
    const DiagnosisSwitch on;
    const std::locale before = std::cout.imbue(std::locale(std::cout.getloc(), new Grouped));
    const std::string text = written_by_diagnosis(named(file));
    EXPECT_TRUE(std::has_facet<Grouped>(std::cout.imbue(before))) << "the locale was not put back";
    EXPECT_TRUE(std::regex_search(text, std::regex("^\\d{4}-\\d\\d-\\d\\d "))) << text;
    EXPECT_NE(text.find("pid: " + std::to_string(holder.process()) + " "), text.npos) << text;
}

TEST(nmkFileDir_diagnosis, is_called_by_no_operation_that_deletes) {
    const ScratchDirectory scratch;
    const std::string file = scratch.file("f", "x");
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    const DiagnosisSwitch on;
    std::ostringstream text;
    std::streambuf* const before = std::cout.rdbuf(text.rdbuf());
    EXPECT_EQ(named(file).delete_file(), 0);
    EXPECT_EQ(named(file).delete_file(2, 0), 0);
    EXPECT_EQ(named(scratch.path()).delete_tree(), 0);
    EXPECT_EQ(named(scratch.path()).delete_tree(2, 0), 0);
    std::cout.rdbuf(before);
    EXPECT_EQ(text.str(), "");
}

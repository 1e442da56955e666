// read_job: the format of a file is recognised; files that cannot be read are refused.

#include "formats/job_files/read_job.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <ostream>

#include "app/formats/job/job_fixtures.h"
#include "files/read_whole_file.h"
#include "scratch_directory.h"

namespace nmk_job_files {
namespace {

struct FormatCase {
    const char* name;
    const char* file_name;
    const char* text;
    nmk_job::JobFormat format;
    std::size_t items;
};

std::ostream& operator<<(std::ostream& out, const FormatCase& format) { return out << format.name; }

class job_format : public testing::TestWithParam<FormatCase> {};

TEST_P(job_format, is_recognised_by_content_and_name) {
    const nmk_job::MachiningJob job =
        nmk_job::job_of(read_job_text(GetParam().file_name, GetParam().text, std::nullopt));
    EXPECT_EQ(job.format, GetParam().format);
    EXPECT_EQ(job.items.size(), GetParam().items);
    EXPECT_EQ(job.text, GetParam().text);
    EXPECT_EQ(job.file_name, GetParam().file_name);
}

INSTANTIATE_TEST_SUITE_P(
    files, job_format,
    testing::Values(
        FormatCase{"a_drill_file_by_content", "a", "M48\nT1C1\n%\nT1\nX1Y1\n",
                   nmk_job::JobFormat::excellon, 1},
        FormatCase{"a_drill_file_named_as_text", "a.txt", "%\nM48\nT1C1\n%\nT1\nX1\n",
                   nmk_job::JobFormat::excellon, 1},
        FormatCase{"a_drill_file_after_a_byte_order_mark", "a",
                   "\xef\xbb\xbfM48\nT1C1\n%\nT1\nX1Y1\n", nmk_job::JobFormat::excellon, 1},
        FormatCase{"an_instance_after_a_byte_order_mark", "a",
                   "\xef\xbb\xbfNAME: a\nDIMENSION: 1\nNODE_COORD_SECTION\n1 2 3\n",
                   nmk_job::JobFormat::tsplib, 1},
        FormatCase{"a_table_after_a_byte_order_mark", "a",
                   "\xef\xbb\xbf"
                   "1,2\n",
                   nmk_job::JobFormat::csv, 1},
        FormatCase{"a_table_by_content", "a", "1,2\n", nmk_job::JobFormat::csv, 1},
        FormatCase{"a_table_named_as_text", "a.txt", "1,2\n3,4\n", nmk_job::JobFormat::csv, 2},
        FormatCase{"a_table_with_a_header", "a", "X;Y\n3;4\n", nmk_job::JobFormat::csv, 1},
        FormatCase{"a_table_by_name", "a.CSV", "left,top\n3,4\n", nmk_job::JobFormat::csv, 1},
        FormatCase{"an_instance_by_content", "a",
                   "NAME : a\nDIMENSION : 1\nNODE_COORD_SECTION\n1 0 0\n",
                   nmk_job::JobFormat::tsplib, 1},
        FormatCase{"an_empty_drill_file", "a.drl", "", nmk_job::JobFormat::excellon, 0},
        FormatCase{"an_empty_table", "a.csv", "", nmk_job::JobFormat::csv, 0}),
    nmk_job::CaseName());

TEST(read_job_text, refuses_an_unknown_format) {
    EXPECT_EQ(nmk_job::error_of(read_job_text("a", "hello\n", std::nullopt)),
              "a: unknown format; expected a drill file, a table x,y or a TSPLIB instance");
    EXPECT_EQ(nmk_job::error_of(read_job_text("a", "", std::nullopt)),
              "a: unknown format; expected a drill file, a table x,y or a TSPLIB instance");
}

TEST(read_job_text, refuses_binary_files) {
    EXPECT_EQ(nmk_job::error_of(read_job_text("a.drl", std::string("M48\n\0\n", 6), std::nullopt)),
              "a.drl:2: a zero byte; expected a text file");
}

TEST(read_job_text, names_the_line_of_a_zero_byte_with_any_line_ending) {
    for (const std::string end : {"\n", "\r\n", "\r"}) {
        const std::string text = "1,2" + end + end + "3" + std::string(1, '\0') + end + "5,6" + end;
        EXPECT_EQ(nmk_job::error_of(read_job_text("a.csv", text, std::nullopt)),
                  "a.csv:3: a zero byte; expected a text file");
    }
    EXPECT_EQ(nmk_job::error_of(read_job_text("a.csv", std::string(1, '\0'), std::nullopt)),
              "a.csv:1: a zero byte; expected a text file");
}

TEST(read_job_text, refuses_an_endless_line) {
    EXPECT_EQ(
        nmk_job::error_of(read_job_text(
            "a.csv", "1,2\n" + std::string(nmk_files::max_line_length + 1, '1'), std::nullopt)),
        "a.csv:2: a line longer than 65536 bytes; expected lines of text");
    EXPECT_EQ(nmk_job::error_of(read_job_text(
                  "a.drl", ";" + std::string(nmk_files::max_line_length - 1, '1') + "\r\n",
                  std::nullopt)),
              "");
}

TEST(read_job_text, counts_lines_the_same_with_any_line_ending) {
    const std::string line(nmk_files::max_line_length + 1, '1');
    for (const std::string end : {"\n", "\r\n", "\r"}) {
        EXPECT_EQ(nmk_files::first_too_long_line("1" + end + end + "2" + end + line), 4U);
    }
}

TEST(read_job_file, refuses_a_missing_file_and_a_directory) {
    const ScratchDirectory folder;
    EXPECT_EQ(nmk_job::error_of(read_job_file("/no/such/file.drl", std::nullopt)),
              "/no/such/file.drl: cannot be opened: No such file or directory");
    EXPECT_EQ(nmk_job::error_of(read_job_file(folder.path(), std::nullopt)),
              folder.path() + ": is a directory; expected a file");
}

TEST(read_job_file, counts_a_line_across_two_reads_once) {
    // The first read ends within a line, after one that ends with a carriage return.
    std::string text;
    for (int i = 0; i < 131071; ++i) text += "1\r";
    text += "11\n" + std::string(nmk_files::max_line_length + 1, '1');
    const ScratchDirectory folder;
    EXPECT_EQ(
        nmk_job::error_of(read_job_file(folder.file("a.csv", text), std::nullopt)),
        folder.path() + "/a.csv:131073: a line longer than 65536 bytes; expected lines of text");
    EXPECT_EQ(nmk_files::first_too_long_line(text), 131073U);
}

TEST(read_job_file, refuses_a_huge_file_before_reading_it) {
    const ScratchDirectory folder;
    const std::string name = folder.file("huge.drl", "M48\n");
    std::filesystem::resize_file(name, std::uintmax_t{1} << 40U);  // sparse
    EXPECT_EQ(nmk_job::error_of(read_job_file(name, std::nullopt)),
              name + ": larger than 256 MiB; expected a smaller file");
}

TEST(read_job_file, refuses_one_line_of_a_hundred_megabytes_in_little_memory) {
    const ScratchDirectory folder;
    const std::string name = folder.file("line.csv", "1,2\n");
    std::filesystem::resize_file(name, 100U << 20U);  // sparse: one line of zero bytes
    struct rusage before {};
    getrusage(RUSAGE_SELF, &before);
    EXPECT_EQ(nmk_job::error_of(read_job_file(name, std::nullopt)),
              name + ":2: a line longer than 65536 bytes; expected lines of text");
    struct rusage after {};
    getrusage(RUSAGE_SELF, &after);
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 20 * 1024);  // KiB
}

TEST(read_job_file, reports_a_file_that_cannot_be_read) {
    EXPECT_EQ(nmk_job::error_of(read_job_file("/proc/self/mem", std::nullopt)),
              "/proc/self/mem: cannot be read: Input/output error");
}

TEST(read_job_file, refuses_an_endless_device) {
    EXPECT_EQ(nmk_job::error_of(read_job_file("/dev/zero", std::nullopt)),
              "/dev/zero:1: a line longer than 65536 bytes; expected lines of text");
}

TEST(samples, have_their_numbers_of_items) {
    const std::string directory = NMK_SOURCE_DIR "/samples/";
    const nmk_job::MachiningJob plate =
        nmk_job::job_of(read_job_file(directory + "cover_plate.drl", std::nullopt));
    EXPECT_EQ(plate.tools.size(), 4U);
    EXPECT_EQ(plate.items.size(), 403U);
    EXPECT_EQ(nmk_job::job_of(read_job_file(directory + "holes.csv", std::nullopt)).items.size(),
              13U);
    EXPECT_EQ(nmk_job::job_of(read_job_file(directory + "slots.csv", std::nullopt)).items.size(),
              9U);
}

TEST(samples, of_the_parts_are_the_output_of_their_scripts) {
    if (std::system("python3 -c pass > /dev/null 2>&1") != 0) {
        GTEST_SKIP() << "python3 is not installed";
    }
    const std::string samples = NMK_SOURCE_DIR "/samples/";
    for (const std::string part : {"cover_plate", "base_plate"}) {
        const ScratchDirectory folder;
        const std::string script = folder.path() + "/make_" + part + ".py";
        std::filesystem::copy_file(samples + "make_" + part + ".py", script);
        ASSERT_EQ(std::system(("python3 '" + script + "'").c_str()), 0);
        EXPECT_EQ(nmk_job::bytes_of_file(folder.path() + "/" + part + ".drl"),
                  nmk_job::bytes_of_file(samples + part + ".drl"));
    }
}

}  // namespace
}  // namespace nmk_job_files

// nmk electrode: writes, lists, checks and unpacks archives of electrodes.
#include "commands/electrode/electrode_command.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <ostream>
#include <utility>

#include "app/commands/electrode/electrode_runs.h"
#include "app/shell/command_runner.h"
#include "disk_fault.h"
#include "scratch_directory.h"
#include "zip_samples.h"
#include "zip_tools.h"

namespace nmk_electrode {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;
using nmk_shell::expect_refused;
using nmk_shell::Printed;
using nmk_shell::text_of;
using nmk_electrode_files = ElectrodeFiles;

const std::string sample = NMK_SOURCE_DIR "/samples/electrodes/electrodes.zip";

}  // namespace

TEST_F(nmk_electrode_files, are_packed_as_unzip_and_python_read_them) {
    Words words = {"create", zip};
    for (const std::string& word : entry("E1")) words.push_back(word);
    for (const std::string& word :
         {std::string("--data"), path("data"), std::string("--additional"), path("a.ngk")}) {
        words.push_back(word);
    }
    const Printed printed = with_entries(words, {"E2"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(printed.out, "Wrote " + zip + ".\n");
    EXPECT_EQ(zip_tools::unzip_test(zip), "exit 0\n");
    EXPECT_EQ(zip_tools::python(zip,
                                "print(*z.namelist()); print(z.testzip(), z.read(\"E1/html/"
                                "sub/2\"), z.read(\"contents.txt\"))"),
              "version.txt E1/E1.ngk E1/E1.xml E1/html/1 E1/html/sub/2 E1/additional/a.ngk "
              "E2/E2.ngk E2/E2.xml contents.txt\nNone b'two' b'E1\\nE2\\n'\nexit 0\n");
}

TEST_F(nmk_electrode_files, come_back_from_the_archive) {
    Words words = {"create", zip, "--data-name", "report"};
    for (const std::string& word : entry("E1")) words.push_back(word);
    words.insert(words.end(), {"--data", path("data"), "--additional", path("a.ngk")});
    ASSERT_EQ(electrode(words).code, 0);
    const Printed printed =
        electrode({"extract", zip, "E1", "-o", path("o/p"), "--data-name", "report"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(printed.out, "Wrote E1 to " + path("o/p") + ".\n");
    for (const auto& [data_name, files] : {std::pair("report", 2U), std::pair("html", 0U)}) {
        const Words list = {"list", zip, "--json", "--data-name", data_name};
        EXPECT_EQ(Json::parse(electrode(list).out)["electrodes"][0]["data"].size(), files);
    }
    EXPECT_EQ(text_of(path("o/p/E1.ngk")), "geometry");
    EXPECT_EQ(text_of(path("o/p/E1.xml")), "<m/>");
    EXPECT_EQ(text_of(path("o/p/report/sub/2")), "two");
    EXPECT_EQ(text_of(path("o/p/additional/a.ngk")), "additional");
}

TEST_F(nmk_electrode_files, are_added_behind_those_of_the_archive) {
    ASSERT_EQ(with_entries({"create", zip}, {"E1"}).code, 0);
    const std::string date = "print(z.getinfo(\"E1/E1.ngk\").date_time)";
    const std::string before = zip_tools::python(zip, date);
    const Printed printed = with_entries({"add", zip}, {"E0", "E3"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(zip_tools::python(zip, "print(z.read(\"contents.txt\"), z.testzip())"),
              "b'E1\\nE0\\nE3\\n' None\nexit 0\n");
    EXPECT_EQ(zip_tools::python(zip, date), before);
    EXPECT_EQ(electrode({"verify", zip}).code, 0);
    expect_refused(with_entries({"add", zip}, {"E3"}), "has an electrode \"E3\"");
}

TEST_F(nmk_electrode_files, that_cannot_be_written_leave_the_archive_as_it_was) {
    ASSERT_EQ(with_entries({"create", zip}, {"E1"}).code, 0);
    const std::string before = text_of(zip);
    const std::size_t files = scratch.file_count();
    {
        const Fault full("fsync", ENOSPC);
        expect_refused(with_entries({"add", zip}, {"E2"}), "no space left on device");
        expect_refused(with_entries({"create", zip}, {"E2"}), "not written");
    }
    EXPECT_EQ(text_of(zip), before);
    EXPECT_EQ(scratch.file_count(), files);
}

TEST_F(nmk_electrode_files, leave_no_half_archive_when_the_work_is_stopped) {
    ASSERT_EQ(with_entries({"create", zip}, {"E1"}).code, 0);
    const std::string before = text_of(zip);
    const std::size_t files = scratch.file_count();
    for (const char* action : {"create", "add"}) {
        Words words = {action, zip};
        for (const std::string& word : entry("E2")) words.push_back(word);
        const Printed printed = stopped(words);
        EXPECT_EQ(printed.code, 1) << action;
        EXPECT_EQ(printed.err, "nmk electrode: stopped; " + zip + " was not written\n");
        EXPECT_EQ(text_of(zip), before);
        EXPECT_EQ(scratch.file_count(), files);
    }
    EXPECT_EQ(stopped({"verify", zip}).err, "nmk electrode: stopped; not all data was read\n");
    EXPECT_EQ(stopped({"extract", zip, "E1", "-o", path("o")}).code, 1);
    EXPECT_FALSE(fs::exists(path("o/E1.ngk")));
}

TEST_F(nmk_electrode_files, of_a_damaged_archive_are_not_added_to) {
    ASSERT_EQ(with_entries({"create", zip}, {"E1"}).code, 0);
    std::string bytes = text_of(zip);
    bytes[bytes.find("E1/E1.ngk") + 12] ^= 0x10;  // in its data
    const std::string damaged = scratch.file("damaged.zip", bytes);
    expect_refused(with_entries({"add", damaged}, {"E2"}),
                   "not written: an entry is damaged; nmk electrode verify names it");
    EXPECT_EQ(text_of(damaged), bytes);
    const Printed printed = electrode({"verify", damaged});
    EXPECT_EQ(printed.code, 1);
    EXPECT_NE(printed.out.find("status 0 (ok): entry \"E1/E1.ngk\": the data is damaged"),
              std::string::npos)
        << printed.out;
    expect_refused(electrode({"extract", damaged, "E1", "-o", path("o")}),
                   "electrode \"E1\": E1.ngk: an entry is damaged");
    EXPECT_FALSE(fs::exists(path("o/E1.ngk")));
}

TEST(nmk_electrode_list, prints_a_row_for_each_electrode) {
    EXPECT_EQ(electrode({"list", sample}).out,
              "electrode  geometry  metadata  data files  bytes  additional  bytes\n"
              "E101            206       161           2    295           1    204\n"
              "E102            206       157           0      0           0      0\n"
              "2 electrodes, 9 entries, 1243 bytes, version 1.02\n");
    EXPECT_EQ(electrode({"list", sample, "--quiet"}).out, "");
    const Json json = Json::parse(electrode({"list", sample, "--json"}).out);
    EXPECT_EQ(json["electrodes"][0]["data"][1]["name"], "index.html");
    EXPECT_EQ(json["electrodes"][1]["name"], "E102");
}

TEST(nmk_electrode_list, takes_the_first_of_names_that_stand_twice_and_sorts_the_files) {
    const ScratchDirectory scratch;
    const std::string zip = scratch.file("z", zip_samples::zip_of({{"version.txt", "1"},
                                                                   {"contents.txt", "a/b\na/b\n"},
                                                                   {"a/b/a/b.ngk", "four"},
                                                                   {"a/b/a/b.ngk", "x"},
                                                                   {"a/b/a/b.xml", "three"},
                                                                   {"a/b/a/b.xml", "x"},
                                                                   {"a/b/html/z", ""},
                                                                   {"a/b/html/a", ""},
                                                                   {"a/b/additional/z", ""},
                                                                   {"a/b/additional/a", ""}}));
    Json json = Json::parse(electrode({"list", zip, "--json"}).out);
    Json& first = json["electrodes"][0];
    EXPECT_EQ(first["geometry"], 4);
    EXPECT_EQ(first["metadata"], 5);
    EXPECT_EQ(first["data"][0]["name"], "a");
    EXPECT_EQ(first["additional"][0]["name"], "a");
    const Json& again = json["electrodes"][1];
    EXPECT_EQ(again["geometry"], 4) << "one that is listed again has the sizes of the first";
    EXPECT_EQ(again["metadata"], 5);
    EXPECT_TRUE(again["data"].empty()) << "and no lists";
}

TEST(nmk_electrode_list, refuses_a_zip_without_version) {
    const ScratchDirectory scratch;
    expect_refused(electrode({"list", scratch.file("z", zip_samples::zip_of({{"a", ""}}))}),
                   "version.txt is missing");
}

TEST(nmk_electrode_verify, prints_nothing_where_it_is_to_be_quiet) {
    EXPECT_EQ(electrode({"verify", sample, "--quiet"}).out, "");
}

TEST_F(nmk_electrode_files, are_not_added_to_an_archive_that_lacks_some) {
    const std::string bytes =
        zip_samples::zip_of({{"version.txt", "1"}, {"contents.txt", "E\n"}, {"E/E.xml", "m"}});
    const std::string unsound = scratch.file("z", bytes);
    expect_refused(with_entries({"add", unsound}, {"F"}), "electrode \"E\" has no geometry");
    EXPECT_EQ(text_of(unsound), bytes);
}

namespace {

struct Unsound {
    const char* name;
    std::vector<zip_samples::Entry> entries;
    int status;
    const char* text;
};

std::ostream& operator<<(std::ostream& out, const Unsound& one) { return out << one.name; }

const Unsound unsound_archives[] = {
    {"no_version", {{"a", ""}}, 1, "status 1 (no_version): version.txt is missing"},
    {"a_newer_version",
     {{"version.txt", "2.5"}, {"contents.txt", ""}},
     2,
     "status 2 (newer_version): version 2.5 is newer than this program"},
    {"no_geometry",
     {{"version.txt", "1"}, {"contents.txt", "E\n"}, {"E/E.xml", ""}},
     3,
     "status 3 (missing_entry): electrode \"E\" has no geometry"},
    {"no_metadata",
     {{"version.txt", "1"}, {"contents.txt", "E\n"}, {"E/E.ngk", ""}},
     3,
     "status 3 (missing_entry): electrode \"E\" has no metadata"},
    {"no_metadata_of_one_behind_a_name_that_is_listed_twice",
     {{"version.txt", "1"},
      {"contents.txt", "E\nE\nF\n"},
      {"E/E.ngk", ""},
      {"E/E.xml", ""},
      {"F/F.ngk", ""}},
     3,
     "status 3 (missing_entry): electrode \"F\" has no metadata"},
    {"no_contents", {{"version.txt", "1"}}, 4, "contents.txt is missing, damaged or too long"},
    {"a_version_of_0",
     {{"version.txt", "0"}, {"contents.txt", ""}},
     4,
     "status 4 (bad_contents): version.txt has no version from 1 on"},
};

class nmk_electrode_verify : public testing::TestWithParam<Unsound> {};

}  // namespace

TEST_P(nmk_electrode_verify, prints_the_status_and_the_reason_and_exits_with_1) {
    const ScratchDirectory scratch;
    const std::string zip = scratch.file("z", zip_samples::zip_of(GetParam().entries));
    const Printed printed = electrode({"verify", zip});
    EXPECT_EQ(printed.code, 1);
    EXPECT_NE(printed.out.find(GetParam().text), std::string::npos) << printed.out;
    EXPECT_EQ(std::count(printed.out.begin(), printed.out.end(), '\n'), 1);
    const Json json = Json::parse(electrode({"verify", zip, "--json"}).out);
    EXPECT_EQ(json["status"], GetParam().status);
    EXPECT_EQ(json["sound"], false);
}

TEST_P(nmk_electrode_verify, has_a_list_that_ends_with_the_status) {
    const ScratchDirectory scratch;
    const std::string zip = scratch.file("z", zip_samples::zip_of(GetParam().entries));
    const Printed printed = electrode({"list", zip});
    if (GetParam().status == 1) {
        expect_refused(printed, "version.txt is missing");
        return;
    }
    EXPECT_EQ(printed.code, 0) << printed.err;
    const std::size_t last = printed.out.rfind('\n', printed.out.size() - 2) + 1;
    EXPECT_NE(printed.out.find(GetParam().text, last), std::string::npos) << printed.out;
}

INSTANTIATE_TEST_SUITE_P(cases, nmk_electrode_verify, testing::ValuesIn(unsound_archives),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(nmk_electrode_extract, writes_nothing_outside_its_directory) {
    const ScratchDirectory scratch;
    const std::string zip = scratch.file("z", zip_samples::zip_of({{"version.txt", "1"},
                                                                   {"contents.txt", "E\n"},
                                                                   {"E/E.ngk", "g"},
                                                                   {"E/E.xml", "m"},
                                                                   {"E/html/../../up", "x"},
                                                                   {"E/html/f", "f"}}));
    expect_refused(electrode({"extract", zip, "E", "-o", scratch.path() + "/o"}), "lead out");
    EXPECT_TRUE(fs::exists(scratch.path() + "/o/html/f")) << "the rest is written";
    EXPECT_FALSE(fs::exists(scratch.path() + "/up"));
    EXPECT_EQ(scratch.file_count(), 2U);
}

TEST(nmk_electrode_extract, reports_what_an_electrode_lacks) {
    const ScratchDirectory scratch;
    const std::string zip = scratch.file(
        "z",
        zip_samples::zip_of({{"version.txt", "1"}, {"contents.txt", "E\n"}, {"E/E.xml", "m"}}));
    expect_refused(electrode({"extract", zip, "E", "-o", scratch.path() + "/o"}),
                   "has no geometry");
    EXPECT_EQ(text_of(scratch.path() + "/o/E.xml"), "m");
    const std::string other = scratch.file(
        "y",
        zip_samples::zip_of({{"version.txt", "1"}, {"contents.txt", "E\n"}, {"E/E.ngk", "g"}}));
    expect_refused(electrode({"extract", other, "E", "-o", scratch.path() + "/p"}),
                   "has no metadata");
}

namespace {

struct WrongArguments {
    const char* name;
    Words arguments;
    const char* message;
};

std::ostream& operator<<(std::ostream& out, const WrongArguments& one) { return out << one.name; }

const std::string input = NMK_SOURCE_DIR "/samples/holes.csv";

const WrongArguments wrong_arguments[] = {
    {"no_file", {"list"}, "ARGUMENT"},
    {"two_files", {"list", sample, sample}, "expected one FILE"},
    {"a_file_that_is_not_a_zip", {"list", input}, "not a zip file"},
    {"a_missing_file", {"verify", "/missing.zip"}, "No such file"},
    {"no_entry", {"create", "/tmp/z"}, "expected --entry NAME"},
    {"a_file_before_its_entry",
     {"create", "z", "--geometry", input},
     "expected --entry NAME before"},
    {"no_metadata", {"create", "z", "--entry", "E", "--geometry", input}, "--metadata FILE"},
    {"a_missing_geometry",
     {"create", "z", "--entry", "E", "--geometry", "/missing"},
     "expected a file that exists"},
    {"data_that_is_a_file",
     {"create", "z", "--entry", "E", "--data", input},
     "expected a directory that exists"},
    {"a_name_with_a_slash", {"create", "z", "--entry", "a/b"}, "expected a name without slashes"},
    {"a_name_with_a_colon", {"create", "z", "--entry", "C:"}, "expected a name without slashes"},
    {"a_name_that_climbs", {"create", "z", "--entry", ".."}, "expected a name without slashes"},
    {"a_name_that_is_empty", {"create", "z", "--entry", ""}, "expected a name without slashes"},
    {"a_name_of_two_lines", {"create", "z", "--entry", "a\nb"}, "expected a name without slashes"},
    {"a_name_of_201_bytes",
     {"create", "z", "--entry", std::string(201, 'a')},
     "expected a name without slashes"},
    {"a_data_name_that_is_taken",
     {"list", sample, "--data-name", "additional"},
     "expected a name without"},
    {"a_name_twice", {"create", "z", "--entry", "a", "--entry", "a"}, "expected each name once"},
    {"a_data_name_that_climbs", {"list", sample, "--data-name", ".."}, "expected a name without"},
    {"extract_without_directory", {"extract", sample, "E101"}, "expected -o DIR"},
    {"extract_without_name", {"extract", sample, "-o", "o"}, "extract FILE NAME -o DIR"},
    {"extract_of_an_unknown_name", {"extract", sample, "E9", "-o", "o"}, "no electrode \"E9\""},
    {"extract_of_a_climbing_name", {"extract", sample, "../E", "-o", "o"}, "without slashes"},
    {"output_with_list", {"list", sample, "-o", "o"}, "--output goes with extract"},
    {"json_with_extract",
     {"extract", sample, "E101", "-o", "o", "--json"},
     "--json goes with list"},
    {"entry_with_list", {"list", sample, "--entry", "a"}, "--entry goes with create and add"},
    {"create_in_a_missing_directory",
     {"create", "/missing/z", "--entry", "E", "--geometry", input, "--metadata", input},
     "/missing/z: no such directory; expected one that exists"},
    {"create_on_a_device",
     {"create", "/dev/null", "--entry", "E", "--geometry", input, "--metadata", input},
     "/dev/null: not a regular file; expected a file or a new name"},
    {"create_on_standard_output",
     {"create", "-", "--entry", "E", "--geometry", input, "--metadata", input},
     "create and add need the name of a file"},
    {"add_to_standard_input",
     {"add", "-", "--entry", "E", "--geometry", input, "--metadata", input},
     "create and add need the name of a file"},
};

class nmk_electrode_refuses : public testing::TestWithParam<WrongArguments> {};

}  // namespace

TEST_P(nmk_electrode_refuses, wrong_arguments_in_one_line) {
    expect_refused(electrode(GetParam().arguments), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(cases, nmk_electrode_refuses, testing::ValuesIn(wrong_arguments),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace nmk_electrode

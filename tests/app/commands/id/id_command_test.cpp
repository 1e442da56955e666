// nmk id: makes, explains and lists identifiers.
#include <mfc/CArchive.h>
#include <mfc/CMemFile.h>
#include <nmktoolbox/uniqueid.h>

#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "app/shell/command_runner.h"
#include "app/shell/standard_input.h"
#include "commands/id/identifier_words.h"
#include "scratch_directory.h"

namespace nmk_id {
namespace {

using Json = nlohmann::json;
using nmk_shell::expect_refused;
using nmk_shell::Printed;

const std::string sample = NMK_SOURCE_DIR "/samples/tool_list.ids";

Printed id(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "id");
    return nmk_shell::run(arguments);
}

std::vector<std::string> lines_of(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

struct WrongArguments {
    const char* name;
    std::vector<std::string> arguments;
    const char* message;
};

std::ostream& operator<<(std::ostream& out, const WrongArguments& wrong) {
    return out << wrong.name;
}

class id_command_refuses : public testing::TestWithParam<WrongArguments> {};

}  // namespace

TEST(id_new, prints_one_valid_identifier) {
    const Printed printed = id({"new"});
    EXPECT_EQ(printed.code, 0);
    ASSERT_EQ(lines_of(printed.out).size(), 1U);
    const auto words = words_of_text(lines_of(printed.out)[0]);
    ASSERT_TRUE(words);
    EXPECT_TRUE(is_valid(*words));
    EXPECT_EQ(words->spare, 0U);
}

TEST(id_new, prints_as_many_as_are_asked_for_and_no_two_alike) {
    const std::vector<std::string> lines = lines_of(id({"new", "1000"}).out);
    EXPECT_EQ(lines.size(), 1000U);
    EXPECT_EQ(std::set<std::string>(lines.begin(), lines.end()).size(), 1000U);
}

TEST(id_new, prints_json) {
    const std::vector<std::string> lines = lines_of(id({"new", "2", "--json"}).out);
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0], "{\"schema\": 1, \"identifiers\": [");
    EXPECT_TRUE(words_of_text(lines[1].substr(3, 32))) << lines[1];
    EXPECT_EQ(lines[1].substr(35), "\",");
    EXPECT_EQ(lines[2].substr(35), "\"");
    EXPECT_EQ(lines[3], "]}");
}

TEST(id_show, explains_the_words) {
    const Printed printed = id({"show", "6c1f0d9a69216f800000000700000000"});
    EXPECT_EQ(printed.code, 0);
    EXPECT_EQ(printed.out,
              "identifier  6c1f0d9a69216f800000000700000000\n"
              "valid       yes\n"
              "hash        6c1f0d9a\n"
              "stamp       1763798912 (2025-11-22T08:08:32Z)\n"
              "serial      7\n"
              "spare       0\n");
}

TEST(id_show, says_that_a_stamp_of_1_is_invalid) {
    const Printed printed = id({"show", "0000000000000001fffffffe00000005"});
    EXPECT_EQ(printed.code, 0);
    EXPECT_EQ(printed.out,
              "identifier  0000000000000001fffffffe00000005\n"
              "valid       no\n"
              "hash        00000000\n"
              "stamp       1 (marks an invalid identifier)\n"
              "serial      -2\n"
              "spare       5\n");
    const auto json = Json::parse(id({"show", "0000000000000001fffffffe00000005", "--json"}).out);
    EXPECT_EQ(json, Json::parse(R"({"schema": 1, "identifier": "0000000000000001fffffffe00000005",
        "valid": false, "hash": 0, "stamp": 1, "time": null, "serial": -2, "spare": 5})"));
}

TEST(id_show, gives_the_time_of_every_stamp) {
    EXPECT_EQ(time_of_stamp(0), "1970-01-01T00:00:00Z");
    EXPECT_EQ(time_of_stamp(-1), "1969-12-31T23:59:59Z");
    EXPECT_EQ(time_of_stamp(2147483647), "2038-01-19T03:14:07Z");
    EXPECT_EQ(time_of_stamp(-2147483647 - 1), "1901-12-13T20:45:52Z");
}

TEST(id_dump, lists_the_sample) {
    const Printed printed = id({"dump", sample});
    EXPECT_EQ(printed.code, 0);
    EXPECT_EQ(printed.err, "");
    const std::vector<std::string> lines = lines_of(printed.out);
    ASSERT_EQ(lines.size(), 12U);
    EXPECT_EQ(lines[1],
              "      0       1  nmkObjectId       6c1f0d9a69216d800000000700000000           7");
    EXPECT_EQ(lines[7], "    155       5  nmkRefToObjectId  the same object again");
    EXPECT_EQ(lines[8], "    157       -  null              -");
    EXPECT_EQ(lines[9],
              "    159       7  nmkRefToObjectId  2b7e1516000000010000001700000000     invalid");
    EXPECT_EQ(lines[11], "10 pointers to 8 objects");
    for (const std::string& line : lines) EXPECT_LE(line.size(), 80U) << line;
}

TEST(id_dump, has_room_for_the_longest_serial) {
    std::string bytes = nmk_shell::text_of(sample);
    // The serial of the first object, behind its class, the hash, the stamp and the version.
    bytes.replace(27, 4, std::string("\0\0\0\x80", 4));
    const ScratchDirectory scratch;
    const std::string line = lines_of(id({"dump", scratch.file("a.ids", bytes)}).out)[1];
    EXPECT_TRUE(line.ends_with("  -2147483648")) << line;
    EXPECT_LE(line.size(), 80U) << line;
}

TEST(id_dump, lists_a_sample_that_the_library_stores_as_it_is) {
    const std::string bytes = nmk_shell::text_of(sample);
    CMemFile file({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
    std::set<std::unique_ptr<CObject>> owned;
    int pointers = 0;
    CArchive archive(&file, CArchive::load);
    for (; pointers < 10; ++pointers) {
        CObject* const object = archive.ReadObject(nullptr);
        if (object != nullptr && pointers != 6) owned.insert(std::unique_ptr<CObject>(object));
    }
    char byte = 0;
    EXPECT_EQ(archive.Read(&byte, 1), 0U);
    EXPECT_EQ(owned.size(), 8U);
    nmkUniqueIdTable::delete_session_entities();
}

TEST(id_dump, reads_standard_input) {
    const StandardInput standard_input(nmk_shell::text_of(sample));
    EXPECT_EQ(id({"dump", "-"}).out, id({"dump", sample}).out);
}

TEST(id_dump, errors_name_standard_input) {
    const StandardInput standard_input("\x01");
    const Printed printed = id({"dump", "-"});
    EXPECT_EQ(printed.code, 2);
    EXPECT_TRUE(printed.err.starts_with("standard input: offset 0: ")) << printed.err;
}

TEST(id_dump, reads_any_number_of_bytes_without_a_line_feed) {
    const ScratchDirectory directory;
    const std::string pointers(100'000, '\0');  // to no object, two bytes each
    const Printed printed = id({"dump", directory.file("long.ids", pointers)});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_TRUE(printed.out.ends_with("\n50000 pointers to 0 objects\n"));
}

TEST(id_dump, prints_json) {
    const Json objects = Json::parse(id({"dump", sample, "--json"}).out).at("objects");
    ASSERT_EQ(objects.size(), 10U);
    EXPECT_EQ(objects[0],
              Json::parse(R"({"offset": 0, "class": "nmkObjectId", "object": 1, "repeated": false,
                  "record_offset": 17, "identifier": "6c1f0d9a69216d800000000700000000",
                  "valid": true, "hash": 1813974426, "stamp": 1763798400,
                  "time": "2025-11-22T08:00:00Z", "serial": 7, "spare": 0})"));
    EXPECT_EQ(objects[6], Json::parse(R"({"offset": 155, "class": "nmkRefToObjectId", "object": 5,
                  "repeated": true})"));
    EXPECT_EQ(objects[7], Json::parse(R"({"offset": 157, "class": null})"));
}

TEST(id_dump, stops_with_a_line_at_the_first_other_class) {
    const ScratchDirectory directory;
    const std::string file_name = directory.path() + "/mixed.ids";
    const std::string bytes = nmk_shell::text_of(sample).substr(0, 35);
    std::ofstream(file_name, std::ios::binary)
        << bytes << std::string("\xFF\xFF\x01\x00\x05\x00", 6) << "CItem";
    const std::string message =
        file_name +
        ": offset 35: class \"CItem\"; expected nmkUniqueIdPtr, nmkObjectId or "
        "nmkRefToObjectId\n";
    const Printed table = id({"dump", file_name});
    EXPECT_EQ(table.code, 2);
    EXPECT_EQ(table.err, message);
    EXPECT_EQ(lines_of(table.out).size(), 3U);
    const Printed json = id({"dump", file_name, "--json"});
    EXPECT_EQ(json.code, 2);
    EXPECT_EQ(json.err, message);
    EXPECT_EQ(Json::parse(json.out).at("objects").size(), 1U);
    const Printed quiet = id({"dump", file_name, "--quiet"});
    EXPECT_EQ(quiet.code, 2);
    EXPECT_EQ(quiet.out, "");
    EXPECT_EQ(quiet.err, message);
}

TEST(id_dump, lists_nothing_of_an_empty_file) {
    const ScratchDirectory directory;
    const std::string file_name = directory.path() + "/empty.ids";
    std::ofstream(file_name, std::ios::binary).flush();
    EXPECT_EQ(id({"dump", file_name}).out, "0 pointers to 0 objects\n");
    EXPECT_EQ(id({"dump", file_name, "--json"}).out, "{\"schema\": 1, \"objects\": [\n]}\n");
}

TEST(id_dump, counts_one_pointer_and_one_object_in_the_singular) {
    const ScratchDirectory directory;
    const std::string file_name = directory.path() + "/one.ids";
    const std::string one_object = nmk_shell::text_of(sample).substr(0, 35);
    std::ofstream(file_name, std::ios::binary) << one_object;
    EXPECT_EQ(lines_of(id({"dump", file_name}).out).back(), "1 pointer to 1 object");
    std::ofstream(file_name, std::ios::binary) << one_object << std::string("\x02\x00", 2);
    EXPECT_EQ(lines_of(id({"dump", file_name}).out).back(), "2 pointers to 1 object");
}

TEST(id_command, prints_no_text_when_it_is_quiet) {
    const std::string identifier = "6c1f0d9a69216f800000000700000000";
    EXPECT_EQ(id({"new", "--quiet"}).out, "");
    EXPECT_EQ(id({"show", identifier, "--quiet"}).out, "");
    EXPECT_EQ(id({"show", identifier, "--quiet", "--json"}).out,
              id({"show", identifier, "--json"}).out);
    EXPECT_EQ(id({"dump", sample, "--quiet"}).out, "");
    EXPECT_NE(id({"new", "--quiet", "--json"}).out, "");
}

TEST_P(id_command_refuses, in_one_line_that_names_what_was_expected) {
    expect_refused(id(GetParam().arguments), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    wrong, id_command_refuses,
    testing::Values(
        WrongArguments{"nothing", {}, "ACTION"}, WrongArguments{"another_word", {"make"}, "make"},
        WrongArguments{"none", {"new", "0"}, "N \"0\": expected a whole number from 1 to 1000000"},
        WrongArguments{"fewer_than_none", {"new", "-1"}, "N \"-1\": expected a whole number"},
        WrongArguments{"too_many", {"new", "1000001"}, "expected a whole number from 1 to"},
        WrongArguments{"more_than_an_int", {"new", "99999999999"}, "expected a whole number from"},
        WrongArguments{"a_broken_number", {"new", "1.5"}, "expected a whole number from 1"},
        WrongArguments{"two_counts", {"new", "1", "2"}, "2"},
        WrongArguments{"no_identifier", {"show"}, "expected 32 lower-case hexadecimal digits"},
        WrongArguments{"a_short_identifier",
                       {"show", "6c1f0d9a"},
                       "HEX \"6c1f0d9a\": expected 32 lower-case hexadecimal digits"},
        WrongArguments{"capital_digits",
                       {"show", "6C1F0D9A69216F800000000700000000"},
                       "expected 32 lower-case hexadecimal digits"},
        WrongArguments{"other_letters",
                       {"show", "6c1f0d9a69216f80000000070000000g"},
                       "expected 32 lower-case hexadecimal digits"},
        WrongArguments{"no_file", {"dump"}, "dump: expected the name of a file"},
        WrongArguments{"a_missing_file", {"dump", "/nowhere/x.ids"}, "/nowhere/x.ids"},
        WrongArguments{"an_unknown_option", {"new", "--all"}, "--all"}),
    [](const auto& wrong) { return std::string(wrong.param.name); });

}  // namespace nmk_id

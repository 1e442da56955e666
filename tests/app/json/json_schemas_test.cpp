// json_schemas: every JSON document of the tool keeps its schema in docs/schemas, and docs/json.md
// names every member.

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "app/formats/job/job_fixtures.h"
#include "app/shell/command_runner.h"
#include "registry_scratch.h"
#include "scratch_directory.h"
#include "zip_samples.h"

namespace {

using nlohmann::json;

const std::string root = NMK_SOURCE_DIR "/";

struct Comparison {
    int code;  // 0 the schema is kept, 1 it is not, 77 there is no validator
    std::string text;
};

Comparison compare(const std::string& schema, const std::string& document) {
    const std::string command = "'" + root + "tests/app/json/compare_with_schema.py' '" + root +
                                "docs/schemas/" + schema + ".json' '" + document + "' 2>&1";
    std::FILE* const pipe = ::popen(command.c_str(), "r");
    Comparison result{-1, {}};
    std::array<char, 512> part{};
    while (pipe != nullptr && std::fgets(part.data(), part.size(), pipe) != nullptr) {
        result.text += part.data();
    }
    const int status = pipe == nullptr ? -1 : ::pclose(pipe);
    result.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

constexpr int no_validator = 77;

/// True where the validator is missing and may be missing; a failure where it is required.
bool is_skipped(const Comparison& comparison) {
    const char* const required = std::getenv("NMK_REQUIRE_DATA");
    const bool is_required = required != nullptr && std::string(required) == "1";
    EXPECT_FALSE(is_required && comparison.code == no_validator)
        << "python3-jsonschema is missing, and NMK_REQUIRE_DATA is 1";
    return comparison.code == no_validator;
}

struct DocumentCase {
    const char* name;
    const char* schema;
    std::vector<std::string> words;  // "OUT" is the name of a file, which is then the document
    int code = 0;
};

std::ostream& operator<<(std::ostream& out, const DocumentCase& one) { return out << one.name; }

class json_document_of : public testing::TestWithParam<DocumentCase> {
  protected:
    RegistryScratch folder;
};

TEST_P(json_document_of, the_command_keeps_its_schema) {
    std::vector<std::string> words = GetParam().words;
    const std::string file = folder.path() + "/out.json";
    bool is_file = false;
    for (std::string& word : words) {
        if (word.starts_with("samples/") || word.starts_with("tests/")) word.insert(0, root);
        if (word == "OUT") {
            word = file;
            is_file = true;
        }
    }
    const nmk_shell::Printed printed = nmk_shell::run(words);
    ASSERT_EQ(printed.code, GetParam().code) << printed.err;
    if (!is_file) folder.file("out.json", printed.out);
    const Comparison comparison = compare(GetParam().schema, file);
    if (is_skipped(comparison)) GTEST_SKIP() << "python3-jsonschema is missing";
    EXPECT_EQ(comparison.code, 0) << comparison.text;
}

INSTANTIATE_TEST_SUITE_P(
    commands, json_document_of,
    testing::Values(
        DocumentCase{"order", "order", {"order", "samples/cover_plate.drl", "--json"}},
        DocumentCase{
            "order_across_tools",
            "order",
            {"order", "samples/cover_plate.drl", "--type", "closest", "--across-tools", "--json"}},
        DocumentCase{"order_by_time",
                     "order",
                     {"order", "samples/slots.csv", "--measure", "time", "--rapid", "9000,6000,900",
                      "--acceleration", "800", "--json"}},
        DocumentCase{"order_with_the_time_of_the_job",
                     "order",
                     {"order", "samples/slots.csv", "--depth", "3", "--retract", "5",
                      "--plunge-feed", "120", "--feed", "400", "--merge-tools", "--json"}},
        DocumentCase{"order_of_files",
                     "order_files",
                     {"order", "samples/slots.csv", "samples/holes.csv", "--json", "--jobs", "2"}},
        DocumentCase{"order_of_a_table", "order", {"order", "samples/slots.csv", "--json"}},
        DocumentCase{
            "job", "job", {"order", "samples/cover_plate.drl", "--type", "xz", "-o", "OUT"}},
        DocumentCase{"job_of_a_table", "job", {"order", "samples/holes.csv", "-o", "OUT"}},
        DocumentCase{
            "route",
            "route",
            {"route", "samples/workshop.map", "--start", "3,36", "--goal", "92,36", "--json"}},
        DocumentCase{"no_route",
                     "route",
                     {"route", "samples/workshop.map", "--start", "3,36", "--goal", "1,36",
                      "--forward", "--json"},
                     1},
        DocumentCase{"moving_line",
                     "route",
                     {"route", "samples/workshop.map", "--start", "3,36", "--goal", "92,36",
                      "--goal-kind", "moving-line", "--gradient", "0.5", "--json"},
                     1},
        DocumentCase{
            "curve", "curve", {"curve", "arc", "0,0", "1,1", "2,0", "--points", "3", "--json"}},
        DocumentCase{
            "curve_in_a_file", "curve", {"curve", "bezier", "0,0", "1,1", "2,0", "-o", "OUT"}},
        DocumentCase{"curve_without_ends",
                     "curve",
                     {"curve", "infinite-line", "0,0", "--direction", "1,0", "--json"}},
        DocumentCase{
            "curves_of_a_drawing", "curve", {"curve", "info", "samples/bracket.dxf", "--json"}},
        DocumentCase{"curve_pieces",
                     "curve",
                     {"curve", "split", "samples/bracket.dxf", "--curve", "1", "--json"}},
        DocumentCase{"curve_compared",
                     "curve-compare",
                     {"curve", "compare", "samples/path.csv", "samples/path.csv", "--json"}},
        DocumentCase{"curves_that_differ",
                     "curve-compare",
                     {"curve", "compare", "samples/path.csv", "samples/bracket.dxf", "--curve", "2",
                      "--json"},
                     1},
        DocumentCase{"curve_closest",
                     "curve-closest",
                     {"curve", "closest", "samples/path.csv", "30,0", "--json"}},
        DocumentCase{"levels", "levels", {"levels", "--json"}},
        DocumentCase{"id_new", "id-new", {"id", "new", "3", "--json"}},
        DocumentCase{
            "id_show", "id-show", {"id", "show", "6c1f0d9a69216f800000000700000000", "--json"}},
        DocumentCase{"id_show_invalid",
                     "id-show",
                     {"id", "show", "000000000000000100000000ffffffff", "--json"}},
        DocumentCase{"electrode_list",
                     "electrode-list",
                     {"electrode", "list", "samples/electrodes/electrodes.zip", "--json"}},
        DocumentCase{"electrode_verify",
                     "electrode-verify",
                     {"electrode", "verify", "samples/electrodes/electrodes.zip", "--json"}},
        DocumentCase{"id_dump", "id-dump", {"id", "dump", "samples/tool_list.ids", "--json"}},
        DocumentCase{"model",
                     "model-info",
                     {"model", "info", "samples/housing.stl", "--units", "inch", "--json"}},
        DocumentCase{"registry", "registry", {"registry", "list", "HKLM", "--json"}},
        DocumentCase{"config",
                     "config",
                     {"config", "show", "samples/config/machine", "--versions", "1..3", "--json"}},
        DocumentCase{"config_with_a_problem",
                     "config",
                     {"config", "validate", "samples/config/machine.xml", "--json"},
                     1},
        DocumentCase{"config_without_a_file",
                     "config",
                     {"config", "show", "samples/config/none", "--versions", "1..3", "--json"},
                     1},
        DocumentCase{"no_levels", "levels", {"levels", "--find", "no such words", "--json"}},
        DocumentCase{"solve", "solve", {"solve", "polynomial", "2", "-3", "0", "1", "--json"}},
        DocumentCase{"solve_with_a_note", "solve", {"solve", "polynomial", "0", "0", "--json"}},
        DocumentCase{"solve_of_a_root_beyond_the_doubles",
                     "solve",
                     {"solve", "polynomial", "1", "1e-320", "--certified", "--json"}},
        DocumentCase{"order_of_routed_slots",
                     "order",
                     {"order", "tests/app/cases/excellon/routed_slots.drl", "--json"}},
        DocumentCase{"solve_with_a_value_that_overflows",
                     "solve",
                     {"solve", "extremum", "-1e-300", "1e300", "1", "-1e300", "2.5", "--json"}},
        DocumentCase{
            "solve_of_a_table", "solve", {"solve", "--csv", "samples/problems.csv", "--json"}}),
    nmk_job::CaseName());

TEST(json_schemas, are_kept_by_the_sample_of_the_registry) {
    const Comparison comparison = compare("registry", root + "samples/settings.json");
    if (is_skipped(comparison)) GTEST_SKIP() << "python3-jsonschema is missing";
    EXPECT_EQ(comparison.code, 0) << comparison.text;
}

TEST(json_schemas, are_kept_by_archives_and_documents_that_nobody_should_trust) {
    const ScratchDirectory folder;
    zip_samples::Entry huge{"E\xFF/html/\x01\x80", "x"};
    huge.size = huge.packed_size = 4'000'000'000U;
    const std::string zip = folder.file(
        "z",
        zip_samples::zip_of({{"version.txt", "inf"}, {"contents.txt", "E\xFF\nE\xFF\n\n"}, huge}));
    const std::string document = folder.file("c.xml", "<a version='\xFF'/>");
    const std::pair<const char*, std::vector<std::string>> commands[] = {
        {"electrode-list", {"electrode", "list", zip, "--json"}},
        {"electrode-verify", {"electrode", "verify", zip, "--json"}},
        {"config", {"config", "validate", document, "--json"}}};
    for (const auto& command : commands) {
        const std::string printed = nmk_shell::run(command.second).out;
        EXPECT_FALSE(printed.empty()) << command.first;
        const Comparison comparison = compare(command.first, folder.file("a.json", printed));
        if (is_skipped(comparison)) GTEST_SKIP() << "python3-jsonschema is missing";
        EXPECT_EQ(comparison.code, 0) << comparison.text << printed;
    }
}

TEST(json_schemas, find_a_member_that_is_missing_or_unknown) {
    const ScratchDirectory folder;
    for (const char* const text :
         {"{\"schema\": 1}", "{\"schema\": 2, \"levels\": []}",
          "{\"schema\": 1, \"levels\": [], \"more\": 1}", "{\"schema\": 1, \"levels\": [NaN]}"}) {
        const Comparison comparison = compare("levels", folder.file("a.json", text));
        if (is_skipped(comparison)) GTEST_SKIP() << "python3-jsonschema is missing";
        EXPECT_EQ(comparison.code, 1) << text << comparison.text;
    }
}

/// Adds the names of all members that a schema describes.
void add_members(const json& schema, std::set<std::string>& names) {
    if (schema.is_object() && schema.contains("properties") && schema["properties"].is_object()) {
        for (const auto& [name, value] : schema["properties"].items()) names.insert(name);
    }
    if (schema.is_structured()) {
        for (const json& part : schema) add_members(part, names);
    }
}

TEST(json_schemas, have_no_member_that_the_document_does_not_describe) {
    const std::string text = nmk_job::bytes_of_file(root + "docs/json.md");
    for (const std::string name : {"order", "job", "route", "levels", "solve", "id-show", "id-dump",
                                   "registry", "electrode-list", "electrode-verify", "model-info",
                                   "config", "curve", "curve-compare", "curve-closest"}) {
        std::set<std::string> members;
        add_members(json::parse(nmk_job::bytes_of_file(root + "docs/schemas/" + name + ".json")),
                    members);
        EXPECT_GE(members.size(), 3U) << name;
        for (const std::string& member : members) {
            const bool is_named = text.find("`" + member + "`") != std::string::npos ||
                                  text.find("{" + member + ",") != std::string::npos ||
                                  text.find(", " + member + "}") != std::string::npos;
            EXPECT_TRUE(is_named) << name << ": " << member;
        }
    }
}

}  // namespace

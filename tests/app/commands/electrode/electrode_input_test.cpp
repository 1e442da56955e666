// nmk electrode list, verify and extract of an archive that comes from standard input.

#include <filesystem>
#include <nlohmann/json.hpp>

#include "app/commands/electrode/electrode_runs.h"
#include "app/files/other_temporary_directory.h"
#include "app/shell/standard_input.h"
#include "zip_samples.h"

namespace nmk_electrode {
namespace {

using nmk_shell::expect_refused;
using nmk_shell::Printed;
using nmk_shell::text_of;

const std::string sample = NMK_SOURCE_DIR "/samples/electrodes/electrodes.zip";

}  // namespace

TEST(nmk_electrode_input, is_listed_as_the_file_is) {
    const StandardInput input(text_of(sample));
    EXPECT_EQ(electrode({"list", "-"}).out, electrode({"list", sample}).out);
}

TEST(nmk_electrode_input, may_be_a_pipe) {
    const PipedInput input(text_of(sample));
    const Printed printed = electrode({"verify", "-"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(printed.out,
              "standard input: sound: 2 electrodes, 9 entries, 1243 bytes, version 1.02\n");
}

TEST(nmk_electrode_input, is_named_in_json) {
    for (const char* action : {"list", "verify"}) {
        const PipedInput input(text_of(sample));
        const auto json = nlohmann::json::parse(electrode({action, "-", "--json"}).out);
        EXPECT_EQ(json["file"], "standard input") << action;
    }
}

TEST(nmk_electrode_input, is_extracted_and_leaves_no_temporary_file) {
    const ScratchDirectory scratch, temporary;
    const OtherTemporaryDirectory other(temporary.path());
    const PipedInput input(text_of(sample));
    const Printed printed = electrode({"extract", "-", "E101", "-o", scratch.path() + "/o"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(text_of(scratch.path() + "/o/E101.ngk"),
              text_of(NMK_SOURCE_DIR "/samples/electrodes/E101/geometry.ngk"));
    EXPECT_TRUE(std::filesystem::exists(scratch.path() + "/o/html/index.html"));
    EXPECT_TRUE(std::filesystem::is_empty(temporary.path()));
}

TEST(nmk_electrode_input, that_is_not_an_archive_is_refused_by_its_name) {
    const auto refused = [](const std::string& bytes, const Words& words, const char* message) {
        const PipedInput input(bytes);
        expect_refused(electrode(words), message);
    };
    refused("", {"list", "-"}, "standard input: not a zip file");
    refused("no zip", {"verify", "-"}, "standard input: not a zip file");
    refused(zip_samples::zip_of({{"a", ""}}), {"list", "-"},
            "standard input: version.txt is missing");
    refused(text_of(sample), {"extract", "-", "E9", "-o", "o"},
            "standard input: no electrode \"E9\"");
    refused(
        zip_samples::zip_of({{"version.txt", "1"}, {"contents.txt", "E\n"}, {"E/html/../x", ""}}),
        {"extract", "-", "E", "-o", "o"}, "standard input: electrode \"E\": html: names");
}

TEST(nmk_electrode_input, that_never_ends_is_stopped) {
    for (const Words& words : {Words{"list", "-"}, Words{"verify", "-"},
                               Words{"extract", "-", "E101", "-o", "/nowhere"}}) {
        const PipedInput input(text_of(sample), PipedInput::Writer::waiting);
        StopAtOnce progress;
        const Printed printed = electrode_with(progress, words);
        EXPECT_EQ(printed.code, 1);
        EXPECT_EQ(printed.out, "");
        EXPECT_EQ(printed.err, "nmk electrode: stopped; standard input was not read to its end\n");
    }
}

}  // namespace nmk_electrode

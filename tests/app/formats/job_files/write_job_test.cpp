// write_job: the text of an ordered job in the format of its file name.

#include "formats/job_files/write_job.h"

#include <gtest/gtest.h>

#include "app/formats/job/job_fixtures.h"

namespace nmk_job_files {
namespace {

nmk_job::MachiningJob one_hole() {
    nmk_job::MachiningJob job;
    job.file_name = "a \"b\".csv";
    job.text = "1,2\n";
    job.tools.push_back({"all", std::nullopt});
    job.items.push_back({giPoint3(1, 2, 0), std::nullopt, 0});
    return job;
}

/// The text, or the error after a word that no text begins with.
std::string text_for(const std::string& file_name) {
    const auto text = job_text(one_hole(), nmk_job::JobOrder{{0, false}}, file_name);
    const auto* error = text ? nullptr : &text.error();
    return error != nullptr ? "error " + error->text() : *text;
}

TEST(job_text, is_in_the_format_of_the_name) {
    EXPECT_EQ(text_for("parts/a.CSV"), "1,2\n");
    EXPECT_EQ(text_for("a.json"),
              "{\"schema\": 1, \"file\": \"a \\\"b\\\".csv\", \"units\": \"mm\", \"tools\": [\n"
              "  {\"name\": \"all\", \"diameter\": null, \"items\": [\n"
              "    {\"source\": 0, \"reversed\": false, \"start\": [1, 2, 0]}]}]}\n");
}

TEST(job_text, refuses_a_drill_file_of_a_table_and_an_unknown_extension) {
    EXPECT_EQ(text_for("a.drl"),
              "error a.drl: a drill file can only be written from a drill file; expected .nc, .csv "
              "or .json");
    EXPECT_EQ(text_for("a.tsp"),
              "error a.tsp: a TSPLIB instance can only be written from a TSPLIB instance; expected "
              ".nc, .csv or .json");
    EXPECT_EQ(
        text_for("a.pdf"),
        "error a.pdf: cannot write .pdf; expected .drl, .nc, .csv, .json or the extension of the "
        "input");
}

TEST(job_text, takes_the_ending_of_the_file_that_was_read) {
    for (const std::string ending : {"", ".txt", ".TAP", ".xln", ".points"}) {
        nmk_job::MachiningJob job = one_hole();
        job.file_name = "input" + ending;
        EXPECT_TRUE(names_output("b" + ending, job.file_name));
        const auto text = job_text(job, nmk_job::JobOrder{{0, false}}, "b" + ending);
        ASSERT_TRUE(bool(text)) << ending;
        EXPECT_EQ(*text, "1,2\n");
    }
    EXPECT_FALSE(names_output("b.pdf", "a.drl"));
    EXPECT_FALSE(names_output("b", "a.drl"));
}

}  // namespace
}  // namespace nmk_job_files

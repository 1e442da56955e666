// tsplib_reader: TSPLIB instances with their variants of keywords, and hostile ones.

#include "formats/tsplib/tsplib_reader.h"

#include <gtest/gtest.h>

#include <ostream>
#include <sstream>

#include "app/formats/job/job_fixtures.h"
#include "formats/job_files/read_job.h"
#include "real_inputs.h"

namespace nmk_tsplib {
namespace {

const std::string head = "NAME: a\nTYPE: TSP\nDIMENSION: 2\nEDGE_WEIGHT_TYPE : EUC_2D\n";
const std::string section = "NODE_COORD_SECTION\n";

nmk_text::Result<nmk_job::MachiningJob> read(const std::string& text) {
    return read_tsplib("a.tsp", text, std::nullopt);
}

struct InstanceCase {
    const char* name;
    std::string text;
    std::string error;  // empty if it is read as two points, the second at 1214.88,-4
};

std::ostream& operator<<(std::ostream& out, const InstanceCase& instance) {
    return out << instance.name;
}

class tsplib_instance : public testing::TestWithParam<InstanceCase> {};

TEST_P(tsplib_instance, is_read_or_refused_with_its_line) {
    const auto result = read(GetParam().text);
    EXPECT_EQ(nmk_job::error_of(result),
              GetParam().error.empty() ? "" : "a.tsp:" + GetParam().error);
    if (const nmk_job::MachiningJob* job = result ? &*result : nullptr) {
        ASSERT_EQ(job->items.size(), 2U);
        EXPECT_EQ(job->items[1].start, giPoint3(1214.88, -4.0, 0.0));
    }
}

const std::string nodes = "1 0 0\n2 1.21488e+03 -4\n";

INSTANTIATE_TEST_SUITE_P(
    instances, tsplib_instance,
    testing::Values(
        InstanceCase{"plain", head + section + nodes + "EOF\n", ""},
        InstanceCase{"without_eof", head + section + nodes, ""},
        InstanceCase{"no_colons",
                     "NAME a\nTYPE TSP\nDIMENSION 2\nEDGE_WEIGHT_TYPE CEIL_2D\n" + section + nodes,
                     ""},
        InstanceCase{
            "a_remark_after_the_type",
            "TYPE : TSP (holes)\nDIMENSION : 2\nEDGE_WEIGHT_TYPE : EUC_2D\n" + section + nodes, ""},
        InstanceCase{"tabs_and_blank_lines",
                     head + section + "\n\t1\t0\t0\n  2   1214.88  -4  \n\nEOF\n", ""},
        InstanceCase{"carriage_returns",
                     "DIMENSION: 2\r\nEDGE_WEIGHT_TYPE: EUC_2D\r\nNODE_COORD_SECTION\r\n1 0 0\r\n"
                     "2 1214.88 -4\r\nEOF\r\n",
                     ""},
        InstanceCase{"text_after_eof", head + section + nodes + "EOF\njunk\n", ""},
        InstanceCase{"a_matrix", "EDGE_WEIGHT_TYPE: EXPLICIT\n",
                     "1: EDGE_WEIGHT_TYPE \"EXPLICIT\"; expected EUC_2D or CEIL_2D"},
        InstanceCase{"geographical", "EDGE_WEIGHT_TYPE: GEO\n",
                     "1: EDGE_WEIGHT_TYPE \"GEO\"; expected EUC_2D or CEIL_2D"},
        InstanceCase{"asymmetric", "TYPE: ATSP\n", "1: TYPE \"ATSP\"; expected TSP"},
        InstanceCase{"too_few_points", head + section + "1 0 0\nEOF\n",
                     "7: 1 point; expected the 2 of the DIMENSION"},
        InstanceCase{"too_many_points", head + section + nodes + "3 1 1\n",
                     "8: more points than the DIMENSION of 2"},
        InstanceCase{
            "a_hostile_dimension", "DIMENSION: 99999999999999999999\n",
            "1: DIMENSION \"99999999999999999999\"; at most 5000000 points can be ordered"},
        InstanceCase{"a_large_dimension_allocates_nothing",
                     "DIMENSION: 5000000\n" + section + nodes,
                     "4: 2 points; expected the 5000000 of the DIMENSION"},
        InstanceCase{"a_negative_dimension", "DIMENSION: -2\n",
                     "1: cannot read the DIMENSION \"-2\"; expected a whole number"},
        InstanceCase{"no_points", head,
                     "4: NODE_COORD_SECTION is missing; expected the points of the "
                     "instance"},
        InstanceCase{"nothing", "",
                     " NODE_COORD_SECTION is missing; expected the points of the instance"},
        InstanceCase{"a_node_twice", head + section + "1 0 0\n1 0 0\n",
                     "7: node 1 is defined twice"},
        InstanceCase{"a_node_number_above_the_number_of_points", head + section + "1 0 0\n7 0 0\n",
                     "7: node number 7; expected 1 to 2, the number of points"},
        InstanceCase{"node_zero", head + section + "0 0 0\n",
                     "6: node number 0; expected 1 to the DIMENSION"},
        InstanceCase{
            "one_coordinate", head + section + "1 0\n",
            "6: cannot read \"1 0\" as a node; expected its number and two coordinates from "
            "-1e9 to 1e9"},
        InstanceCase{
            "three_coordinates", head + section + "1 0 0 0\n",
            "6: cannot read \"1 0 0 0\" as a node; expected its number and two coordinates "
            "from -1e9 to 1e9"},
        InstanceCase{
            "not_a_number", head + section + "1 nan 0\n",
            "6: cannot read \"1 nan 0\" as a node; expected its number and two coordinates "
            "from -1e9 to 1e9"},
        InstanceCase{
            "infinity", head + section + "1 0 inf\n",
            "6: cannot read \"1 0 inf\" as a node; expected its number and two coordinates "
            "from -1e9 to 1e9"},
        InstanceCase{"two_sections", head + section + nodes + section,
                     "8: a second NODE_COORD_SECTION; expected one"},
        InstanceCase{"an_unknown_keyword", "HELLO: 1\n",
                     "1: cannot read \"HELLO: 1\" before the NODE_COORD_SECTION"}),
    nmk_job::CaseName());

TEST(tsplib_reader, reads_every_prefix_of_a_good_file_within_its_bounds) {
    for (const char* name : {"four.tsp", "ceiling.tsp"}) {
        nmk_job::read_every_prefix(
            nmk_job::bytes_of_file(std::string(NMK_CASES_DIR "/tsplib/") + name),
            [](std::string text) { return read_tsplib("a.tsp", std::move(text), std::nullopt); });
    }
}

TEST(real_instances, have_the_points_of_a_plain_reading) {
    if (const auto missing = real_inputs::missing("tsp")) GTEST_SKIP() << *missing;
    const std::filesystem::path directory = real_inputs::path("tsp");
    for (const auto& file : std::filesystem::directory_iterator(directory)) {
        const nmk_job::MachiningJob job =
            nmk_job::job_of(nmk_job_files::read_job_file(file.path().string(), std::nullopt));
        ASSERT_EQ(job.tools.size(), 1U) << file.path();
        std::istringstream text(nmk_job::bytes_of_file(file.path()));
        std::string word;
        while (text >> word && word != "NODE_COORD_SECTION") {
        }
        std::size_t count = 0;
        double number = 0, x = 0, y = 0;
        while (text >> number >> x >> y) {
            ASSERT_LT(count, job.items.size()) << file.path();
            EXPECT_EQ(job.items[count++].start, giPoint3(x, y, 0.0)) << file.path();
        }
        EXPECT_EQ(count, job.items.size()) << file.path();
        EXPECT_GT(count, 0U) << file.path();
    }
}

}  // namespace
}  // namespace nmk_tsplib

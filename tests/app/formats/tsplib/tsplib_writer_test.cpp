// tsplib_writer: an instance with its nodes in another order.

#include "formats/tsplib/tsplib_writer.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "app/formats/job/job_fixtures.h"
#include "formats/tsplib/tsplib_reader.h"

namespace nmk_tsplib {
namespace {

std::string reversed(const std::string& text) {
    const nmk_job::MachiningJob job = nmk_job::job_of(read_tsplib("a.tsp", text, std::nullopt));
    nmk_job::JobOrder order = nmk_job::order_of_file(job);
    std::reverse(order.begin(), order.end());
    return write_tsplib(job, order);
}

TEST(tsplib_writer, exchanges_the_lines_of_the_nodes_and_keeps_all_others) {
    EXPECT_EQ(reversed("NAME: n\nDIMENSION : 3\nNODE_COORD_SECTION\n 1 0.50 0\n\n2 1e1 0\n"
                       "3\t2 0\nEOF\nleft over\n"),
              "NAME: n\nDIMENSION : 3\nNODE_COORD_SECTION\n3\t2 0\n\n2 1e1 0\n 1 0.50 0\nEOF\n"
              "left over\n");
}

TEST(tsplib_writer, keeps_any_line_ending_and_a_last_line_without_one) {
    EXPECT_EQ(reversed("NODE_COORD_SECTION\r\n1 0 0\r\n2 1 0"),
              "NODE_COORD_SECTION\r\n2 1 0\r\n1 0 0");
}

TEST(tsplib_writer, the_order_of_the_file_gives_the_file) {
    const std::string text = "COMMENT: x\nNODE_COORD_SECTION:\n2 1 1\n1 0 0\nEOF\n";
    EXPECT_EQ(reversed(reversed(text)), text);
    EXPECT_NE(reversed(text), text);
}

}  // namespace
}  // namespace nmk_tsplib

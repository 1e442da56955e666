// nmkAnnealStateTester_test.cpp: the checks that the annealer does at least as well as nearest
// neighbour.

#include <gtest/gtest.h>
#include <utils/utAssert.h>

#include <sstream>
#include <string>
#include <vector>

#include "ordering/plain_problems.h"

namespace {

std::vector<std::string> failures;

void keep_failure(const char* message, const char*, int, const char* function) {
    failures.push_back(std::string(function) + ": " + message);
}

struct nmkAnnealStateTester_runs : ::testing::Test {
    void SetUp() override {
        failures.clear();
        former = ut_set_assert_handler(keep_failure);
    }
    void TearDown() override { ut_set_assert_handler(former); }
    utAssertHandler former = nullptr;
};

std::vector<std::string> split(const std::string& line, char at) {
    std::vector<std::string> words;
    std::istringstream in(line);
    for (std::string word; std::getline(in, word, at);) words.push_back(word);
    return words;
}

TEST_F(nmkAnnealStateTester_runs, writes_the_header) {
    std::ostringstream out;
    nmkAnnealStateTester::start_tests(out);
    EXPECT_EQ(out.str(),
              "Number of points\tRun\tInitial length\tNearest neighbour\tFinal "
              "length\tIterations\tTime\n");
}

TEST_F(nmkAnnealStateTester_runs, writes_a_line_for_each_run) {
    giPoint3coPageArr points;
    for (double x : {0.0, 5.0, 1.0, 4.0, 2.0}) points.add(giPoint3(x, 0, 0));
    nmkAnnealStatePoints state(&points), best(&points);
    std::ostringstream out;
    nmkAnnealStateTester::test(state, best, 2, 0, out);
    const std::vector<std::string> lines = split(out.str(), '\n');
    ASSERT_EQ(lines.size(), 2u);
    for (std::size_t run = 0; run < 2; ++run) {
        const std::vector<std::string> words = split(lines[run], '\t');
        ASSERT_EQ(words.size(), 7u);
        EXPECT_EQ(words[0], "5");
        EXPECT_EQ(words[1], std::to_string(run));
        EXPECT_EQ(words[2], "14");
        EXPECT_EQ(words[3], "5");
        EXPECT_GE(std::stoi(words[5]), 15000);
    }
}

TEST_F(nmkAnnealStateTester_runs, raises_the_assertion_when_nearest_neighbour_is_better) {
    giPoint3coPageArr points;  // three points are left in their order, which is a poor one
    for (double x : {0.0, 5.0, 1.0}) points.add(giPoint3(x, 0, 0));
    nmkAnnealStatePoints state(&points), best(&points);
    std::ostringstream out;
    nmkAnnealStateTester::test(state, best, 1, 0, out);
    EXPECT_EQ(failures, (std::vector<std::string>{"nmkAnnealStateTester::test: Simulated annealing "
                                                  "worse than nearest neighbour."}));
    EXPECT_EQ(split(out.str(), '\t')[4], "9");
}

// Point 1 first makes 1 + 0.5 + 2.5, point 2 first would make 1 + 2 + 0.5.
TEST_F(nmkAnnealStateTester_runs, takes_the_lower_number_in_a_tie) {
    giPoint3coPageArr points;
    for (double x : {0.0, 1.0, -1.0, 1.5}) points.add(giPoint3(x, 0, 0));
    nmkAnnealStatePoints state(&points), best(&points);
    std::ostringstream out;
    nmkAnnealStateTester::test(state, best, 1, 0, out);
    EXPECT_EQ(split(out.str(), '\t')[3], "4");
}

TEST_F(nmkAnnealStateTester_runs, closes_the_tour_when_asked_to) {
    giPoint3coPageArr points;
    for (double x : {0.0, 1.0, 3.0}) points.add(giPoint3(x, 0, 0));
    nmkAnnealStatePoints state(&points), best(&points);
    for (const int closed : {0, 1}) {
        std::ostringstream out;
        nmkAnnealStateTester::test(state, best, 1, closed, out);
        EXPECT_EQ(split(out.str(), '\t')[3], closed != 0 ? "6" : "3");
    }
    EXPECT_TRUE(failures.empty());
}

TEST_F(nmkAnnealStateTester_runs, anneals_no_worse_than_nearest_neighbour) {
    const plain::TwoArrays arrays(plain::Spread::space, 25, 71);
    nmkAnnealStatePoints points(&arrays.starts), best_points(&arrays.starts);
    nmkAnnealStateReversibleLines lines(arrays.starts, arrays.ends);
    nmkAnnealStateReversibleLines best_lines(arrays.starts, arrays.ends);
    nmkAnnealStateNonReversible one_way(arrays.starts, arrays.ends, 0);
    nmkAnnealStateNonReversible best_one_way(arrays.starts, arrays.ends, 0);
    std::ostringstream out;
    nmkAnnealStateTester::test(points, best_points, 2, 0, out);
    nmkAnnealStateTester::test(lines, best_lines, 2, 1, out);
    nmkAnnealStateTester::test(one_way, best_one_way, 2, 0, out);
    EXPECT_TRUE(failures.empty()) << out.str();
}

}  // namespace

// Benchmark: what keep-outs cost an order, beside the same order without them, and the order of few
// holes between very many keep-outs.
//
// The processor's time of find(), its check of the keep-outs included. Holes are random, none of
// them inside; rectangles have the clearance that the tool gives them at least.
#include <nmktoolbox/ordering.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <utility>
#include <vector>

#include "stopwatch.h"

namespace {

constexpr double side = 1000.0;  // mm
constexpr double clearance = 0.001;
constexpr double chord_error = 0.01;

std::vector<nmkTravelKeepOut> rectangles(int rows, double width) {
    std::vector<nmkTravelKeepOut> keep_outs;
    const double step = side / rows;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < rows; ++column) {
            const double x = step * (column + 0.3), y = step * (row + 0.3);
            keep_outs.push_back(nmkTravelKeepOut::rectangle({x, y}, {x + width, y + width * 0.7},
                                                            clearance, chord_error));
        }
    }
    return keep_outs;
}

nmkTravelProblem holes(int count, std::vector<nmkTravelKeepOut> keep_outs) {
    nmkTravelProblem problem;
    problem.keep_outs = std::move(keep_outs);
    const nmkTravelWays ways(problem);
    std::mt19937 words(1);
    while (problem.items.size() < static_cast<std::size_t>(count)) {
        const double x = static_cast<double>(words()) * 0x1p-32 * side;
        const giPoint3 place(x, static_cast<double>(words()) * 0x1p-32 * side, 0.0);
        if (!ways.keep_out_at(place)) problem.items.push_back(nmkTravelItem::point(place));
    }
    problem.start = nmkTravelEnd::at_place({0.0, 0.0, 0.0});
    return problem;
}

double seconds_of(const nmkTravelProblem& problem) {
    double least = 1e9;
    for (int run = 0; run < stopwatch::rounds(3); ++run) {
        least = std::min(least, stopwatch::processor_seconds([&] {
                             const nmkTravelResult result = nmkTravelOrder(problem).find();
                             if (!result.error.empty()) std::printf("%s\n", result.error.c_str());
                         }));
    }
    return least;
}

struct Row {
    const char* name;
    int holes, rows;
    double width;  // of a rectangle, mm
    double target;
};

constexpr Row rows_beside_none[] = {
    {"1,000 holes and 25 keep-outs, beside none", 1000, 5, 30.0, 1.8},
    {"5,000 holes and 25 keep-outs, beside none", 5000, 5, 30.0, 1.4},
    {"5,000 holes and 400 keep-outs, beside none", 5000, 20, 12.0, 3.0},
    {"5,000 holes, 25 keep-outs far away, beside none", 5000, 5, -1.0, 1.2}};

std::vector<nmkTravelKeepOut> keep_outs_of(const Row& row) {
    if (row.width > 0.0) return rectangles(row.rows, row.width);
    std::vector<nmkTravelKeepOut> far = rectangles(row.rows, 30.0);
    for (nmkTravelKeepOut& keep_out : far) {
        for (giPoint2& corner : keep_out.parts[0]) corner.x += 2.0 * side;
    }
    return far;
}

bool measure(const Row& row) {
    nmkTravelProblem problem = holes(stopwatch::size(row.holes, 200), keep_outs_of(row));
    const double with = seconds_of(problem);
    problem.keep_outs.clear();
    const double without = seconds_of(problem);
    return stopwatch::report(row.name, with, without, row.target, true);
}

void print_many_keep_outs() {
    const int rows = stopwatch::size(32, 6);
    const nmkTravelProblem problem = holes(100, rectangles(rows, side / rows * 0.5));
    const double taken = seconds_of(problem);
    std::printf("100 holes between %d rectangles: %.2f s\n", rows * rows, taken);
}

}  // namespace

int main() {
    bool reached = true;
    for (const Row& row : rows_beside_none) reached &= measure(row);
    print_many_keep_outs();
    return reached ? 0 : 1;
}

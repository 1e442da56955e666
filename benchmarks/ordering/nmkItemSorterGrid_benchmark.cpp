// Benchmark: the grid types on 100,000 items in 1,000 rows, beside the plain way on 10,000 items in
// as many rows, and beside themselves there (the sort alone, by the processor's time). Ten times
// the items may take as much longer as n log n grows.
#include <cmath>

#include "ordering/plain_sorters.h"
#include "ordering/sort_samples.h"
#include "stopwatch.h"

using namespace sort_samples;

namespace {

const int few = stopwatch::size(10000, 500);
const int many = stopwatch::size(100000, 5000);
const int rows = stopwatch::size(1000, 50);
constexpr double target_beside_plain = 0.5;
constexpr double tolerance = 0.01;

// Rows one apart in the key that makes rows of a type, items in them in no order.
void fill_rows(Holes& holes, nmkSortType type, int n) {
    std::mt19937 words(1);
    for (int i = 0; i < n; ++i) {
        const double row = static_cast<double>(words() % static_cast<unsigned>(rows));
        const double along = static_cast<double>(words() % 1000000) * 0.001;
        if (type == nmkSortTypeX) holes.add(along, row);
        if (type == nmkSortTypeY) holes.add(row, along);
        if (type == nmkSortTypeDiag1) holes.add(along, along + row);
        if (type == nmkSortTypeConcentric) {
            holes.add((row + 1.0) * std::sin(along), (row + 1.0) * std::cos(along));
        }
    }
}

std::vector<int> order_of(nmkSortType type, Holes& holes) {
    nmkPointSorter sorter(type);
    holes.give_to(sorter);
    return indices(sorter.sort(tolerance, giPoint3(0, 0, 0), nullptr));
}

// The least processor time of some sorts of the items, without giving them and reading them back.
double sort_seconds(nmkSortType type, Holes& holes) {
    double least = 1e9;
    for (int run = 0; run < stopwatch::rounds(20); ++run) {
        nmkPointSorter sorter(type);
        holes.give_to(sorter);
        least = std::min(least, stopwatch::processor_seconds(
                                    [&] { sorter.sort(tolerance, giPoint3(0, 0, 0), nullptr); }));
    }
    return least;
}

// The comparator is as the point sorter has left it for the type.
std::vector<int> plain_order(Holes& holes) {
    nmkItemComparator::set_comparison_point(giPoint3(0, 0, 0));
    nmkSortList source, result;
    holes.give_to(source);
    plain_sorters::grid(source, result, tolerance, {});
    return indices(result);
}

bool measure(const char* name, nmkSortType type) {
    Holes small, large;
    fill_rows(small, type, few);
    fill_rows(large, type, many);
    const double growth = many * std::log(double(many)) / (few * std::log(double(few)));
    std::vector<int> ours, plain, all;
    ours = order_of(type, small);
    const double our_time = stopwatch::least_seconds(10, [&] { all = order_of(type, large); });
    const double plain_time = stopwatch::seconds([&] { plain = plain_order(small); });
    const bool same = ours == plain && all.size() == static_cast<std::size_t>(many);
    const std::string title = std::string("grid ") + name + ", 100,000 in 1,000 rows";
    const bool reached =
        stopwatch::report(title.c_str(), our_time, plain_time, target_beside_plain, same);
    const std::string growing = std::string("grid ") + name + ", beside itself at 10,000";
    const double few_seconds = sort_seconds(type, small);
    return stopwatch::report(growing.c_str(), sort_seconds(type, large), few_seconds, growth,
                             same) &&
           reached;
}

}  // namespace

int main() {
    bool reached = measure("X", nmkSortTypeX);
    reached = measure("Y", nmkSortTypeY) && reached;
    reached = measure("DIAG1", nmkSortTypeDiag1) && reached;
    reached = measure("Concentric", nmkSortTypeConcentric) && reached;
    return reached ? 0 : 1;
}

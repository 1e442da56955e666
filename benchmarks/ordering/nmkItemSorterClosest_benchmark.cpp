// Benchmark: the closest sorter on 10,000 points, beside sorting everything for each point taken.
#include "ordering/plain_sorters.h"
#include "ordering/sort_samples.h"
#include "stopwatch.h"

using namespace sort_samples;

namespace {

const int points = stopwatch::size(10000, 500);
constexpr double target = 0.001;

bool measure(const char* name, Holes& holes) {
    std::vector<int> ours, plain;
    const giPoint3 start(0, 0, 0);
    nmkItemComparator::primary_sort(&nmkItemSortMethods::compare_closest);
    const double our_time = stopwatch::seconds([&] {
        nmkItemComparator::set_comparison_point(start);
        nmkItemSorterClosest sorter;
        holes.give_to(sorter);
        ours = indices(sorter.sort(0.0));
    });
    const double plain_time = stopwatch::seconds([&] {
        nmkItemComparator::set_comparison_point(start);
        nmkSortList source, result;
        holes.give_to(source);
        plain_sorters::closest(source, result, nullptr);
        plain = indices(result);
    });
    return stopwatch::report(name, our_time, plain_time, target, ours == plain);
}

}  // namespace

int main() {
    Holes random, grid;
    fill(random, Layout::random, points, 1);
    for (int i = 0; i < points; ++i) {
        const int row = i / 100;
        grid.add(i * 37 % 100, row);
    }
    const bool random_is_fast = measure("closest, 10,000 random points", random);
    const bool grid_is_fast = measure("closest, 10,000 points on a grid", grid);
    return random_is_fast && grid_is_fast ? 0 : 1;
}

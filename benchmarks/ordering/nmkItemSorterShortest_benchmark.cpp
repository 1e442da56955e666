// Benchmark: the elastic ring on 1,000 items, beside asking every item at every ring point.
#include <nmktoolbox/runtime/nmkVersion.h>

#include "ordering/plain_sorters.h"
#include "ordering/sort_samples.h"
#include "stopwatch.h"

using namespace sort_samples;

namespace {

const int count = stopwatch::size(1000, 60);
constexpr double lines_target = 0.4;
constexpr double holes_target = 0.8;

void start_over() {
    nmkItemComparator::primary_sort(&nmkItemSortMethods::compare_closest);
    nmkItemComparator::set_comparison_point(giPoint3(0, 0, 0));
}

template <class Items>
bool measure(const char* name, Items& items, double target) {
    std::vector<int> ours, plain;
    const double our_time = stopwatch::seconds([&] {
        start_over();
        nmkItemSorterShortest sorter;
        items.give_to(sorter);
        ours = indices(sorter.sort(0.0));
    });
    const double plain_time = stopwatch::seconds([&] {
        start_over();
        nmkSortPointList source;
        nmkSortList result;
        items.give_to(source);
        plain_sorters::elastic(source, result);
        plain = indices(result);
    });
    return stopwatch::report(name, our_time, plain_time, target, ours == plain);
}

}  // namespace

int main() {
    nmkVersion::get_from_manager("itemsorter").set_level(0);
    std::mt19937 words(1);
    Lines lines;
    Holes holes;
    for (int i = 0; i < count; ++i) {
        const double x = static_cast<double>(words() % 100000) * 0.01;
        const double y = static_cast<double>(words() % 100000) * 0.01;
        lines.add(giPoint3(x, y, 0), giPoint3(x + 1, y, 0));
        holes.add(x, y);
    }
    const bool lines_are_fast = measure("elastic ring, 1,000 lines", lines, lines_target);
    const bool holes_are_fast =
        measure("elastic ring, 1,000 items of a caller's", holes, holes_target);
    return lines_are_fast && holes_are_fast ? 0 : 1;
}

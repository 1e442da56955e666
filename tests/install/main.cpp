// main: orders three holes on a line, which uses the library and the platform libraries below it.

#include <nmktoolbox.h>
#include <cstdio>

namespace {

struct Hole : nmkSortItemWithPoint {
    explicit Hole(double x) : place(x, 0.0, 0.0) {}
    const giPoint3& get_point() const override { return place; }
    giPoint3 place;
};

}  // namespace

int main() {
    Hole holes[] = {Hole(30.0), Hole(10.0), Hole(20.0)};
    nmkPointSorter sorter(nmkSortTypeClosest);
    for (Hole& hole : holes) {
        sorter.add_item(&hole);
    }
    nmkSortList& order = sorter.sort(0.01, giPoint3(0.0, 0.0, 0.0), nullptr);
    while (order.forwards()) {
        std::printf("%g\n", static_cast<Hole*>(order.read().get())->place.x);
    }
}

// order_holes: holes in the order in which the drill travels little.
#include <nmktoolbox/ordering.h>

#include <cstdio>
#include <deque>

struct Hole : nmkSortItemWithPoint {
    Hole(double x, double y) : place(x, y, 0.0) {}
    const giPoint3& get_point() const override { return place; }
    giPoint3 place;
};

int main() {
    std::deque<Hole> holes;
    nmkPointSorter sorter(nmkSortTypeShortest);
    for (int i = 0; i < 8; ++i) {
        holes.emplace_back(i * 37 % 80, i * 53 % 60);
        holes.back().set_index(i);
        sorter.add_item(&holes.back());
    }
    nmkSortList& order = sorter.sort(0.01, giPoint3(0.0, 0.0, 0.0), nullptr);
    double travel = 0.0;
    giPoint3 at = static_cast<Hole&>(*order.read_first()).place;
    while (order.forwards() != 0) {
        const Hole& next = static_cast<Hole&>(*order.read());
        travel += at.distance(next.place);
        at = next.place;
        std::printf("%d ", next.index());
    }
    std::printf("- travel %.1f mm\n", travel);
}

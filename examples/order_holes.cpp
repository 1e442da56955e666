// order_holes: holes in the order in which the drill travels little.
#include <nmktoolbox/ordering.h>

#include <cstdio>

int main() {
    nmkTravelProblem problem;
    for (int i = 0; i < 8; ++i) {
        problem.items.push_back(nmkTravelItem::point(giPoint3(i * 37 % 80, i * 53 % 60, 0.0)));
    }
    const nmkTravelResult result = nmkTravelOrder(problem).find();
    for (const int hole : result.order) {
        std::printf("%d ", hole);
    }
    std::printf("- travel %.1f mm\n", result.length);
}

#include <nmktoolbox/curves/nmkgiPoint3Set.h>

namespace {

// Deliberate: "less" and "different" are asked, never "greater", so that NaN differs from
// everything and is always placed on the same side.
int compare_coordinates(double a, double b) {
    if (a < b) return -1;
    return a == b ? 0 : 1;
}

}  // namespace

nmkgiPoint3Set::nmkgiPoint3Set() : nmkBalBinTree(compare) {}

nmkgiPoint3Set::nmkgiPoint3Set(fbaAllocatorcoPrf& allocator) : nmkBalBinTree(compare, allocator) {}

const giPoint3* nmkgiPoint3Set::add(const giPoint3* point) {
    const giPoint3* const equal = exist(point);
    if (equal != nullptr) return equal;
    nmkBalBinTree::add(point);
    return point;
}

const giPoint3* nmkgiPoint3Set::exist(const giPoint3* point) {
    return static_cast<const giPoint3*>(nmkBalBinTree::exist(point));
}

int nmkgiPoint3Set::compare(const void* a, const void* b) {
    if (a == b) return 0;
    const giPoint3& first = *static_cast<const giPoint3*>(a);
    const giPoint3& second = *static_cast<const giPoint3*>(b);
    const int by_x = compare_coordinates(first.x, second.x);
    if (by_x != 0) return by_x;
    const int by_y = compare_coordinates(first.y, second.y);
    return by_y != 0 ? by_y : compare_coordinates(first.z, second.z);
}

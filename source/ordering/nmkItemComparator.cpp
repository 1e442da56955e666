// nmkItemComparator: the configuration that every sort in the process shares.
#include <nmktoolbox/ordering/nmkItemComparator.h>
#include <nmktoolbox/ordering/nmkItemSortMethods.h>

namespace {

struct Configuration {
    nmkItemComparator::Comparison primary = &nmkItemSortMethods::compare_closest;
    nmkItemComparator::Comparison secondary = &nmkItemSortMethods::compare_closest;
    nmkItemComparator::Equality equality = &nmkItemSortMethods::equal_closest;
    giPoint3 compare_point = giPoint3(0.0, 0.0, 0.0);
};

// Constructed on first use, so that another static object may sort while the program starts.
Configuration& configuration() {
    static Configuration shared;
    return shared;
}

}  // namespace

void nmkItemComparator::primary_sort(Comparison comparison) {
    configuration().primary = comparison;
}
void nmkItemComparator::secondary_sort(Comparison comparison) {
    configuration().secondary = comparison;
}
void nmkItemComparator::equality_method(Equality method) { configuration().equality = method; }
void nmkItemComparator::set_comparison_point(const giPoint3& point) {
    configuration().compare_point = point;
}

nmkItemComparator::Comparison nmkItemComparator::primary_sort() { return configuration().primary; }
nmkItemComparator::Comparison nmkItemComparator::secondary_sort() {
    return configuration().secondary;
}
nmkItemComparator::Equality nmkItemComparator::equality_method() {
    return configuration().equality;
}
const giPoint3& nmkItemComparator::comparison_point() { return configuration().compare_point; }

int nmkItemComparator::compare(const nmkSortItemPrf& a, const nmkSortItemPrf& b) {
    const Configuration& shared = configuration();
    return shared.primary(a, b, shared.compare_point);
}

int nmkItemComparator::second_compare(const nmkSortItemPrf& a, const nmkSortItemPrf& b) {
    const Configuration& shared = configuration();
    return shared.secondary(a, b, shared.compare_point);
}

int nmkItemComparator::equal(const nmkSortItemPrf& a, const nmkSortItemPrf& b, double tolerance) {
    const Configuration& shared = configuration();
    return shared.equality(a, b, shared.compare_point, tolerance);
}

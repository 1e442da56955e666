#include "ordering/sort_methods.h"

#include <nmktoolbox/ordering/nmkItemSortMethods.h>

#include <algorithm>
#include <iterator>

namespace nmk_ordering {
namespace {

using Methods = nmkItemSortMethods;

double tolerance_itself(double tolerance) { return tolerance; }

double same_for_all(const giPoint3&, const giPoint3&) { return 0.0; }

double no_limit(double) { return 0.0; }

// The two methods of one suffix, and their keys.
struct SortMethod {
    nmkItemComparator::Comparison compare;
    sort_keys::Key key;
    nmkItemComparator::Equality equal;
    sort_keys::Key row_key;
    double (*limit)(double tolerance);
};

constexpr SortMethod sort_methods[] = {
    {&Methods::compare_x, sort_keys::x, &Methods::equal_x, sort_keys::x, tolerance_itself},
    {&Methods::compare_y, sort_keys::y, &Methods::equal_y, sort_keys::y, tolerance_itself},
    {&Methods::compare_z, sort_keys::z, &Methods::equal_z, sort_keys::z, tolerance_itself},
    {&Methods::compare_xy, sort_keys::xy, &Methods::equal_xy, sort_keys::xy, tolerance_itself},
    {&Methods::compare_yx, sort_keys::yx, &Methods::equal_yx, sort_keys::yx, tolerance_itself},
    {&Methods::compare_closest, sort_keys::closest, &Methods::equal_closest, sort_keys::closest,
     sort_keys::closest_limit},
    {&Methods::compare_radial, sort_keys::radial, &Methods::equal_radial, same_for_all, no_limit},
};

// The row of the table in which `column` holds `method`; null for a caller's own.
template <class Method>
const SortMethod* find_method(Method SortMethod::*column, Method method) {
    const SortMethod* const found =
        std::find_if(std::begin(sort_methods), std::end(sort_methods),
                     [&](const SortMethod& row) { return row.*column == method; });
    return found != std::end(sort_methods) ? found : nullptr;
}

}  // namespace

sort_keys::Key key_of(nmkItemComparator::Comparison comparison) {
    const SortMethod* const method = find_method(&SortMethod::compare, comparison);
    return method != nullptr ? method->key : nullptr;
}

std::optional<RowRule> row_rule_of(nmkItemComparator::Equality equality, double tolerance) {
    const SortMethod* const method = find_method(&SortMethod::equal, equality);
    if (method == nullptr) return std::nullopt;
    return RowRule{method->row_key, method->limit(tolerance)};
}

}  // namespace nmk_ordering

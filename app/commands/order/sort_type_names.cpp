// sort_type_names: the names of the types of order on the command line.

#include "commands/order/sort_type_names.h"

#include <algorithm>
#include <iterator>

namespace nmk_order {

namespace {

constexpr nmk_shell::Choice<OrderType> named_types[] = {
    {"best", best_order},
    {"none", nmkSortTypeNone},
    {"shortest", nmkSortTypeShortest},
    {"closest", nmkSortTypeClosest},
    {"concentric", nmkSortTypeConcentric},
    {"radial", nmkSortTypeRadial},
    {"x", nmkSortTypeX},
    {"y", nmkSortTypeY},
    {"diag1", nmkSortTypeDiag1},
    {"diag2", nmkSortTypeDiag2},
    {"xz", nmkSortTypeXZ},
    {"yz", nmkSortTypeYZ},
    {"diag1z", nmkSortTypeDiag1Z},
    {"diag2z", nmkSortTypeDiag2Z},
    {"one-way", nmkSortTypeShortestOneWay},
};

}  // namespace

std::span<const nmk_shell::Choice<OrderType>> sort_types() { return named_types; }

std::string_view sort_type_name(OrderType type) {
    const auto* const found = std::find_if(std::begin(named_types), std::end(named_types),
                                           [&](const auto& each) { return each.value == type; });
    return found == std::end(named_types) ? std::string_view() : found->name;
}

bool anneals(OrderType type) {
    // As sorters: clang-tidy takes the comparisons of an optional for one and the same.
    const nmkSortType sorter = type.value_or(nmkSortTypeNone);
    return sorter == nmkSortTypeShortest || sorter == nmkSortTypeShortestOneWay;
}

}  // namespace nmk_order

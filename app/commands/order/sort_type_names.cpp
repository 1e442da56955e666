// sort_type_names: the names of the sort types on the command line.

#include "commands/order/sort_type_names.h"

#include <algorithm>

namespace nmk_order {

namespace {

struct NamedType {
    std::string_view name;
    nmkSortType type;
};

constexpr NamedType named_types[] = {
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

bool same_letters(char a, char small) {
    return a == small || ('A' <= a && a <= 'Z' && a - 'A' + 'a' == small);
}

}  // namespace

std::optional<nmkSortType> sort_type_of_name(std::string_view name) {
    for (const NamedType& known : named_types) {
        if (std::equal(name.begin(), name.end(), known.name.begin(), known.name.end(),
                       same_letters)) {
            return known.type;
        }
    }
    return std::nullopt;
}

std::string_view sort_type_name(nmkSortType type) {
    const auto* const found = std::find_if(std::begin(named_types), std::end(named_types),
                                           [&](const NamedType& t) { return t.type == type; });
    return found == std::end(named_types) ? std::string_view() : found->name;
}

std::string sort_type_name_list() {
    std::string list;
    for (const NamedType& known : named_types) {
        list += (list.empty() ? "" : ", ") + std::string(known.name);
    }
    return list;
}

}  // namespace nmk_order

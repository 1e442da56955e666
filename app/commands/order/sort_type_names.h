// sort_type_names.h: the names of the sort types on the command line.
#pragma once

#include <nmktoolbox/ordering/nmkSortType.h>

#include <optional>
#include <string>
#include <string_view>

namespace nmk_order {

/// The type of a name in upper or lower case; empty for an unknown name.
std::optional<nmkSortType> sort_type_of_name(std::string_view name);

/// The name of a type; "" for a type that is not supported.
std::string_view sort_type_name(nmkSortType type);

/// All names in the order of the types, "none, shortest, closest, ...".
std::string sort_type_name_list();

}  // namespace nmk_order

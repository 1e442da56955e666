// sort_type_names.h: the names of the sort types on the command line.
#pragma once

#include <nmktoolbox/ordering/nmkSortType.h>

#include <span>
#include <string_view>

#include "shell/option_values.h"

namespace nmk_order {

/// All supported types with their names, in the order of the types.
std::span<const nmk_shell::Choice<nmkSortType>> sort_types();

/// The name of a type; "" for a type that is not supported.
std::string_view sort_type_name(nmkSortType type);

}  // namespace nmk_order

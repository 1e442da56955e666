// sort_type_names.h: the names of the types of order on the command line.
#pragma once

#include <nmktoolbox/ordering/nmkSortType.h>

#include <optional>
#include <span>
#include <string_view>

#include "shell/option_values.h"

namespace nmk_order {

/// A type of order: one of the library's sorters, or empty for best_order.
using OrderType = std::optional<nmkSortType>;

/// The near-optimal order of nmkTravelOrder.
constexpr OrderType best_order = std::nullopt;

/// All supported types with their names, the best first, then the sorters in their order.
std::span<const nmk_shell::Choice<OrderType>> sort_types();

/// The name of a type; "" for a type that is not supported.
std::string_view sort_type_name(OrderType type);

/// Whether the library anneals for this type: `shortest` and `one-way`.
bool anneals(OrderType type);

}  // namespace nmk_order

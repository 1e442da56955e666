// similar_names.h: names similar to a mistyped one.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace nmk_text {

/// Up to five of `names` that are similar to `wanted`, the most similar first: names that contain
/// it or are contained in it, and names that differ by a few typing errors. Case is ignored.
std::vector<std::string> similar_names(std::string_view wanted, std::span<const std::string> names);

/// "did you mean a, b or c?" with these names; "" for none.
std::string did_you_mean(std::span<const std::string> names);

/// "a, b or c"
std::string list_of(std::span<const std::string> names);

}  // namespace nmk_text

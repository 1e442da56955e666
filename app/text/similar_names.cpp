// similar_names: names similar to a mistyped one.

#include "text/similar_names.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

#include "text/ascii.h"

namespace nmk_text {

namespace {

constexpr std::size_t max_similar_names = 5;
constexpr std::size_t max_compared_length = 200;  // a longer name is not a typing error
constexpr std::size_t short_name = 3;             // up to here one typing error, otherwise two
constexpr std::size_t too_different = 1000;

/// The number of letters to insert, remove or replace to get from one text to the other.
std::size_t edit_distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row[to.size()];
}

/// How different two names are: 0 for equal names, too_different for names that are not similar.
std::size_t difference(std::string_view wanted, std::string_view name) {
    const std::size_t distance = edit_distance(wanted, name);
    const std::size_t allowed = wanted.size() <= short_name ? 1 : 2;
    if (distance <= std::max(allowed, wanted.size() / 4)) return distance;
    const bool one_contains_the_other = wanted.size() >= 3 && name.size() >= 3 &&
                                        (name.find(wanted) != std::string_view::npos ||
                                         wanted.find(name) != std::string_view::npos);
    return one_contains_the_other ? 100 + distance : too_different;
}

}  // namespace

std::vector<std::string> similar_names(std::string_view wanted,
                                       std::span<const std::string> names) {
    if (wanted.empty() || wanted.size() > max_compared_length) return {};
    const std::string in_lower_case = lower_case(wanted);
    std::vector<std::pair<std::size_t, std::string>> found;
    for (const std::string& name : names) {
        const std::size_t distance = difference(in_lower_case, lower_case(name));
        if (distance < too_different) found.emplace_back(distance, name);
    }
    std::sort(found.begin(), found.end());
    if (found.size() > max_similar_names) found.resize(max_similar_names);
    std::vector<std::string> similar;
    for (auto& [distance, name] : found) similar.push_back(std::move(name));
    return similar;
}

std::string list_of(std::span<const std::string> names) {
    std::string list;
    for (std::size_t i = 0; i < names.size(); ++i) {
        list += i == 0 ? "" : i + 1 == names.size() ? " or " : ", ";
        list += names[i];
    }
    return list;
}

std::string did_you_mean(std::span<const std::string> names) {
    return names.empty() ? "" : "did you mean " + list_of(names) + "?";
}

}  // namespace nmk_text

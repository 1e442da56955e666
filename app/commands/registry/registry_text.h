// registry_text.h: a tree of keys as lines of text.
#pragma once

#include <string>

#include "commands/registry/registry_tree.h"

namespace nmk_registry {

/// The heading, then a line for each value, "name = data  TYPE", and each key with what is below
/// it. Characters that a terminal would act on are escaped.
std::string tree_text(const std::string& heading, const Key& tree);

}  // namespace nmk_registry

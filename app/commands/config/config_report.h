// config_report.h: what was found of a configuration, as text and as JSON.
#pragma once

#include <string>

#include "commands/config/config_search.h"

namespace nmk_config {

/// The facts in lines of a name and a value, for `nmk config show`.
std::string facts_text(const ConfigFacts& facts);

/// One line, for `nmk config validate`: "file:3:14: message", or "file: valid, version 2".
std::string verdict_text(const ConfigFacts& facts);

std::string facts_json(const ConfigFacts& facts, const std::optional<VersionRange>& versions);

}  // namespace nmk_config

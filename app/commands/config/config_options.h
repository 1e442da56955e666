// config_options.h: the command line of `nmk config`.
#pragma once

#include <optional>
#include <string>

#include "shell/option_table.h"

namespace nmk_config {

enum class Action { show, validate, make };

/// Versions from `least` to `greatest`, both included.
struct VersionRange {
    int least, greatest;
};

/// The name of a configuration: a file of its own, or what the names of all its versions begin
/// with.
struct ConfigName {
    std::string text;
    bool is_file = false;   // it ends in ".xml", or is "-"
    std::string directory;  // with its slash; empty for the current one
    std::string base;       // the last part, without version and ".xml"
};

struct ConfigOptions {
    Action action = Action::show;
    ConfigName name;
    std::optional<VersionRange> versions;
    std::string root;  // of a new document; empty: the base name
    bool force = false, json = false, quiet = false;
};

void declare_config_options(nmk_shell::OptionTable& table, ConfigOptions& options);

}  // namespace nmk_config

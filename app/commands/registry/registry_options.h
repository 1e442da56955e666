// registry_options.h: the command line of `nmk registry`.
#pragma once

#include <string>
#include <vector>

#include "commands/registry/registry_path.h"
#include "commands/registry/registry_value.h"
#include "shell/option_table.h"

namespace nmk_registry {

enum class Action { list, get, set, erase, copy, export_tree, import_tree };

struct RegistryOptions {
    Action action = Action::list;
    std::vector<std::string> words;  // what follows the action
    DWORD type = REG_SZ;
    double seconds = 10;
    std::string output_file;
    bool recursive = false, json = false, quiet = false;

    // What the words mean, by the action; read by the check of the options.
    bool has_key = false;
    KeyPath key, target;
    bool has_name = false;
    Value value;
    std::string input_file;
};

void declare_registry_options(nmk_shell::OptionTable& table, RegistryOptions& options);

}  // namespace nmk_registry

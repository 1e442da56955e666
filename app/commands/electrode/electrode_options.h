// electrode_options.h: the command line of `nmk electrode`.
#pragma once

#include <string>
#include <vector>

#include "shell/option_table.h"

namespace nmk_electrode {

enum class Action { create, add, list, verify, extract };

/// An electrode to put into an archive, and its files.
struct NewElectrode {
    std::string name;
    std::string geometry, metadata;
    std::vector<std::string> data_directories, additional_files;
};

struct ElectrodeOptions {
    Action action = Action::list;
    std::vector<std::string> words;  // what follows the action
    std::vector<NewElectrode> electrodes;
    std::string data_name = "html";  // of the data directory in the archive
    std::string output_directory;
    bool json = false, quiet = false;

    const std::string& file_name() const { return words.front(); }
    const std::string& electrode_name() const { return words.back(); }

    /// Whether the action writes the file.
    bool writes() const { return action == Action::create || action == Action::add; }
};

void declare_options(nmk_shell::OptionTable& table, ElectrodeOptions& options);

}  // namespace nmk_electrode

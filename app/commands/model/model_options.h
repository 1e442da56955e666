// model_options.h: the command line of `nmk model`.
#pragma once

#include <string>
#include <vector>

#include "commands/model/read_model.h"
#include "commands/model/view_side.h"
#include "shell/option_table.h"

namespace nmk_model {

enum class Action { info, convert, view };

struct ModelOptions {
    Action action = Action::info;
    std::vector<std::string> files;  // to read; for convert one to read and one to write
    ReadingOptions reading;
    double scale = 1.0;  // of convert, as the two below
    bool merge = false;
    bool normals = false;
    ViewSide from = ViewSide::iso;    // of view, as the two below
    std::string svg_file, html_file;  // empty: not written
    bool json = false;
    bool quiet = false;
};

/// Declares the options, which are read into `options`.
void declare_model_options(nmk_shell::OptionTable& table, ModelOptions& options);

}  // namespace nmk_model

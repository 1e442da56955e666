// model_info: `nmk model info`: prints the figures of models.

#include "commands/model/model_info.h"

#include <vector>

#include "commands/model/figures_text.h"
#include "shell/command_result.h"

namespace nmk_model {

namespace {

void print_figures(const ModelOptions& options, const std::vector<ModelFigures>& all,
                   std::ostream& out) {
    if (options.json) {
        out << figures_json(all);
    } else if (!options.quiet && !all.empty()) {
        out << (options.files.size() == 1 ? figures_list(all.front()) : figures_table(all));
    }
}

}  // namespace

int print_info(const ModelOptions& options, nmkProgressBreak& progress, std::ostream& out,
               std::ostream& err) {
    std::vector<ModelFigures> all;
    std::vector<std::string> problems;
    for (const std::string& file : options.files) {
        ReadingFailure failure;
        const auto model = read_model(file, options.reading, progress, failure);
        if (failure.is_stopped) {
            err << "nmk model: stopped; nothing was printed\n";
            return nmk_shell::no_result;
        }
        if (model == nullptr) {
            problems.push_back(failure.error.text());
        } else {
            all.push_back(model_figures(*model, welded_mesh(*model)));
        }
    }
    if (!all.empty() || options.files.size() > 1) print_figures(options, all, out);
    int code = nmk_shell::finish(out, err, "the figures");
    for (const std::string& problem : problems) code = nmk_shell::refuse(err, problem);
    return code;
}

}  // namespace nmk_model

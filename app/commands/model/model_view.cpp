// model_view: `nmk model view`: draws a model as a picture and as a page.

#include "commands/model/model_view.h"

#include <optional>
#include <vector>

#include "commands/model/model_page.h"
#include "commands/model/model_picture.h"
#include "shell/command_result.h"
#include "shell/standard_output.h"

namespace nmk_model {

namespace {

int stopped(std::ostream& err) {
    err << "nmk model: stopped; nothing was written\n";
    return nmk_shell::no_result;
}

/// The outputs; nothing after a request to stop.
std::optional<std::vector<nmk_files::OutputFile>> outputs(const ModelOptions& options,
                                                          const WeldedMesh& mesh,
                                                          const ModelFigures& figures,
                                                          nmkProgressBreak& progress) {
    std::vector<nmk_files::OutputFile> files;
    if (!options.svg_file.empty()) {
        const auto view =
            shaded_view(mesh, drawn_edges(mesh), options.from, largest_image, progress);
        if (!view) return std::nullopt;
        files.push_back({options.svg_file, model_picture(figures, *view, options.from)});
    }
    if (!options.html_file.empty()) {
        auto page = model_page(figures, mesh, options.from, progress);
        if (!page) return std::nullopt;
        files.push_back({options.html_file, *std::move(page)});
    }
    return files;
}

}  // namespace

int view_model(const ModelOptions& options, nmkProgressBreak& progress, std::ostream& out,
               std::ostream& err) {
    ReadingFailure failure;
    const auto model = read_model(options.files[0], options.reading, progress, failure);
    if (failure.is_stopped) return stopped(err);
    if (model == nullptr) return nmk_shell::refuse(err, failure.error.text());
    const WeldedMesh mesh = welded_mesh(*model);
    if (mesh.triangles.empty()) {
        err << nmk_text::line_text(model->name) << ": has no triangles; nothing was written\n";
        return nmk_shell::no_result;
    }
    const ModelFigures figures = model_figures(*model, mesh);
    const auto files = outputs(options, mesh, figures, progress);
    if (!files) return stopped(err);
    const auto written = nmk_shell::write_outputs(*files, out);
    if (!written) return nmk_shell::refuse(err, written.error().text());
    if (!options.quiet) {
        std::ostream& stream = nmk_shell::report_stream(*files, out, err);
        stream << nmk_text::line_text(figures.name) << ": " << model_summary(figures) << "; "
               << fault_summary(figures) << "\n";
        nmk_shell::print_written(stream, *written);
    }
    return nmk_shell::finish(out, err, "the picture", *written);
}

}  // namespace nmk_model

// model_convert: `nmk model convert`: writes a model in another format.

#include "commands/model/model_convert.h"

#include <nmktoolbox/files/nmkFilenameExt.h>

#include <utility>
#include <vector>

#include "commands/model/change_model.h"
#include "files/read_whole_file.h"
#include "shell/command_result.h"
#include "shell/standard_output.h"

namespace nmk_model {

namespace {

int stopped(std::ostream& err) {
    err << "nmk model: stopped; nothing was written\n";
    return nmk_shell::no_result;
}

void change(Model& model, const ModelOptions& options) {
    scale_model(model, options.scale);
    if (options.merge) merge_blocks(model);
    options.normals ? add_missing_normals(model) : remove_normals(model);
}

std::string counted(std::int64_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

/// "part.stl: 12 triangles in 1 block", and what was left out.
std::string report(const Model& model) {
    std::string text = nmk_text::line_text(model.name) + ": " +
                       counted(model.triangle_count(), "triangle") + " in " +
                       counted(static_cast<std::int64_t>(model.blocks.size()), "block") + "\n";
    if (model.invalid_triangles > 0) {
        text += "Left out " + counted(model.invalid_triangles, "triangle") +
                " with a corner that is not a number, or beyond 1e9 mm.\n";
    }
    return text;
}

int write(const Model& model, const ModelOptions& options, ModelOutput output, std::ostream& out,
          std::ostream& err) {
    const std::string& name = options.files[1];
    const std::vector<nmk_files::OutputFile> files = {{name, std::move(output.bytes)}};
    const auto written = nmk_shell::write_outputs(files, out);
    if (!written) return nmk_shell::refuse(err, written.error().text());
    if (!options.quiet) {
        std::ostream& stream = nmk_shell::report_stream(files, out, err);
        stream << report(model);
        nmk_shell::print_written(stream, *written);
    }
    return nmk_shell::finish(out, err, "the model", *written);
}

}  // namespace

std::optional<OutputFormat> output_format(const std::string& file_name) {
    const auto ends_with = [&](const char* extension) {
        return nmkCheckFilenameExt(file_name.c_str(), extension) != 0;
    };
    if (file_name == nmk_files::standard_stream || ends_with(".stl")) {
        return OutputFormat::binary_stl;
    }
    if (ends_with(".nmt") || ends_with(".nmlmt")) return OutputFormat::nmt;
    return std::nullopt;
}

int convert_model(const ModelOptions& options, nmkProgressBreak& progress, std::ostream& out,
                  std::ostream& err) {
    ReadingFailure failure;
    const auto model = read_model(options.files[0], options.reading, progress, failure);
    if (failure.is_stopped) return stopped(err);
    if (model == nullptr) return nmk_shell::refuse(err, failure.error.text());
    if (model->triangle_count() == 0) {
        err << nmk_text::line_text(model->name) << ": has no triangles; nothing was written\n";
        return nmk_shell::no_result;
    }
    change(*model, options);
    ModelOutput output = write_model(*model, *output_format(options.files[1]), progress);
    if (output.is_stopped) return stopped(err);
    if (output.is_too_large) {
        return nmk_shell::refuse(err, options.files[1] + ": too many triangles for the format");
    }
    return write(*model, options, std::move(output), out, err);
}

}  // namespace nmk_model

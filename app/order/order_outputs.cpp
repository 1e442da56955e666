// order_outputs: the files that `nmk order` writes, all of them or none.

#include "order/order_outputs.h"

#include <filesystem>
#include <system_error>
#include <utility>
#include <variant>

#include "draw/html_page.h"
#include "draw/order_picture.h"
#include "files/write_whole_file.h"
#include "order/write_job.h"

namespace nmk_app {

namespace {

struct Output {
    std::string file_name;
    std::string text;
};

/// All texts before the first is written, so that a job that has no text leaves no file.
std::variant<std::vector<Output>, std::string> outputs(const MachiningJob& job,
                                                       const OrderedJob& ordered,
                                                       const OrderReport& report) {
    std::vector<Output> result;
    const OrderOptions& options = report.options;
    if (!options.output_file.empty()) {
        std::variant<std::string, JobError> text = job_text(ordered.job, options.output_file);
        if (const auto* error = std::get_if<JobError>(&text)) {
            return error->text();
        }
        result.push_back({options.output_file, std::get<std::string>(std::move(text))});
    }
    if (!options.svg_file.empty()) {
        result.push_back({options.svg_file, order_picture(job, ordered, report, true)});
    }
    if (!options.html_file.empty()) {
        result.push_back({options.html_file, order_page(job, ordered, report)});
    }
    return result;
}

bool exists(const std::string& file_name) {
    std::error_code ignored;
    return std::filesystem::exists(file_name, ignored);
}

void remove_all(const std::vector<std::string>& file_names) {
    for (const std::string& file_name : file_names) {
        std::error_code ignored;
        std::filesystem::remove(file_name, ignored);
    }
}

}  // namespace

std::optional<std::string> write_order_outputs(const MachiningJob& job, const OrderedJob& ordered,
                                               const OrderReport& report,
                                               std::vector<std::string>& written) {
    auto texts = outputs(job, ordered, report);
    if (const auto* problem = std::get_if<std::string>(&texts)) {
        return *problem;
    }
    std::vector<std::string> made_new;
    for (const Output& output : std::get<std::vector<Output>>(texts)) {
        const bool is_new = !exists(output.file_name);
        if (const auto problem = write_whole_file(output.file_name, output.text)) {
            remove_all(made_new);
            return output.file_name + ": " + *problem;
        }
        if (is_new) {
            made_new.push_back(output.file_name);
        }
        written.push_back(output.file_name);
    }
    return std::nullopt;
}

}  // namespace nmk_app

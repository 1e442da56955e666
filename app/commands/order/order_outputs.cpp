// order_outputs: the files that `nmk order` writes, all of them or none.

#include "commands/order/order_outputs.h"

#include <utility>
#include <variant>

#include "commands/order/order_page.h"
#include "commands/order/order_picture.h"
#include "formats/job_files/write_job.h"

namespace nmk_order {

namespace {

/// All texts before the first is written, so that a job that has no text leaves no file.
std::variant<std::vector<nmk_files::OutputFile>, std::string> outputs(
    const nmk_job::MachiningJob& job, const OrderedJob& ordered, const OrderReport& report) {
    std::vector<nmk_files::OutputFile> result;
    const OrderOptions& options = report.options;
    if (!options.output_file.empty()) {
        std::variant<std::string, nmk_files::Error> text =
            nmk_job_files::job_text(ordered.job, options.output_file);
        if (const auto* error = std::get_if<nmk_files::Error>(&text)) {
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
    if (!options.debug_svg_file.empty()) {
        result.push_back({options.debug_svg_file, debug_drawing_svg(options.debug_channel)});
    }
    return result;
}

}  // namespace

std::optional<std::string> write_order_outputs(const nmk_job::MachiningJob& job,
                                               const OrderedJob& ordered, const OrderReport& report,
                                               nmk_files::WrittenFiles& written) {
    auto texts = outputs(job, ordered, report);
    if (const auto* problem = std::get_if<std::string>(&texts)) {
        return *problem;
    }
    return nmk_files::write_all_files(std::get<std::vector<nmk_files::OutputFile>>(texts), written);
}

}  // namespace nmk_order

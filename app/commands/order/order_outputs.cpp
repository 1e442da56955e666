// order_outputs: the files that `nmk order` writes, all of them or none.

#include "commands/order/order_outputs.h"

#include <utility>

#include "commands/order/gcode_output.h"
#include "commands/order/order_page.h"
#include "commands/order/order_picture.h"
#include "files/read_whole_file.h"
#include "formats/job_files/write_job.h"

namespace nmk_order {

namespace {

nmk_text::Result<std::string> ordered_text(const nmk_job::MachiningJob& job,
                                           const OrderedJob& ordered, const OrderReport& report) {
    const OrderOptions& options = report.options;
    if (writes_gcode(options)) {
        return gcode_text(job, ordered, report.request, options);
    }
    const bool is_part = ordered.after.size() < job.items.size();
    const bool as_read = options.keeps_format || options.output_file == nmk_files::standard_stream;
    return as_read ? nmk_job_files::text_as_read(job, ordered.after, is_part)
                   : nmk_job_files::job_text(job, ordered.after, options.output_file, is_part);
}

}  // namespace

nmk_text::Result<std::vector<nmk_files::OutputFile>> order_outputs(const nmk_job::MachiningJob& job,
                                                                   const OrderedJob& ordered,
                                                                   const OrderReport& report) {
    std::vector<nmk_files::OutputFile> result;
    const OrderOptions& options = report.options;
    if (!options.output_file.empty()) {
        nmk_text::Result<std::string> text = ordered_text(job, ordered, report);
        if (!text) {
            return text.error();
        }
        result.push_back({options.output_file, *std::move(text)});
    }
    if (!options.svg_file.empty()) {
        result.push_back({options.svg_file, order_picture(job, ordered, report)});
    }
    if (!options.html_file.empty()) {
        result.push_back({options.html_file, order_page(job, ordered, report)});
    }
    if (!options.debug_svg_file.empty()) {
        result.push_back({options.debug_svg_file, debug_drawing_svg(options.debug_channel)});
    }
    return result;
}

}  // namespace nmk_order

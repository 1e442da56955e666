// write_report: how every action of `nmk curve` ends.

#include "commands/curve/write_report.h"

#include "shell/command_result.h"
#include "shell/standard_output.h"

namespace nmk_curve {

int write_report(const CurveOptions& options, const std::vector<nmk_files::OutputFile>& files,
                 const std::string& text, const std::string& data, std::ostream& out,
                 std::ostream& err) {
    const auto written = nmk_shell::write_outputs(files, out);
    if (!written) return nmk_shell::refuse(err, written.error().text());
    std::ostream& stream = nmk_shell::report_stream(files, out, err);
    if (!data.empty()) {
        stream << data;
    } else if (!options.quiet) {
        stream << text;
        nmk_shell::print_written(stream, *written);
    }
    return nmk_shell::finish(out, err, "the report", *written);
}

}  // namespace nmk_curve

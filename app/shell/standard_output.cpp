// standard_output: outputs of the name "-", which go to standard output.

#include "shell/standard_output.h"

#include <algorithm>

#include "files/read_whole_file.h"

namespace nmk_shell {

namespace {

bool is_standard(const nmk_files::OutputFile& output) {
    return output.file_name == nmk_files::standard_stream;
}

}  // namespace

std::ostream& report_stream(const std::vector<nmk_files::OutputFile>& outputs, std::ostream& out,
                            std::ostream& err) {
    return std::any_of(outputs.begin(), outputs.end(), is_standard) ? err : out;
}

nmk_text::Result<nmk_files::WrittenFiles> write_outputs(std::vector<nmk_files::OutputFile> outputs,
                                                        std::ostream& out) {
    const auto standard = std::stable_partition(
        outputs.begin(), outputs.end(),
        [](const nmk_files::OutputFile& output) { return !is_standard(output); });
    const std::vector<nmk_files::OutputFile> to_stream(std::make_move_iterator(standard),
                                                       std::make_move_iterator(outputs.end()));
    outputs.erase(standard, outputs.end());
    auto written = nmk_files::write_all_files(outputs);
    if (written) {
        for (const nmk_files::OutputFile& output : to_stream) {
            out << output.text;
        }
    }
    return written;
}

}  // namespace nmk_shell

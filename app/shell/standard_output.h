// standard_output.h: outputs of the name "-", which go to standard output.
//
// Standard output then has that output alone: what a command prints for a person or a program goes
// to standard error.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "files/write_all_files.h"
#include "text/result.h"

namespace nmk_shell {

/// Where a command prints its report: `err` if one of the outputs is "-", otherwise `out`.
std::ostream& report_stream(const std::vector<nmk_files::OutputFile>& outputs, std::ostream& out,
                            std::ostream& err);

/// Writes the files, all of them or none, then the output "-" to `out`, which the caller flushes.
nmk_text::Result<nmk_files::WrittenFiles> write_outputs(std::vector<nmk_files::OutputFile> outputs,
                                                        std::ostream& out);

}  // namespace nmk_shell

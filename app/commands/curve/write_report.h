// write_report.h: how every action of `nmk curve` ends: its files are written, then its report.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "commands/curve/curve_options.h"
#include "files/write_all_files.h"

namespace nmk_curve {

/// Writes the files, all of them or none, and prints the report. Returns the exit code.
///
///   text  with --quiet not printed
///   data  CSV or JSON, printed in place of the text; empty: none
int write_report(const CurveOptions& options, const std::vector<nmk_files::OutputFile>& files,
                 const std::string& text, const std::string& data, std::ostream& out,
                 std::ostream& err);

}  // namespace nmk_curve

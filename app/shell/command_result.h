// command_result.h: how every command ends: its exit code and its error message.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "files/write_all_files.h"
#include "text/escaped_text.h"
#include "text/result.h"

namespace nmk_shell {

// The exit codes of the tool.
constexpr int done = 0;
constexpr int no_result = 1;
constexpr int bad_input = 2;  // also bad usage, and an output that cannot be written

/// Prints the error message as one line and returns bad_input.
inline int refuse(std::ostream& err, std::string_view problem) {
    err << nmk_text::line_text(problem) << "\n";
    return bad_input;
}

/// Prints a line for each file that was written.
inline void print_written(std::ostream& out, const nmk_files::WrittenFiles& written) {
    for (const std::string& file_name : written.names) {
        out << "Wrote " << nmk_text::line_text(file_name) << ".\n";
    }
}

/// Flushes the output; an error if it cannot be written. `what` names it, "the route".
inline int finish(std::ostream& out, std::ostream& err, const std::string& what) {
    out.flush();
    return out ? done : refuse(err, "standard output: " + what + " cannot be written");
}

/// The same for a run that wrote files: if the output cannot be written, new files are removed.
inline int finish(std::ostream& out, std::ostream& err, const std::string& what,
                  const nmk_files::WrittenFiles& written) {
    const int code = finish(out, err, what);
    if (code != done) {
        written.remove_new();
    }
    return code;
}

}  // namespace nmk_shell

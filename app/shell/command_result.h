// command_result.h: how every command ends: its exit code, and the line that says what is wrong.
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
constexpr int bad_input = 2;  // bad usage too, and an output that cannot be written

/// Prints the one line that says what is wrong.
inline int refuse(std::ostream& err, std::string_view problem) {
    err << nmk_text::line_text(problem) << "\n";
    return bad_input;
}

/// A line for each file that was written.
inline void print_written(std::ostream& out, const nmk_files::WrittenFiles& written) {
    for (const std::string& file_name : written.names) {
        out << "Wrote " << nmk_text::line_text(file_name) << ".\n";
    }
}

/// Sees to it that what was printed arrives; `what` is "the route".
inline int finish(std::ostream& out, std::ostream& err, const std::string& what) {
    out.flush();
    return out ? done : refuse(err, "standard output: " + what + " cannot be written");
}

/// The same for a run that wrote files, whose new ones are removed where what was printed is lost.
inline int finish(std::ostream& out, std::ostream& err, const std::string& what,
                  const nmk_files::WrittenFiles& written) {
    const int answer = finish(out, err, what);
    if (answer != done) {
        written.remove_new();
    }
    return answer;
}

/// Answers what `go` answers to the options, or says why there are none.
template <class Options, class Go>
int run_with(const nmk_text::Result<Options>& read, const std::string& command, std::ostream& err,
             Go go) {
    if (!read) {
        return refuse(err, "nmk " + command + ": " + read.error().message);
    }
    return go(*read);
}

}  // namespace nmk_shell

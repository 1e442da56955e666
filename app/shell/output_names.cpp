// output_names: checks of the names of files to write, before any work is done.

#include "shell/output_names.h"

#include "files/read_whole_file.h"
#include "files/same_file.h"
#include "text/escaped_text.h"

namespace nmk_shell {

namespace {

bool is_stream(std::string_view name) { return name == nmk_files::standard_stream; }

}  // namespace

Problem check_outputs_differ(std::span<const std::string_view> names) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (!names[i].empty() && !names[j].empty() &&
                is_stream(names[i]) == is_stream(names[j]) &&
                nmk_files::is_same_file(names[i], names[j])) {
                return nmk_text::quoted(names[i]) +
                       " is the name of two outputs; expected different files";
            }
        }
    }
    return {};
}

Problem check_input_is_kept(std::string_view input, std::span<const std::string_view> names) {
    for (const std::string_view name : names) {
        if (!name.empty() && !is_stream(name) && !is_stream(input) &&
            nmk_files::is_same_file(input, name)) {
            return nmk_text::quoted(name) +
                   " is the input file; expected another name for the output";
        }
    }
    return {};
}

}  // namespace nmk_shell

// deletion_diagnosis.h: which processes hold a file that cannot be deleted.
#pragma once

#include <iosfwd>
#include <string_view>

namespace nmk_files {

/// Where NMK_DIAGNOSE_UNLINK is set in the environment, writes the local time, the name and one
/// line for each process that holds the file, and flushes the stream; otherwise does nothing. The
/// stream's own format and locale play no part and stay as they are.
void write_deletion_diagnosis(std::ostream& stream, std::string_view path);

}  // namespace nmk_files

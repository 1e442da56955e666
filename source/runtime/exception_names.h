// exception_names.h: the codes of faults and their names.
#pragma once

namespace nmk_runtime {

/// The name of a code; "EXCEPTION_UNKNOWN" for one that is not in the table.
const char* exception_name(unsigned int code);

}  // namespace nmk_runtime

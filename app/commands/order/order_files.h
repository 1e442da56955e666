// order_files.h: `nmk order` with several files, or with several workers.
#pragma once

#include <ostream>

#include "commands/order/order_options.h"

class nmkProgressBreak;

namespace nmk_order {

/// Orders all files of the options, the runs of all of them in one pool of workers, and prints one
/// table. The output is the same for any number of workers.
///
///   progress  may be null; a result of its operations other than 0 requests a stop
///   out       the table, with a row for each file, or for each tool if there is one file; or JSON
///   err       a line for each file that could not be read or written; the others are done
///   returns   0 done, 2 if there is such a file or standard output cannot be written
int order_files(const OrderOptions& options, nmkProgressBreak* progress, std::ostream& out,
                std::ostream& err);

}  // namespace nmk_order

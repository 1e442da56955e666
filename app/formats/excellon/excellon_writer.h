// excellon_writer.h: writes a drill program again with its holes in another order.
//
// What stands before the first tool and what follows the last hole stay as they are, byte for byte.
// Between them each tool is taken up when the order wants it; every hole is written with both its
// coordinates, in the letters in which the file has them wherever it has them. Repeats and modal
// coordinates are written out, increments become positions (with a G90 before the first). Remarks
// between the holes move to the first run of the tool whose holes they stood before; definitions
// between the holes (a second header) move before the first tool.
#pragma once

#include <string>

#include "formats/job/machining_job.h"
#include "text/result.h"

namespace nmk_excellon {

/// The text of the ordered program. The text is read again before it is handed out: an order that
/// would lose, double or move a hole answers an error in its place.
nmk_text::Result<std::string> write_excellon(const nmk_job::MachiningJob& ordered);

}  // namespace nmk_excellon

// excellon_writer.h: writes a drill program again with its holes in another order.
//
// The text before the first tool and the text after the last hole are kept byte for byte. Between
// them a tool is selected whenever the order comes to it; every hole is written with both its
// coordinates, with the digits of the file wherever the file has them. Repeats and modal
// coordinates are written out, increments become positions (with a G90 before the first). A routed
// path or a pattern stays between the same holes, with the tool that it had; a position that it
// leaves out because the hole before it has it is written in. Remarks
// between the holes move to the first run of the tool whose holes they preceded; definitions
// between the holes (a second header) move before the first tool. Tools that were merged
// (nmk_job::merge_tools) have no definition any more unless a routed path or a pattern needs them;
// their remarks move to the tool that they were merged into.
#pragma once

#include <span>
#include <string>

#include "formats/job/job_order.h"
#include "text/result.h"

namespace nmk_excellon {

/// The text of the program of a job that read_excellon returned, in another order. The text is
/// parsed before it is returned: an Error for an order that is not complete, and for a program that
/// would lose, double or move a hole. Where `is_part` is true the order may leave items out, but
/// not of a program with routed paths or patterns.
nmk_text::Result<std::string> write_excellon(const nmk_job::MachiningJob& job,
                                             std::span<const nmk_job::JobCut> order,
                                             bool is_part = false);

}  // namespace nmk_excellon

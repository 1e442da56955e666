// merge_tools.h: one tool in place of several with one diameter.
#pragma once

#include "formats/job/machining_job.h"

namespace nmk_job {

/// Makes one tool of those with exactly the same diameter: the first of them that cuts in the file,
/// which cuts the items of all. A tool without a diameter stays as it is, since its diameter may be
/// any. Items keep their numbers and places. The job gets a note for each tool that goes.
///
/// A tool on two sides of a fence stays on both, and has the same name there.
void merge_tools(MachiningJob& job);

}  // namespace nmk_job

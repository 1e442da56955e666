// json_writer.h: writes a job as JSON for programs.
//
//   {"schema": 1, "file": "plate.drl", "units": "mm", "tools": [
//     {"name": "T1", "diameter": 3.2, "items": [
//       {"source": 17, "reversed": false, "start": [1, 2, 0], "end": [5, 2, 0]}, ...]}, ...]}
//
// Tools and items are listed in the order of cutting, start and end as they are cut; a hole has no
// "end". A tool is listed once for each run of its items. "source" is the position in the file,
// from 0. "diameter" is null if the file has none. docs/json.md describes the members for users,
// docs/schemas/job.json for programs. Items are written one by one, so that a large job is never
// held as one document.
#pragma once

#include <span>
#include <string>

#include "formats/job/job_order.h"

namespace nmk_json {

/// The JSON text. `order` is a complete order of the job.
std::string write_json(const nmk_job::MachiningJob& job, std::span<const nmk_job::JobCut> order);

}  // namespace nmk_json

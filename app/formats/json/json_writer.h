// json_writer.h: writes a job as JSON for programs.
//
//   {"file": "plate.drl", "units": "mm", "tools": [
//     {"name": "T1", "diameter": 3.2, "items": [
//       {"source": 17, "reversed": false, "start": [1, 2, 0], "end": [5, 2, 0]}, ...]}, ...]}
//
// Tools and items stand in the order of cutting, start and end as they are cut; a hole has no end.
// "source" is the position in the file, from 0. "diameter" is null where the file has none.
#pragma once

#include <string>

#include "formats/job/machining_job.h"

namespace nmk_json {

std::string write_json(const nmk_job::MachiningJob& ordered);

}  // namespace nmk_json

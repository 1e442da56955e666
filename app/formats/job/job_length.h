// job_length.h: lengths of a file in millimetres.
#pragma once

#include "formats/job/machining_job.h"

namespace nmk_job {

/// The length in millimetres, rounded once: 0.028 inches are 0.7112 mm, where the product 0.028 *
/// 25.4 is 0.7111999999999999. `value` is taken as its shortest decimal text, which is what the
/// file says for numbers of up to 15 digits.
double millimetres_of(double value, JobUnits units);

}  // namespace nmk_job

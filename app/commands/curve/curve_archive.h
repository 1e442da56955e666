// curve_archive.h: archives of one curve, which keep every kind of curve to the last bit.
#pragma once

#include <ngk/ngkCurve.h>

#include <string>
#include <string_view>

#include "text/result.h"

namespace nmk_curve {

/// Whether the bytes begin as those of an archive do.
bool looks_like_archive(std::string_view bytes);

/// The curve of an archive, which is valid. `name` is that of the input, for messages.
nmk_text::Result<ngkCurvePtr3> curve_of_archive(const std::string& name, const std::string& bytes);

/// The bytes of an archive with the curve, which is valid.
nmk_text::Result<std::string> archive_of_curve(const ngkCurvePtr3& curve);

}  // namespace nmk_curve

// curve_files.h: reads the curves of a file.
#pragma once

#include <ngk/ngkCurve.h>

#include <optional>
#include <string>
#include <vector>

#include "text/result.h"

namespace nmk_curve {

struct FileCurve {
    ngkCurvePtr3 curve;  // valid
    std::string origin;  // "ARC in line 12"; empty for the one curve of a file
};

struct CurveFile {
    std::string name;
    std::vector<FileCurve> curves;
    std::vector<std::string> notes;  // sentences without their full stop
};

/// The curves of a file; "-" is standard input. The format is recognised by the content: an archive
/// is a zip, a first line with a whole number alone begins a DXF file, anything else is a CSV table
/// of points.
///
///   mm_of_unit  millimetres in a unit of a file that does not state its unit; without it 1
nmk_text::Result<CurveFile> read_curves(const std::string& file_name,
                                        std::optional<double> mm_of_unit);

/// The curve with this number, from 1; without a number the only one. An Error where there are
/// several, or not so many.
nmk_text::Result<FileCurve> chosen_curve(const CurveFile& file, std::optional<int> number);

}  // namespace nmk_curve

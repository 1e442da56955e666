// excellon_parser.h: walks a drill program and tells a listener what it does.
//
// Reader and writer both listen to the same walk, so that they can never differ on what a line
// means. Coordinates arrive absolute and complete, each with its text where the file has it so.
//
// What can be ordered are drilled holes, slots (G85) and repeats of holes (R). Whatever makes holes
// depend on one another is refused with its line: routed paths (G00 to G03, M15 to M17), patterns
// (M01, M02, M25), mirrored or swapped axes, canned text, a zero point that moves between holes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "formats/excellon/excellon_number.h"
#include "formats/job/machining_job.h"
#include "text/result.h"

namespace nmk_excellon {

/// Past these a file is refused: a few bytes of repeats would otherwise make any number of holes.
constexpr std::size_t max_repeated_holes = 100'000;

/// One coordinate. The text is a view into the file, empty where the file has no such text (the
/// coordinate was added up, or was never given and is zero).
struct ExcellonCoordinate {
    std::int64_t value = 0;  // billionths of the unit
    std::string_view text;
};

struct ExcellonPoint {
    ExcellonCoordinate x;
    ExcellonCoordinate y;
};

/// A hole, or a slot where it has an end.
struct ExcellonCut {
    ExcellonPoint start;
    std::optional<ExcellonPoint> end;
    bool with_point = false;  // the file writes decimal points
};

/// What a line that cuts nothing is: a remark belongs to the holes that follow it, a definition
/// holds for the whole program.
enum class ExcellonLine { remark, definition };

/// Told what a program does, in its order. Views are into the program's text.
class ExcellonListener {
  public:
    virtual ~ExcellonListener() = default;

    /// A line, or a word of one, that neither selects a tool nor cuts nor is G90 or G91.
    virtual void line_kept(std::string_view /*line*/, ExcellonLine /*kind*/) {}

    /// A tool is taken up; `text` is the word with its parameters, "T01F20".
    virtual void tool_selected(int /*number*/, std::string_view /*text*/,
                               std::size_t /*line_begin*/) {}

    /// `line_end` is the offset of the line after the one that cuts.
    virtual void cut(int /*tool*/, const ExcellonCut& /*cut*/, const ExcellonFormat& /*format*/,
                     std::size_t /*line_begin*/, std::size_t /*line_end*/) {}
};

/// What is known at the end of a program.
struct ExcellonFacts {
    nmk_job::JobUnits units = nmk_job::JobUnits::inches;
    std::map<int, double> diameters;  // mm, of the tools that have one
    bool incremental = false;         // some positions may be increments
};

/// Walks the program and returns what is known at its end. The first error ends it; its file name
/// is empty.
nmk_text::Result<ExcellonFacts> parse_excellon(std::string_view text,
                                               std::optional<nmk_job::JobUnits> units_if_unstated,
                                               ExcellonListener& listener);

}  // namespace nmk_excellon

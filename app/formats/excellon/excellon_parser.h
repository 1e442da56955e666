// excellon_parser.h: parses a drill program and calls a listener for its tools, holes and lines.
//
// The reader and the check of the writer use the same parser, so that they cannot differ on the
// meaning of a line. Coordinates are absolute and complete, each with its text if the file has it.
//
// Drilled holes, slots (G85) and repeats of holes (R) can be ordered. Routed paths (G00 to G03, M15
// to M17) and patterns (M25, M01, M02) are blocks of lines that are kept as they are, and no hole
// is moved across them. Anything else that makes holes depend on one another is refused with its
// line: mirrored or swapped axes, canned text, a zero point that moves between holes.
//
// Comments are kept: those of a line with words go before its cut (see excellon_comments.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "formats/excellon/excellon_number.h"
#include "formats/job/machining_job.h"
#include "text/result.h"

namespace nmk_excellon {

/// A file with more is refused: a few bytes of repeats could otherwise create any number of holes.
constexpr std::size_t max_repeated_holes = 100'000;

/// One coordinate. The text is a view into the file, empty if the file has no such text (the
/// coordinate is a sum of increments, or was never given and is zero).
struct ExcellonCoordinate {
    std::int64_t value = 0;  // billionths of the unit
    std::string_view text;
};

struct ExcellonPoint {
    ExcellonCoordinate x;
    ExcellonCoordinate y;
};

/// A hole, or a slot if it has an end.
struct ExcellonCut {
    ExcellonPoint start;
    std::optional<ExcellonPoint> end;
    bool with_point = false;  // the file has used decimal points so far
};

/// Lines that are kept together and as they are: a routed path or a pattern.
struct ExcellonBlock {
    int tool = 0;           // selected before it; 0: none
    int tool_after = 0;     // selected after it
    std::string tool_text;  // the last tool word in the block; empty: none
    std::string text;       // with line endings; it begins with a complete position
    std::size_t end = 0;    // offset of the line after it
};

/// The kind of a line that cuts nothing: a remark belongs to the holes that follow it, a definition
/// applies to the whole program.
enum class ExcellonLine { remark, definition };

/// Receives the contents of a program in its order. Texts last for the call; those of coordinates
/// are views into the text of the program.
class ExcellonListener {
  public:
    virtual ~ExcellonListener() = default;

    /// A line, or a word of one, that neither selects a tool nor cuts nor is G90 or G91.
    virtual void line_kept(std::string_view /*line*/, ExcellonLine /*kind*/) {}

    /// A tool is selected; `text` is the word with its parameters, "T01F20".
    virtual void tool_selected(int /*number*/, std::string_view /*text*/,
                               std::size_t /*line_begin*/) {}

    /// `line_end` is the offset of the line after the one that cuts.
    virtual void cut(int /*tool*/, const ExcellonCut& /*cut*/, const ExcellonFormat& /*format*/,
                     std::size_t /*line_begin*/, std::size_t /*line_end*/) {}

    virtual void block(const ExcellonBlock& /*block*/) {}
};

/// The facts that are known at the end of a program.
struct ExcellonFacts {
    nmk_job::JobUnits units = nmk_job::JobUnits::inches;
    std::map<int, double> diameters;  // mm, of the tools that have one
    bool incremental = false;         // some positions may be increments
    std::vector<std::string> notes;   // remarks for a person, a sentence each without its full stop
};

/// Parses the program and returns the facts at its end, or the first Error, without a file name.
nmk_text::Result<ExcellonFacts> parse_excellon(std::string_view text,
                                               std::optional<nmk_job::JobUnits> units_if_unstated,
                                               ExcellonListener& listener);

}  // namespace nmk_excellon

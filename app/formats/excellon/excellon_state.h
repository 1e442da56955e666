// excellon_state.h: what a drill program has stated so far: units, number format, tools.
//
// Defaults where a file states nothing: inches (the caller may hand in other units), two whole
// digits and four decimals for inches, three and three for millimetres, and for the kept zeros
// what the numbers themselves tell (kept_zeros_of). From the first coordinate on the format is
// fixed: a file that changes it between its holes is refused, for its holes could not be moved.
//
// A function that meets something it cannot accept throws an Error with the line and message
// set; parse_excellon catches it.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "formats/excellon/excellon_number.h"
#include "formats/job/machining_job.h"

namespace nmk_excellon {

/// A tool of the file's tables.
struct ExcellonTool {
    std::optional<double> diameter;          // in the file's unit at the place of its definition
    std::optional<nmk_job::JobUnits> units;  // empty where none was stated before the tool
    bool has_cut = false;
};

/// Facts of a drill program as they stand at one of its lines.
class ExcellonState {
  public:
    explicit ExcellonState(std::optional<nmk_job::JobUnits> units_if_unstated)
        : m_units_if_unstated(units_if_unstated) {}

    void state_units(nmk_job::JobUnits units, std::size_t line);
    void state_zeros(KeptZeros zeros, std::size_t line);
    void state_digits(int whole, int decimal, std::size_t line);

    /// Takes a number format from a comment such as ";FILE_FORMAT=2:4" or
    /// ";FORMAT={3:3/ absolute / metric / suppress leading zeros}"; others are left alone.
    void read_comment(std::string_view comment, std::size_t line);

    /// "INCH,TZ,00.0000", "METRIC", "ICI,ON", ...: true where the line is such a statement.
    bool read_statement(std::string_view text, std::size_t line);

    /// Puts a tool into the table: `parameters` is what stands behind its number, "F00S00C0.012".
    void define_tool(int number, std::string_view parameters, std::size_t line);

    /// The format, which is fixed by the first call; `program` is what follows.
    const ExcellonFormat& format(std::string_view program);

    /// The unit of the file as far as it is known.
    nmk_job::JobUnits units() const;

    /// The diameter in millimetres, where the table has one.
    std::optional<double> diameter_of(int number) const;

    /// "T1 to T4" or "no tool", for messages.
    std::string known_tools() const;

    std::map<int, ExcellonTool> tools;
    bool incremental = false;

  private:
    std::optional<nmk_job::JobUnits> m_units_if_unstated;
    std::optional<nmk_job::JobUnits> m_units;
    std::optional<KeptZeros> m_zeros;
    std::optional<int> m_whole_digits;
    std::optional<int> m_decimal_digits;
    std::optional<ExcellonFormat> m_format;
};

}  // namespace nmk_excellon

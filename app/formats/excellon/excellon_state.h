// excellon_state.h: the settings of a drill program so far: units, number format, tools.
//
// Defaults: inches (the caller may pass other units), two whole digits and four decimals for
// inches, three and three for millimetres, and the kept zeros that the numbers show
// (kept_zeros_of). From the first coordinate on the format is fixed: a file that changes it between
// its holes is refused, since its holes could not be moved.
//
// A function throws an Error with line and message for text that cannot be accepted; parse_excellon
// catches it.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "formats/excellon/excellon_number.h"
#include "formats/job/machining_job.h"

namespace nmk_excellon {

/// A tool of the file's tables.
struct ExcellonTool {
    std::optional<double> diameter;          // in the unit of the file at its definition
    std::optional<nmk_job::JobUnits> units;  // empty if none was stated before
    bool has_cut = false;
};

/// The settings of a drill program at one of its lines.
class ExcellonState {
  public:
    explicit ExcellonState(std::optional<nmk_job::JobUnits> units_if_unstated)
        : m_units_if_unstated(units_if_unstated) {}

    void state_units(nmk_job::JobUnits units, std::size_t line);
    void state_zeros(KeptZeros zeros, std::size_t line);
    void state_digits(int whole, int decimal, std::size_t line);

    /// Takes a number format from a comment such as ";FILE_FORMAT=2:4" or
    /// ";FORMAT={3:3/ absolute / metric / suppress leading zeros}"; other comments are ignored.
    void read_comment(std::string_view comment, std::size_t line);

    /// Reads "INCH,TZ,00.0000", "METRIC", "ICI,ON", ...; false if the line is not such a statement.
    bool read_statement(std::string_view text, std::size_t line);

    /// Adds a tool to the table; `parameters` is the text after its number, "F00S00C0.012".
    void define_tool(int number, std::string_view parameters, std::size_t line);

    /// The format, which the first call fixes; `program` is the rest of the program.
    const ExcellonFormat& format(std::string_view program);

    /// The unit of the file as far as it is known so far.
    nmk_job::JobUnits units() const;

    /// The diameter in millimetres, if the table has one.
    std::optional<double> diameter_of(int number) const;

    /// "T1, T2" or "no tool", for messages.
    std::string known_tools() const;

    std::map<int, ExcellonTool> tools;
    std::vector<std::string> notes;  // for a person, a sentence each without its full stop
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

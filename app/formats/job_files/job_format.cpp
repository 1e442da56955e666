// job_format.cpp: see job_format.h.

#include "formats/job_files/job_format.h"

#include <algorithm>
#include <array>

#include "text/ascii.h"
#include "text/number_reader.h"
#include "text/text_lines.h"

namespace nmk_job_files {

namespace {

constexpr std::size_t max_examined_lines = 40;

constexpr std::array<std::string_view, 7> drill_endings = {"drl", "drd", "exc", "ncd",
                                                           "xln", "tap", "txt"};

constexpr std::array<std::string_view, 3> gcode_endings = {"nc", "ngc", "gcode"};

bool is_digit(char letter) { return letter >= '0' && letter <= '9'; }

/// True for a line that begins like a drill program: "T1...", "X-1...", "M48", "G90", "INCH".
bool begins_drill_line(std::string_view line) {
    if (line.size() < 2) {
        return line == "%";
    }
    const bool has_number = is_digit(line[1]) || line[1] == '-' || line[1] == '+' || line[1] == '.';
    const bool has_letter = std::string_view("TXYMGtxymg").find(line[0]) != std::string_view::npos;
    return (has_number && has_letter) || line.starts_with("INCH") || line.starts_with("METRIC");
}

std::optional<nmk_job::JobFormat> format_of_line(std::string_view line) {
    for (const std::string_view keyword :
         {"NAME", "TYPE", "COMMENT", "DIMENSION", "EDGE_WEIGHT_TYPE", "NODE_COORD_SECTION"}) {
        const std::string_view behind = line.substr(std::min(line.size(), keyword.size()));
        if (line.starts_with(keyword) &&
            (behind.empty() ||
             std::string_view(": \t").find(behind[0]) != std::string_view::npos)) {
            return nmk_job::JobFormat::tsplib;
        }
    }
    if (begins_drill_line(line)) {
        return nmk_job::JobFormat::excellon;
    }
    const std::string_view cell = nmk_text::trimmed(line.substr(0, line.find_first_of(",;\t")));
    if (cell.size() < line.size() && !line.starts_with(';') &&
        (nmk_text::read_number(cell) || nmk_text::lower_case(cell) == "x")) {
        return nmk_job::JobFormat::csv;
    }
    return std::nullopt;
}

std::optional<nmk_job::JobFormat> format_of_name(const std::string& file_name) {
    const std::string ending = name_ending(file_name);
    if (names_drill_program(file_name)) {
        return nmk_job::JobFormat::excellon;
    }
    return ending == "csv"   ? std::optional(nmk_job::JobFormat::csv)
           : ending == "tsp" ? std::optional(nmk_job::JobFormat::tsplib)
                             : std::nullopt;
}

}  // namespace

std::string name_ending(const std::string& file_name) {
    const std::size_t point = file_name.find_last_of("./");
    return point == std::string::npos || file_name[point] == '/'
               ? std::string()
               : nmk_text::lower_case(std::string_view(file_name).substr(point + 1));
}

bool names_gcode_program(const std::string& file_name) {
    return std::find(gcode_endings.begin(), gcode_endings.end(), name_ending(file_name)) !=
           gcode_endings.end();
}

bool names_drill_program(const std::string& file_name) {
    return std::find(drill_endings.begin(), drill_endings.end(), name_ending(file_name)) !=
           drill_endings.end();
}

std::optional<nmk_job::JobFormat> format_of(const std::string& file_name, std::string_view text,
                                            std::optional<nmk_job::JobFormat> otherwise) {
    nmk_text::TextLines lines(text);
    nmk_text::TextLine line;
    for (std::size_t i = 0; i < max_examined_lines && lines.next(line); ++i) {
        if (const std::optional<nmk_job::JobFormat> format =
                format_of_line(nmk_text::trimmed(line.text))) {
            return format;
        }
    }
    return otherwise ? otherwise : format_of_name(file_name);
}

}  // namespace nmk_job_files

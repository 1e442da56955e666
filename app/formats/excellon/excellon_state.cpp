// excellon_state.cpp: see excellon_state.h.

#include "formats/excellon/excellon_state.h"

#include <cmath>

#include "formats/excellon/excellon_words.h"
#include "formats/job/job_length.h"
#include "text/ascii.h"
#include "text/escaped_text.h"
#include "text/number_format.h"
#include "text/number_reader.h"

namespace nmk_excellon {

namespace {

constexpr int max_digits = 6;          // on either side of the point
constexpr double max_diameter = 1000;  // in the unit of the file

[[noreturn]] void refuse(std::size_t line, std::string message) {
    throw nmk_text::Error{{}, line, std::move(message)};
}

[[noreturn]] void refuse_change(std::size_t line, std::string_view what) {
    refuse(line, std::string(what) +
                     " change between the holes; expected one number format for the whole file");
}

/// Takes the field before the next comma, without blanks, off the front of the text.
std::string_view take_field(std::string_view& text) {
    const std::size_t comma = std::min(text.find(','), text.size());
    const std::string_view field = nmk_text::trimmed(text.substr(0, comma));
    text.remove_prefix(std::min(comma + 1, text.size()));
    return field;
}

/// "00.0000" as its count of digits before and after the point.
std::optional<std::pair<int, int>> digits_of_picture(std::string_view picture) {
    const std::size_t point = picture.find('.');
    if (point == std::string_view::npos ||
        picture.find_first_not_of("0.") != std::string_view::npos ||
        picture.find('.', point + 1) != std::string_view::npos || picture.size() > 20) {
        return std::nullopt;
    }
    return std::pair(static_cast<int>(point), static_cast<int>(picture.size() - point - 1));
}

/// "2:4" at the front of the text.
std::optional<std::pair<int, int>> digits_of_ratio(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || colon + 1 >= text.size()) {
        return std::nullopt;
    }
    const std::optional<int> whole = small_number(nmk_text::trimmed(text.substr(0, colon)));
    const std::optional<int> decimal = small_number(text.substr(colon + 1, 1));
    return whole && decimal ? std::optional(std::pair(*whole, *decimal)) : std::nullopt;
}

}  // namespace

void ExcellonState::state_units(nmk_job::JobUnits units, std::size_t line) {
    if (m_format && m_format->units != units) {
        refuse_change(line, "units");
    }
    m_units = units;
}

void ExcellonState::state_zeros(KeptZeros zeros, std::size_t line) {
    if (m_format && m_format->zeros != zeros) {
        refuse_change(line, "the kept zeros");
    }
    m_zeros = zeros;
}

void ExcellonState::state_digits(int whole, int decimal, std::size_t line) {
    if (whole < 0 || decimal < 0 || whole > max_digits || decimal > max_digits ||
        whole + decimal == 0) {
        refuse(line, "number format " + std::to_string(whole) + ":" + std::to_string(decimal) +
                         "; expected at most 6 digits on either side of the point");
    }
    if (m_format && (m_format->whole_digits != whole || m_format->decimal_digits != decimal)) {
        refuse_change(line, "the digits of the number format");
    }
    m_whole_digits = whole;
    m_decimal_digits = decimal;
}

void ExcellonState::read_comment(std::string_view comment, std::size_t line) {
    if (m_format) {
        return;
    }
    const std::string text = nmk_text::lower_case(comment);
    const std::size_t at = text.find("format=");
    if (at == std::string::npos) {
        return;
    }
    std::string_view stated = nmk_text::trimmed(std::string_view(text).substr(at + 7));
    if (stated.starts_with('{')) {
        stated.remove_prefix(1);
    }
    if (const auto digits = digits_of_ratio(stated)) {
        state_digits(digits->first, digits->second, line);
    }
    if (!m_zeros && stated.find("suppress leading") != std::string_view::npos) {
        m_zeros = KeptZeros::trailing;
    } else if (!m_zeros && stated.find("suppress trailing") != std::string_view::npos) {
        m_zeros = KeptZeros::leading;
    }
}

bool ExcellonState::read_statement(std::string_view text, std::size_t line) {
    if (text.find_first_of("IiMm") != 0) {
        return false;  // most lines are holes
    }
    const std::string lowered = nmk_text::lower_case(text);
    std::string_view rest = lowered;
    const std::string_view keyword = take_field(rest);
    if (keyword == "ici") {
        incremental = take_field(rest) != "off";
        return true;
    }
    if (keyword != "inch" && keyword != "metric") {
        return false;
    }
    state_units(keyword == "inch" ? nmk_job::JobUnits::inches : nmk_job::JobUnits::millimetres,
                line);
    while (!rest.empty()) {
        const std::string_view field = take_field(rest);
        if (field == "lz" || field == "tz") {
            state_zeros(field == "lz" ? KeptZeros::leading : KeptZeros::trailing, line);
        } else if (const auto digits = digits_of_picture(field)) {
            state_digits(digits->first, digits->second, line);
        } else {
            refuse(line, "cannot read " + nmk_text::quoted(field) + " after " +
                             nmk_text::quoted(keyword) +
                             "; expected LZ, TZ or a picture such as 000.000");
        }
    }
    return true;
}

void ExcellonState::define_tool(int number, std::string_view parameters, std::size_t line) {
    std::optional<double> diameter;
    ExcellonWords words(parameters);
    while (!words.rest().empty()) {
        const std::optional<ExcellonWord> word = words.take();
        if (!word || !is_tool_parameter(word->letter)) {
            refuse(line, "cannot read " + nmk_text::quoted(parameters) + " in the definition of T" +
                             std::to_string(number));
        }
        const std::optional<double> value = nmk_text::read_number(word->number);
        if (!value || !std::isfinite(*value)) {
            refuse(line, "cannot read the number " + nmk_text::quoted(word->number) + " of T" +
                             std::to_string(number) + word->letter);
        }
        if (word->letter == 'C') {
            diameter = value;
        }
    }
    if (diameter && !(*diameter >= 0.0 && *diameter <= max_diameter)) {
        refuse(line, "T" + std::to_string(number) + " has the diameter " +
                         nmk_text::exact_number(*diameter) + "; expected 0 to 1000");
    }
    ExcellonTool& tool = tools[number];
    if (tool.has_cut && diameter && tool.diameter != diameter) {
        refuse(line, "T" + std::to_string(number) +
                         " changes its diameter after it has cut; its holes cannot be reordered");
    }
    if (diameter) {
        tool.diameter = diameter;
        tool.units = m_units;
    }
}

const ExcellonFormat& ExcellonState::format(std::string_view program) {
    if (!m_format) {
        const bool inches = units() == nmk_job::JobUnits::inches;
        m_format = ExcellonFormat{units(), m_zeros ? *m_zeros : kept_zeros_of(program),
                                  m_whole_digits.value_or(inches ? 2 : 3),
                                  m_decimal_digits.value_or(inches ? 4 : 3)};
    }
    return *m_format;
}

nmk_job::JobUnits ExcellonState::units() const {
    return m_units.value_or(m_units_if_unstated.value_or(nmk_job::JobUnits::inches));
}

std::optional<double> ExcellonState::diameter_of(int number) const {
    const auto found = tools.find(number);
    if (found == tools.end() || !found->second.diameter) {
        return std::nullopt;
    }
    return nmk_job::millimetres_of(*found->second.diameter, found->second.units.value_or(units()));
}

std::string ExcellonState::known_tools() const {
    constexpr std::size_t max_named = 12;
    std::string names;
    std::size_t named = 0;
    for (const auto& [number, tool] : tools) {
        if (named++ == max_named) {
            return names + " and " + std::to_string(tools.size() - max_named) + " more";
        }
        names += (names.empty() ? "T" : ", T") + std::to_string(number);
    }
    return names.empty() ? "no tool" : names;
}

}  // namespace nmk_excellon

// dxf_groups: the groups of an ASCII DXF file.

#include "formats/dxf/dxf_groups.h"

#include <charconv>
#include <optional>
#include <utility>

#include "text/ascii.h"
#include "text/escaped_text.h"
#include "text/number_reader.h"
#include "text/result.h"

namespace nmk_dxf {

namespace {

constexpr int lowest_code = -5;
constexpr int highest_code = 1071;
constexpr int remark_code = 999;

std::optional<int> whole_number(std::string_view text) {
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

}  // namespace

void refuse(std::size_t line, std::string message) {
    throw nmk_text::Error{{}, line, std::move(message)};
}

double number_of(const DxfGroup& group) {
    const std::optional<double> number = nmk_text::read_coordinate(group.value);
    if (number) return *number;
    refuse(group.line, "cannot read " + nmk_text::quoted(group.value) + " of group " +
                           std::to_string(group.code) + "; expected a number from -1e9 to 1e9");
}

int whole_number_of(const DxfGroup& group) {
    const std::optional<int> number = whole_number(group.value);
    if (number) return *number;
    refuse(group.line, "cannot read " + nmk_text::quoted(group.value) + " of group " +
                           std::to_string(group.code) + "; expected a whole number");
}

bool DxfGroups::next_with_remarks(DxfGroup& group) {
    nmk_text::TextLine line;
    if (!m_lines.next(line)) return false;
    m_line = line.number;
    const std::optional<int> code = whole_number(nmk_text::trimmed(line.text));
    if (!code || *code < lowest_code || *code > highest_code) {
        refuse(line.number,
               "cannot read " + nmk_text::quoted(line.text) + "; expected the code of a group");
    }
    group.code = *code;
    if (!m_lines.next(line)) {
        refuse(m_line, "the file ends behind the code of a group; expected its value");
    }
    m_line = line.number;
    group.value = nmk_text::trimmed(line.text);
    group.line = line.number;
    return true;
}

bool DxfGroups::next(DxfGroup& group) {
    while (next_with_remarks(group)) {
        if (group.code != remark_code) return true;
    }
    return false;
}

}  // namespace nmk_dxf

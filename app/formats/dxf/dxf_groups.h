// dxf_groups.h: the groups of an ASCII DXF file: a line with a code, then a line with a value.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/text_lines.h"

namespace nmk_dxf {

struct DxfGroup {
    int code = 0;
    std::string_view value;  // without blanks at either end
    std::size_t line = 0;    // of the value, from 1

    bool is(int its_code, std::string_view its_value) const {
        return code == its_code && value == its_value;
    }
};

/// Throws an Error without a file name.
[[noreturn]] void refuse(std::size_t line, std::string message);

/// The value as a number; an Error if it is not one, is not finite, or is beyond 1e9.
double number_of(const DxfGroup& group);

/// The value as a whole number that an int holds; an Error if it is not one.
int whole_number_of(const DxfGroup& group);

/// Returns the groups of a text one by one, without remarks; the text is borrowed.
class DxfGroups {
  public:
    explicit DxfGroups(std::string_view text) : m_lines(text) {}

    /// False after the last group. An Error for a code that is not one, or has no value.
    bool next(DxfGroup& group);

    /// The last line that was read.
    std::size_t line() const { return m_line; }

  private:
    bool next_with_remarks(DxfGroup& group);

    nmk_text::TextLines m_lines;
    std::size_t m_line = 0;
};

}  // namespace nmk_dxf

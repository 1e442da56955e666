// excellon_walk.h: the walk of excellon_parser over the lines of one drill program.
//
// Its operations are in one file for each kind of line: the header (excellon_walk_header), modes
// and tools (excellon_walk_modes), holes, slots and repeats (excellon_walk_cuts), routed paths and
// patterns (excellon_walk_blocks). A line that cannot be read throws an Error with its number.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "formats/excellon/excellon_commands.h"
#include "formats/excellon/excellon_comments.h"
#include "formats/excellon/excellon_parser.h"
#include "formats/excellon/excellon_state.h"
#include "formats/excellon/excellon_words.h"
#include "text/escaped_text.h"
#include "text/result.h"
#include "text/text_lines.h"

namespace nmk_excellon {

/// The axes that a position in the file has.
struct ExcellonAxes {
    bool has_x = false;
    bool has_y = false;
};

/// A routed path or a pattern that is being read.
struct OpenBlock {
    bool is_pattern = false;
    bool has_all_holes = false;  // of a pattern: M01 was read
    bool has_start = false;      // its first position was read or added
    bool is_last_line = false;
    int tool = 0;  // selected before it; 0: none
    std::size_t first_line = 0;
    std::size_t begin = 0;  // in the text
    std::size_t end = 0;
    std::string tool_text;  // the last tool word in it; empty: none
    std::string insert;     // the position that it begins with, where the file leaves it out
    std::size_t insert_at = 0;
};

class ExcellonWalk {
  public:
    ExcellonWalk(std::string_view text, std::optional<nmk_job::JobUnits> units,
                 ExcellonListener& listener)
        : m_text(text), m_listener(listener), m_state(units) {}

    void walk() {
        nmk_text::TextLines lines(m_text);
        while (lines.next(m_line)) {
            read_line();
            m_incremental_seen = m_incremental_seen || m_state.incremental;
        }
        if (m_block) {
            end_block();
        }
        if (m_in_header) {
            refuse("the header that begins on line " + std::to_string(m_header_line) +
                   " has no end; expected % or M95");
        }
    }

    ExcellonFacts facts() const {
        ExcellonFacts facts{m_state.units(), {}, m_incremental_seen, m_state.notes};
        add_block_note(facts.notes);
        for (const auto& [number, tool] : m_state.tools) {
            if (const std::optional<double> diameter = m_state.diameter_of(number)) {
                facts.diameters[number] = *diameter;
            }
        }
        return facts;
    }

  private:
    [[noreturn]] void refuse(std::string message) const {
        throw nmk_text::Error{{}, m_line.number, std::move(message)};
    }

    [[noreturn]] void refuse_rest(const ExcellonWords& words) const {
        refuse("cannot read " + nmk_text::quoted(words.rest()) +
               "; expected words of a drill program such as T1, X1.5Y2 or M30");
    }

    void keep(std::string_view text, ExcellonLine kind = ExcellonLine::remark) {
        m_listener.line_kept(text, kind);
    }

    /// Called once for each line: before its cut, so that the comment stays with the tool of the
    /// cut, otherwise at the end of the line.
    void keep_comment() {
        if (!m_comment.empty()) {
            keep(std::exchange(m_comment, {}));
        }
    }

    void read_line();
    void read_header_line(std::string_view code);
    void read_header_words(std::string_view code);
    void read_header_command(ExcellonCommand command);
    void read_words(std::string_view code);
    void read_command(const ExcellonWord& word, ExcellonWords& words);
    void read_mode(ExcellonCommand command, const ExcellonWord& word, ExcellonWords& words);
    void set_mode(ExcellonCommand command);
    std::string take_zero_point(ExcellonWords& words);
    void select_tool(const ExcellonWord& word, ExcellonWords& words);
    std::string take_tool(const ExcellonWord& word, ExcellonWords& words);
    void read_cut(ExcellonWords& words);
    void repeat_hole(const ExcellonWord& word, ExcellonWords& words);
    ExcellonAxes take_point(ExcellonWords& words);
    bool take_axis(ExcellonWords& words, char letter, ExcellonCoordinate& axis);
    std::int64_t read_value(const ExcellonWord& word);
    void move(ExcellonCoordinate& axis, std::int64_t by) const;
    const ExcellonFormat& format() { return m_state.format(m_text.substr(m_line.begin)); }
    bool read_block(std::string_view code);
    void begin_block(const ExcellonWord& word);
    bool is_behind_block(std::string_view code) const;
    void end_block();
    void read_block_words(std::string_view code);
    void check_statement_in_block(std::string_view code) const;
    bool read_block_command(char letter, int number);
    void read_pattern_command(int number);
    void add_start_position(bool is_move);
    void read_block_point(ExcellonWords& words, bool is_move);
    std::string coordinate_text(const ExcellonCoordinate& coordinate);
    void select_tool_in_block(const ExcellonWord& word, ExcellonWords& words);
    void add_block_note(std::vector<std::string>& notes) const;
    bool is_message() const;
    void check_inner_comment(const CommentedLine& line) const;
    void check_tool();
    void emit(const ExcellonPoint& start, const std::optional<ExcellonPoint>& end);

    std::string_view m_text;
    ExcellonListener& m_listener;
    ExcellonState m_state;
    nmk_text::TextLine m_line;
    std::size_t m_code_at = 0;  // position of the first word in the line
    std::string m_comment;      // of the line, until the listener has it
    ExcellonPoint m_at;
    std::optional<int> m_tool;
    std::optional<OpenBlock> m_block;
    bool m_in_header = false;
    bool m_ended = false;
    bool m_with_point = false;
    bool m_last_was_hole = false;
    bool m_incremental_seen = false;
    bool m_has_position = false;      // a coordinate was read
    bool m_is_position_known = true;  // false behind a pattern
    std::size_t m_routed_paths = 0;
    std::size_t m_patterns = 0;
    std::size_t m_first_block_line = 0;  // 0: none
    std::size_t m_header_line = 0;
    std::size_t m_items = 0;
    std::size_t m_repeated = 0;
};

}  // namespace nmk_excellon

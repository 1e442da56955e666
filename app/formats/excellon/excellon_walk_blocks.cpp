// excellon_walk_blocks: routed paths and patterns, which are carried through as they are.
//
// A routed path begins with the first of G00 to G03, G40 to G42 or M15 to M17 and ends with G05,
// which returns to drilling, or with the program. A pattern begins with M25; M01 ends its holes,
// and the M02 lines after that repeat them, up to an M08.

#include <algorithm>

#include "formats/excellon/excellon_walk.h"
#include "text/ascii.h"

namespace nmk_excellon {

namespace {

constexpr int pattern_begin = 25;             // M25
constexpr int pattern_end = 1;                // M01
constexpr int pattern_repeat = 2;             // M02
constexpr int patterns_end = 8;               // M08
constexpr int mirror_codes[] = {70, 80, 90};  // M words of a repeat that mirrors or swaps axes

/// The first word on the line that belongs to a routed path or a pattern.
std::optional<ExcellonWord> first_block_word(std::string_view code) {
    if (code.find_first_of("GMgm") == std::string_view::npos) {
        return std::nullopt;  // most lines are holes
    }
    ExcellonWords words(code);
    while (const std::optional<ExcellonWord> word = words.take()) {
        if (word->letter != 'G' && word->letter != 'M') {
            continue;
        }
        const std::optional<int> number = small_number(word->number);
        const ExcellonCommand command =
            number ? excellon_command(word->letter, *number) : ExcellonCommand::unsupported;
        if (command == ExcellonCommand::keep_line) {
            return std::nullopt;
        }
        if (command == ExcellonCommand::routed || command == ExcellonCommand::pattern) {
            return word;
        }
    }
    return std::nullopt;
}

}  // namespace

bool ExcellonWalk::read_block(std::string_view code) {
    if (m_block && is_behind_block(code)) {
        end_block();
    }
    if (!m_block) {
        const std::optional<ExcellonWord> word = first_block_word(code);
        if (!word) {
            return false;
        }
        begin_block(*word);
    }
    read_block_words(code);
    m_block->end = m_line.end;
    if (m_block->is_last_line) {
        end_block();
    }
    return true;
}

void ExcellonWalk::begin_block(const ExcellonWord& word) {
    const int number = *small_number(word.number);
    const bool is_pattern = excellon_command(word.letter, number) == ExcellonCommand::pattern;
    if (is_pattern && number != pattern_begin) {
        refuse(excellon_command_name(word.letter, number) +
               " without a pattern before it; expected M25 before the holes of the pattern");
    }
    m_block.emplace();
    m_block->is_pattern = is_pattern;
    m_block->first_line = m_line.number;
    m_block->begin = m_line.begin;
    m_block->tool = m_tool.value_or(0);
    if (m_tool) {
        m_state.tools[*m_tool].has_cut = true;
    }
}

/// The lines of a pattern end where something other than a repeat or a remark follows its holes;
/// every block ends before the end of the program.
bool ExcellonWalk::is_behind_block(std::string_view code) const {
    ExcellonWords words(code);
    const std::optional<ExcellonWord> word = words.take();
    const std::optional<int> number = word ? small_number(word->number) : std::nullopt;
    const bool is_m = word && word->letter == 'M' && number;
    if (is_m && excellon_command('M', *number) == ExcellonCommand::end) {
        return true;
    }
    return m_block->is_pattern && m_block->has_all_holes && !code.empty() &&
           !(is_m && (*number == pattern_repeat || *number == patterns_end));
}

void ExcellonWalk::end_block() {
    if (m_block->is_pattern && !m_block->has_all_holes) {
        refuse("the pattern that begins on line " + std::to_string(m_block->first_line) +
               " has no end; expected M01");
    }
    const std::string_view text = m_text.substr(m_block->begin, m_block->end - m_block->begin);
    ExcellonBlock block{m_block->tool, m_tool.value_or(0), m_block->tool_text, std::string(text),
                        m_block->end};
    block.text.insert(m_block->insert_at, m_block->insert);
    if (!text.ends_with('\n') && !text.ends_with('\r')) {
        block.text += nmk_text::line_ending(m_text);  // the last line of the file
    }
    m_listener.block(block);
    ++(m_block->is_pattern ? m_patterns : m_routed_paths);
    m_first_block_line = m_first_block_line == 0 ? m_block->first_line : m_first_block_line;
    m_is_position_known = m_is_position_known && !m_block->is_pattern;
    m_last_was_hole = false;
    m_block.reset();
}

void ExcellonWalk::read_block_words(std::string_view code) {
    check_statement_in_block(code);
    ExcellonWords words(code);
    bool is_move = false;  // the line has a G00
    while (const std::optional<ExcellonWord> word = words.peek()) {
        switch (word->letter) {
            case 'X':
            case 'Y':
                read_block_point(words, is_move);
                break;
            case 'T':
                words.take();
                select_tool_in_block(*word, words);
                break;
            case 'G':
            case 'M': {
                words.take();
                const std::optional<int> number = small_number(word->number);
                if (!number) {
                    refuse_rest(words);
                }
                is_move = is_move || (word->letter == 'G' && *number == 0);
                if (read_block_command(word->letter, *number)) {
                    return;
                }
                break;
            }
            default:
                words.take();  // I, J and A of an arc, feeds and speeds
        }
    }
}

/// Statements that change what numbers mean cannot be moved, and a block moves with its tool.
void ExcellonWalk::check_statement_in_block(std::string_view code) const {
    const std::string name = m_block->is_pattern ? "a pattern" : "a routed path";
    if (m_state.incremental) {
        refuse(name + " in increments cannot be kept; expected G90 before it");
    }
    const std::string lowered = nmk_text::lower_case(code);
    if (lowered.starts_with("inch") || lowered.starts_with("metric") ||
        lowered.starts_with("ici")) {
        refuse(nmk_text::quoted(code) + " within " + name + "; expected it in the header");
    }
}

/// Returns true if the rest of the line is text.
bool ExcellonWalk::read_block_command(char letter, int number) {
    const ExcellonCommand command = excellon_command(letter, number);
    const bool is_mirror = letter == 'M' && m_block->has_all_holes &&
                           std::find(std::begin(mirror_codes), std::end(mirror_codes), number) !=
                               std::end(mirror_codes);
    switch (command) {
        case ExcellonCommand::keep_line:
            return true;
        case ExcellonCommand::drill_mode:
            m_block->is_last_line = !m_block->is_pattern;
            break;
        case ExcellonCommand::pattern:
            read_pattern_command(number);
            break;
        case ExcellonCommand::routed:
            add_start_position(letter == 'G' && number == 0);
            break;
        case ExcellonCommand::keep:
        case ExcellonCommand::absolute:
        case ExcellonCommand::slot:
            break;
        default:
            if (!is_mirror) {
                refuse(excellon_command_name(letter, number) + " within " +
                       (m_block->is_pattern ? "a pattern" : "a routed path") +
                       "; expected only words that move, cut or retract");
            }
    }
    return false;
}

void ExcellonWalk::read_pattern_command(int number) {
    const bool is_first = m_line.number == m_block->first_line;
    if (!m_block->is_pattern || (number == pattern_begin) != is_first ||
        (number != pattern_begin && (number == pattern_end) == m_block->has_all_holes)) {
        refuse(excellon_command_name('M', number) +
               " at this place; expected M25, the holes of the pattern, M01 and repeats (M02)");
    }
    m_block->has_all_holes = number != pattern_begin;
    m_block->is_last_line = number == patterns_end;
}

/// A routed path that does not begin with a G00 begins where the file has cut last: written after
/// another hole it needs that position.
void ExcellonWalk::add_start_position(bool is_move) {
    if (m_block->is_pattern || m_block->has_start || is_move) {
        return;
    }
    m_block->has_start = true;
    if (!m_is_position_known) {
        refuse("the routed path begins at an unknown position; expected G00 with X and Y");
    }
    if (m_has_position) {
        m_block->insert = "G00X" + coordinate_text(m_at.x) + "Y" + coordinate_text(m_at.y) +
                          std::string(nmk_text::line_ending(m_text));
        m_block->insert_at = 0;
    }
}

/// Reads X, Y or both. If they are the first of the block, the missing one is added: it is that of
/// the last position of the file.
void ExcellonWalk::read_block_point(ExcellonWords& words, bool is_move) {
    if (!is_move) {
        add_start_position(false);
    }
    const std::size_t before = words.peek()->begin;
    const ExcellonPoint last = m_at;
    const ExcellonAxes axes = take_point(words);
    if (m_block->has_start || (axes.has_x && axes.has_y)) {
        m_block->has_start = true;
        return;
    }
    m_block->has_start = true;
    if (!m_is_position_known) {
        refuse("X or Y is missing after a pattern; expected both");
    }
    if (m_has_position) {
        m_block->insert =
            axes.has_x ? "Y" + coordinate_text(last.y) : "X" + coordinate_text(last.x);
        m_block->insert_at =
            m_line.begin - m_block->begin + m_code_at + (axes.has_x ? words.position() : before);
    }
}

std::string ExcellonWalk::coordinate_text(const ExcellonCoordinate& coordinate) {
    return coordinate.text.empty() ? excellon_number_text(coordinate.value, format(), m_with_point)
                                   : std::string(coordinate.text);
}

void ExcellonWalk::select_tool_in_block(const ExcellonWord& word, ExcellonWords& words) {
    const std::string text = take_tool(word, words);
    m_block->tool_text = m_tool ? text : std::string();
    if (m_tool) {
        m_state.tools[*m_tool].has_cut = true;
    }
}

void ExcellonWalk::add_block_note(std::vector<std::string>& notes) const {
    const auto counted = [](std::size_t count, const std::string& name) {
        return std::to_string(count) + " " + name + (count == 1 ? "" : "s");
    };
    if (m_first_block_line == 0) {
        return;
    }
    std::string text = m_routed_paths > 0 ? counted(m_routed_paths, "routed path") : "";
    text += m_routed_paths > 0 && m_patterns > 0 ? " and " : "";
    text += m_patterns > 0 ? counted(m_patterns, "pattern") : "";
    notes.push_back(text + " (from line " + std::to_string(m_first_block_line) + ") " +
                    (m_routed_paths + m_patterns == 1 ? "is" : "are") +
                    " kept unchanged; no hole is moved across");
}

}  // namespace nmk_excellon

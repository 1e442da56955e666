// excellon_parser.cpp: see excellon_parser.h.

#include "order/excellon_parser.h"

#include <algorithm>
#include <utility>

#include "order/excellon_state.h"
#include "order/excellon_words.h"
#include "text/text_lines.h"
#include "text/text_number.h"

namespace nmk_app {

namespace {

/// What a G or M word asks for.
enum class Command {
    keep,       // nothing that holes depend on
    keep_line,  // a message: the rest of the line is text
    routed,     // a path
    pattern,    // step and repeat
    unsupported,
    drill_mode,
    absolute,
    incremental,
    zero_point,
    slot,
    millimetres,
    inches,
    header,
    header_end,
    end
};

Command command_of_g(int number) {
    switch (number) {
        case 0:
        case 1:
        case 2:
        case 3:
        case 40:
        case 41:
        case 42:
            return Command::routed;
        case 5:
        case 81:
            return Command::drill_mode;
        case 85:
            return Command::slot;
        case 90:
            return Command::absolute;
        case 91:
            return Command::incremental;
        case 92:
        case 93:
            return Command::zero_point;
        default:
            return Command::unsupported;
    }
}

Command command_of_m(int number) {
    switch (number) {
        case 0:
        case 30:
            return Command::end;
        case 1:
        case 2:
        case 8:
        case 25:
            return Command::pattern;
        case 6:
        case 9:
            return Command::keep;
        case 15:
        case 16:
        case 17:
            return Command::routed;
        case 45:
        case 47:
            return Command::keep_line;
        case 48:
            return Command::header;
        case 71:
            return Command::millimetres;
        case 72:
            return Command::inches;
        case 95:
            return Command::header_end;
        default:
            return Command::unsupported;
    }
}

JobUnits units_of(Command command) {
    return command == Command::inches ? JobUnits::inches : JobUnits::millimetres;
}

/// The walk itself: one object for one program.
class ExcellonWalk {
  public:
    ExcellonWalk(std::string_view text, std::optional<JobUnits> units, ExcellonListener& listener)
        : m_text(text), m_listener(listener), m_state(units) {}

    void walk() {
        TextLines lines(m_text);
        while (lines.next(m_line)) {
            read_line();
            m_incremental_seen = m_incremental_seen || m_state.incremental;
        }
        if (m_in_header) {
            refuse("the header begun on line " + std::to_string(m_header_line) +
                   " is never ended by % or M95");
        }
    }

    ExcellonFacts facts() const {
        ExcellonFacts facts{m_state.units(), {}, m_incremental_seen};
        for (const auto& [number, tool] : m_state.tools) {
            if (const std::optional<double> diameter = m_state.diameter_of(number)) {
                facts.diameters[number] = *diameter;
            }
        }
        return facts;
    }

  private:
    [[noreturn]] void refuse(std::string message) const {
        throw JobError{{}, m_line.number, std::move(message)};
    }

    [[noreturn]] void refuse_rest(const ExcellonWords& words) const {
        refuse("cannot read " + quoted(words.rest()) + " in a drill program");
    }

    void keep(std::string_view text, ExcellonLine kind = ExcellonLine::remark) {
        m_listener.line_kept(text, kind);
    }

    /// Once for each line: before its cut, so that it stays with the cut's tool, else at its end.
    void keep_comment() {
        if (!m_comment.empty()) {
            keep(std::exchange(m_comment, {}));
        }
    }

    void read_line();
    void read_header_line(std::string_view code);
    void read_header_words(std::string_view code);
    void read_header_command(Command command);
    void read_words(std::string_view code);
    void read_command(const ExcellonWord& word, ExcellonWords& words);
    void read_mode(Command command, const ExcellonWord& word, ExcellonWords& words);
    std::string take_zero_point(ExcellonWords& words);
    void select_tool(const ExcellonWord& word, ExcellonWords& words);
    void read_cut(ExcellonWords& words);
    void repeat_hole(const ExcellonWord& word, ExcellonWords& words);
    void take_point(ExcellonWords& words);
    bool take_axis(ExcellonWords& words, char letter, ExcellonCoordinate& axis);
    std::int64_t read_value(const ExcellonWord& word);
    void move(ExcellonCoordinate& axis, std::int64_t by) const;
    const ExcellonFormat& format() { return m_state.format(m_text.substr(m_line.begin)); }
    void check_tool();
    void emit(const ExcellonPoint& start, const std::optional<ExcellonPoint>& end);

    std::string_view m_text;
    ExcellonListener& m_listener;
    ExcellonState m_state;
    TextLine m_line;
    std::string_view m_comment;  // of the line, until it is kept
    ExcellonPoint m_at;
    std::optional<int> m_tool;
    bool m_in_header = false;
    bool m_ended = false;
    bool m_with_point = false;
    bool m_last_was_hole = false;
    bool m_incremental_seen = false;
    std::size_t m_header_line = 0;
    std::size_t m_items = 0;
    std::size_t m_repeated = 0;
};

void ExcellonWalk::read_line() {
    const std::size_t semicolon = std::min(m_line.text.find(';'), m_line.text.size());
    const std::string_view code = trimmed(m_line.text.substr(0, semicolon));
    if (semicolon < m_line.text.size()) {
        m_state.read_comment(m_line.text.substr(semicolon), m_line.number);
    }
    if (m_ended) {
        if (code.starts_with('X') || code.starts_with('Y')) {
            refuse("a coordinate after the end of the program (M30 or M00)");
        }
        return keep(m_line.text);
    }
    if (m_in_header) {
        return read_header_line(code);
    }
    if (code.empty() || code == "%") {
        return keep(m_line.text);
    }
    if (m_state.read_statement(code, m_line.number)) {
        return keep(m_line.text, ExcellonLine::definition);
    }
    m_comment = m_line.text.substr(semicolon);
    read_words(code);
    keep_comment();
}

void ExcellonWalk::read_header_line(std::string_view code) {
    keep(m_line.text, ExcellonLine::definition);
    if (code == "%") {
        m_in_header = false;
    } else if (!m_state.read_statement(code, m_line.number)) {
        read_header_words(code);
    }
}

void ExcellonWalk::read_header_words(std::string_view code) {
    ExcellonWords words(code);
    const std::optional<ExcellonWord> word = words.take();
    if (!word || word->number.empty()) {
        return;  // a setting of the machine: VER, DETECT, ATC, R, ...
    }
    if (word->letter == 'X' || word->letter == 'Y') {
        refuse("a coordinate in the header, which begins on line " + std::to_string(m_header_line) +
               " and is not ended by % or M95");
    }
    const std::optional<int> number = small_number(word->number);
    if (word->letter == 'T') {
        if (!number) {
            refuse("cannot read the tool number " + quoted(word->number));
        }
        m_state.define_tool(*number, words.rest(), m_line.number);
    } else if (number && (word->letter == 'M' || word->letter == 'G')) {
        const Command command = word->letter == 'M' ? command_of_m(*number) : command_of_g(*number);
        read_header_command(command);
    }
}

void ExcellonWalk::read_header_command(Command command) {
    switch (command) {
        case Command::end:
        case Command::slot:
        case Command::routed:
            refuse("the header, which begins on line " + std::to_string(m_header_line) +
                   ", is not ended by % or M95 before this line");
        case Command::header_end:
            m_in_header = false;
            return;
        case Command::absolute:
        case Command::incremental:
            m_state.incremental = command == Command::incremental;
            return;
        case Command::millimetres:
        case Command::inches:
            m_state.state_units(units_of(command), m_line.number);
            return;
        default:
            return;
    }
}

void ExcellonWalk::read_words(std::string_view code) {
    ExcellonWords words(code);
    while (!words.rest().empty()) {
        const std::optional<ExcellonWord> word = words.peek();
        if (!word) {
            refuse_rest(words);
        }
        switch (word->letter) {
            case 'X':
            case 'Y':
                read_cut(words);
                break;
            case 'T':
                words.take();
                select_tool(*word, words);
                break;
            case 'R':
                words.take();
                repeat_hole(*word, words);
                break;
            case 'G':
            case 'M':
                read_command(*word, words);
                if (m_ended) {
                    return;
                }
                break;
            case 'F':
            case 'S':
                if (!read_number(word->number)) {
                    refuse_rest(words);
                }
                words.take();
                keep(code.substr(word->begin, word->end - word->begin));
                break;
            default:
                refuse_rest(words);
        }
    }
}

void ExcellonWalk::read_command(const ExcellonWord& word, ExcellonWords& words) {
    const std::optional<int> number = small_number(word.number);
    if (!number) {
        refuse_rest(words);
    }
    const std::string name =
        word.letter + std::string(*number < 10 ? "0" : "") + std::to_string(*number);
    const Command command = word.letter == 'G' ? command_of_g(*number) : command_of_m(*number);
    switch (command) {
        case Command::routed:
            refuse("routed path (" + name +
                   "); only drilled holes, their repeats and G85 slots can be ordered");
        case Command::pattern:
            refuse("step and repeat pattern (" + name +
                   "); only drilled holes, their repeats and G85 slots can be ordered");
        case Command::unsupported:
            refuse(name + " is not understood in a drill program");
        case Command::slot:  // from where the cutter stands
            read_cut(words);
            return;
        case Command::keep_line:
            words = ExcellonWords({});
            keep(m_line.text.substr(0, m_line.text.find(';')));
            return;
        default:
            words.take();
            read_mode(command, word, words);
    }
}

void ExcellonWalk::read_mode(Command command, const ExcellonWord& word, ExcellonWords& words) {
    const std::string text = word.letter + std::string(word.number);
    switch (command) {
        case Command::absolute:
        case Command::incremental:
            m_state.incremental = command == Command::incremental;
            return;
        case Command::millimetres:
        case Command::inches:
            m_state.state_units(units_of(command), m_line.number);
            keep(text, ExcellonLine::definition);
            return;
        case Command::zero_point:
            keep(text + take_zero_point(words), ExcellonLine::definition);
            return;
        case Command::header:
            m_in_header = true;
            m_header_line = m_line.number;
            keep(text, ExcellonLine::definition);
            if (!words.rest().empty()) {
                refuse_rest(words);
            }
            return;
        case Command::end:
            m_ended = true;
            keep(text);
            return;
        default:
            keep(text);
            return;
    }
}

/// Takes the coordinates behind G92 or G93 and answers them as they stand. They may be anything
/// before the first hole, where they move all holes alike; later only zero.
std::string ExcellonWalk::take_zero_point(ExcellonWords& words) {
    std::string text;
    while (const std::optional<ExcellonWord> axis = words.peek()) {
        if (axis->letter != 'X' && axis->letter != 'Y') {
            break;
        }
        words.take();
        if (m_items > 0 && axis->number.find_first_not_of("+-.0") != std::string_view::npos) {
            refuse("the zero point moves between the holes");
        }
        text += axis->letter + std::string(axis->number);
    }
    return text;
}

void ExcellonWalk::select_tool(const ExcellonWord& word, ExcellonWords& words) {
    const std::optional<int> number = small_number(word.number);
    if (!number) {
        refuse("cannot read the tool number " + quoted(word.number));
    }
    std::size_t end = word.end;
    while (const std::optional<ExcellonWord> parameter = words.peek()) {
        if (std::string_view("CFSBHZ").find(parameter->letter) == std::string_view::npos) {
            break;
        }
        end = words.take()->end;
    }
    const std::size_t code_begin = m_line.text.find_first_not_of(" \t");
    const std::string_view text = m_line.text.substr(code_begin + word.begin, end - word.begin);
    const std::string_view parameters = text.substr(word.end - word.begin);
    if (*number == 0) {
        m_tool.reset();  // the tool is put away
    } else {
        if (m_state.tools.count(*number) == 0 &&
            lower_case(parameters).find('c') == std::string::npos) {
            refuse("unknown tool T" + std::to_string(*number) + "; the file defines " +
                   m_state.known_tools());
        }
        m_state.define_tool(*number, parameters, m_line.number);
        m_tool = number;
    }
    m_last_was_hole = false;
    m_listener.tool_selected(*number, text, m_line.begin);
}

void ExcellonWalk::read_cut(ExcellonWords& words) {
    check_tool();
    take_point(words);
    const ExcellonPoint start = m_at;
    std::optional<ExcellonPoint> end;
    const std::optional<ExcellonWord> word = words.peek();
    if (word && word->letter == 'G') {
        if (small_number(word->number) != 85) {
            refuse_rest(words);
        }
        words.take();
        const std::optional<ExcellonWord> axis = words.peek();
        if (!axis || (axis->letter != 'X' && axis->letter != 'Y')) {
            refuse("the slot (G85) has no end; expected X, Y or both behind it");
        }
        take_point(words);
        end = m_at;
    }
    m_last_was_hole = !end.has_value();
    emit(start, end);
    const std::optional<ExcellonWord> next = words.peek();
    if (next && next->letter != 'F' && next->letter != 'S') {
        refuse_rest(words);
    }
}

void ExcellonWalk::repeat_hole(const ExcellonWord& word, ExcellonWords& words) {
    const std::optional<int> count = small_number(word.number);
    if (!count || *count == 0) {
        refuse("cannot read the count of the repeat " + quoted(word.number) +
               "; expected 1 to 99999");
    }
    if (!m_last_was_hole) {
        refuse("a repeat (R) without a hole of the same tool before it");
    }
    ExcellonCoordinate step_x;
    ExcellonCoordinate step_y;
    const bool incremental = std::exchange(m_state.incremental, false);
    const bool has_x = take_axis(words, 'X', step_x);
    const bool has_y = take_axis(words, 'Y', step_y);
    m_state.incremental = incremental;
    if ((!has_x && !has_y) || !words.rest().empty()) {
        refuse("cannot read the repeat; expected a line such as R5X1000Y200");
    }
    m_repeated += static_cast<std::size_t>(*count);
    if (m_repeated > most_repeated_items) {
        refuse("more than " + std::to_string(most_repeated_items) + " repeated holes");
    }
    for (int i = 0; i < *count; ++i) {
        move(m_at.x, step_x.value);
        move(m_at.y, step_y.value);
        emit(m_at, std::nullopt);
    }
}

/// Takes X, Y or both in either order; each may stand once.
void ExcellonWalk::take_point(ExcellonWords& words) {
    if (take_axis(words, 'X', m_at.x)) {
        take_axis(words, 'Y', m_at.y);
    } else if (take_axis(words, 'Y', m_at.y)) {
        take_axis(words, 'X', m_at.x);
    }
}

bool ExcellonWalk::take_axis(ExcellonWords& words, char letter, ExcellonCoordinate& axis) {
    const std::optional<ExcellonWord> word = words.peek();
    if (!word || word->letter != letter) {
        return false;
    }
    words.take();
    const std::int64_t value = read_value(*word);
    m_with_point = m_with_point || word->number.find('.') != std::string_view::npos;
    if (m_state.incremental) {
        move(axis, value);
    } else {
        axis = {value, word->number};
    }
    return true;
}

std::int64_t ExcellonWalk::read_value(const ExcellonWord& word) {
    const std::optional<std::int64_t> value = read_excellon_number(word.number, format());
    if (!value) {
        refuse("cannot read the coordinate " + std::string(1, word.letter) + quoted(word.number) +
               "; expected a number of at most a million units and nine decimals");
    }
    return *value;
}

void ExcellonWalk::move(ExcellonCoordinate& axis, std::int64_t by) const {
    const std::int64_t value = axis.value + by;
    if (by == 0) {
        return;
    }
    if (value > largest_excellon_coordinate || value < -largest_excellon_coordinate) {
        refuse("the increments add up to more than a million units");
    }
    axis = {value, {}};
}

void ExcellonWalk::check_tool() {
    if (!m_tool) {
        refuse("a hole before any tool is selected; expected a line such as T1 above it");
    }
    m_state.tools[*m_tool].has_cut = true;
}

void ExcellonWalk::emit(const ExcellonPoint& start, const std::optional<ExcellonPoint>& end) {
    if (++m_items > most_items) {
        refuse("more than " + std::to_string(most_items) + " holes and slots");
    }
    keep_comment();
    m_listener.cut(*m_tool, ExcellonCut{start, end, m_with_point}, format(), m_line.begin,
                   m_line.end);
}

}  // namespace

std::optional<JobError> parse_excellon(std::string_view text,
                                       std::optional<JobUnits> units_if_unstated,
                                       ExcellonListener& listener, ExcellonFacts& facts) {
    try {
        ExcellonWalk walk(text, units_if_unstated, listener);
        walk.walk();
        facts = walk.facts();
    } catch (const JobError& error) {
        return error;
    }
    return std::nullopt;
}

}  // namespace nmk_app

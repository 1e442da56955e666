// excellon_walk_modes: G and M words, the zero point and the tools of a drill program.

#include "formats/excellon/excellon_walk.h"
#include "text/ascii.h"

namespace nmk_excellon {

void ExcellonWalk::read_command(const ExcellonWord& word, ExcellonWords& words) {
    const std::optional<int> number = small_number(word.number);
    if (!number) {
        refuse_rest(words);
    }
    const std::string name = excellon_command_name(word.letter, *number);
    const ExcellonCommand command = excellon_command(word.letter, *number);
    switch (command) {
        case ExcellonCommand::unsupported:
            refuse(name + " is not supported in a drill program");
        case ExcellonCommand::slot:  // from the current position
            read_cut(words);
            return;
        case ExcellonCommand::keep_line:
            words = ExcellonWords({});
            keep(m_line.text.substr(m_code_at, m_line.text.find(';', m_code_at) - m_code_at));
            return;
        default:
            words.take();
            read_mode(command, word, words);
    }
}

void ExcellonWalk::read_mode(ExcellonCommand command, const ExcellonWord& word,
                             ExcellonWords& words) {
    const std::string text = word.letter + std::string(word.number);
    set_mode(command);
    switch (command) {
        case ExcellonCommand::absolute:
        case ExcellonCommand::incremental:
            return;  // the listener gets absolute positions
        case ExcellonCommand::millimetres:
        case ExcellonCommand::inches:
            keep(text, ExcellonLine::definition);
            return;
        case ExcellonCommand::zero_point:
            keep(text + take_zero_point(words), ExcellonLine::definition);
            return;
        case ExcellonCommand::header:
            m_in_header = true;
            m_header_line = m_line.number;
            keep(text, ExcellonLine::definition);
            if (!words.rest().empty()) {
                refuse_rest(words);
            }
            return;
        case ExcellonCommand::end:
            m_ended = true;
            keep(text);
            return;
        default:
            keep(text);
            return;
    }
}

/// Applies a command that has the same effect in a header as after it; ignores other commands.
void ExcellonWalk::set_mode(ExcellonCommand command) {
    switch (command) {
        case ExcellonCommand::absolute:
        case ExcellonCommand::incremental:
            m_state.incremental = command == ExcellonCommand::incremental;
            return;
        case ExcellonCommand::millimetres:
            m_state.state_units(nmk_job::JobUnits::millimetres, m_line.number);
            return;
        case ExcellonCommand::inches:
            m_state.state_units(nmk_job::JobUnits::inches, m_line.number);
            return;
        default:
            return;
    }
}

/// Takes the coordinates after G92 or G93 and returns their text. Before the first hole any value
/// is accepted, since it moves all holes alike; later only zero.
std::string ExcellonWalk::take_zero_point(ExcellonWords& words) {
    std::string text;
    while (const std::optional<ExcellonWord> axis = words.peek()) {
        if (axis->letter != 'X' && axis->letter != 'Y') {
            break;
        }
        words.take();
        if (m_items > 0 && axis->number.find_first_not_of("+-.0") != std::string_view::npos) {
            refuse("the zero point moves between the holes; expected it before the first hole");
        }
        text += axis->letter + std::string(axis->number);
    }
    return text;
}

void ExcellonWalk::select_tool(const ExcellonWord& word, ExcellonWords& words) {
    const std::string text = take_tool(word, words);
    m_last_was_hole = false;
    m_listener.tool_selected(m_tool.value_or(0), text, m_line.begin);
}

/// Takes the parameters of a tool, makes it the tool that cuts and returns the text of all words,
/// without the comments between them.
std::string ExcellonWalk::take_tool(const ExcellonWord& word, ExcellonWords& words) {
    const std::optional<int> number = small_number(word.number);
    if (!number) {
        refuse("cannot read the tool number " + nmk_text::quoted(word.number));
    }
    std::size_t end = word.end;
    while (const std::optional<ExcellonWord> parameter = words.peek()) {
        if (!is_tool_parameter(parameter->letter)) {
            break;
        }
        end = words.take()->end;
    }
    const std::string_view code = m_line.text.substr(m_code_at);
    const std::string text = without_comments(code.substr(word.begin, end - word.begin));
    const std::string_view parameters = std::string_view(text).substr(word.end - word.begin);
    if (*number == 0) {
        m_tool.reset();  // no tool is selected
    } else {
        if (m_state.tools.count(*number) == 0 &&
            nmk_text::lower_case(parameters).find('c') == std::string::npos) {
            refuse("unknown tool T" + std::to_string(*number) + "; the file defines " +
                   m_state.known_tools());
        }
        m_state.define_tool(*number, parameters, m_line.number);
        m_tool = number;
    }
    return text;
}

}  // namespace nmk_excellon

// excellon_walk_header: the lines of a header, from M48 to % or M95.

#include "formats/excellon/excellon_walk.h"

namespace nmk_excellon {

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
        refuse("a coordinate in the header that begins on line " + std::to_string(m_header_line) +
               "; expected % or M95 before it");
    }
    const std::optional<int> number = small_number(word->number);
    if (word->letter == 'T') {
        if (!number) {
            refuse("cannot read the tool number " + nmk_text::quoted(word->number));
        }
        m_state.define_tool(*number, words.rest(), m_line.number);
    } else if (number && (word->letter == 'M' || word->letter == 'G')) {
        read_header_command(excellon_command(word->letter, *number));
    }
}

void ExcellonWalk::read_header_command(ExcellonCommand command) {
    switch (command) {
        case ExcellonCommand::end:
        case ExcellonCommand::slot:
        case ExcellonCommand::routed:
            refuse("the header that begins on line " + std::to_string(m_header_line) +
                   " has no end; expected % or M95 before this line");
        case ExcellonCommand::header_end:
            m_in_header = false;
            return;
        default:
            set_mode(command);
    }
}

}  // namespace nmk_excellon

// excellon_parser: the lines of a drill program, and the words of a line.

#include "formats/excellon/excellon_parser.h"

#include <algorithm>

#include "formats/excellon/excellon_walk.h"
#include "text/ascii.h"
#include "text/number_reader.h"

namespace nmk_excellon {

void ExcellonWalk::read_line() {
    const std::size_t comment = comment_begin();
    const std::string_view code = nmk_text::trimmed(m_line.text.substr(0, comment));
    if (comment < m_line.text.size()) {
        m_state.read_comment(m_line.text.substr(comment), m_line.number);
    }
    if (m_ended) {
        if (code.starts_with('X') || code.starts_with('Y')) {
            refuse("a coordinate after the end of the program (M30 or M00)");
        }
        return keep(m_line.text);
    }
    check_comment(m_line.text.substr(comment));
    if (m_in_header) {
        return read_header_line(code);
    }
    if (read_block(code)) {
        return;
    }
    if (code.empty() || code == "%") {
        return keep(m_line.text);
    }
    if (m_state.read_statement(code, m_line.number)) {
        return keep(m_line.text, ExcellonLine::definition);
    }
    m_comment = m_line.text.substr(comment);
    read_words(code);
    keep_comment();
}

/// The position of the comment in the line, or its size. In a message a parenthesis is text.
std::size_t ExcellonWalk::comment_begin() const {
    const ExcellonWords words(m_line.text);
    const std::optional<ExcellonWord> word = words.peek();
    const std::optional<int> number = word ? small_number(word->number) : std::nullopt;
    const bool is_message = number && !m_in_header &&
                            excellon_command(word->letter, *number) == ExcellonCommand::keep_line;
    return std::min(m_line.text.find_first_of(is_message ? ";" : ";("), m_line.text.size());
}

void ExcellonWalk::check_comment(std::string_view comment) const {
    while (comment.starts_with('(')) {
        const std::size_t end = comment.find(')');
        comment = nmk_text::trimmed(comment.substr(std::min(end, comment.size() - 1) + 1));
    }
    if (!comment.empty() && comment.front() != ';') {
        refuse("cannot read " + nmk_text::quoted(comment) +
               " after a comment; expected the comment at the end of the line");
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
                if (!nmk_text::read_number(word->number)) {
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

nmk_text::Result<ExcellonFacts> parse_excellon(std::string_view text,
                                               std::optional<nmk_job::JobUnits> units_if_unstated,
                                               ExcellonListener& listener) {
    return nmk_text::value_or_error("", [&] {
        ExcellonWalk walk(text, units_if_unstated, listener);
        walk.walk();
        return walk.facts();
    });
}

}  // namespace nmk_excellon

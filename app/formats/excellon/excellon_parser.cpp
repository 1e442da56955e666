// excellon_parser: the lines of a drill program, and the words of a line.

#include "formats/excellon/excellon_parser.h"

#include <utility>

#include "formats/excellon/excellon_comments.h"
#include "formats/excellon/excellon_walk.h"
#include "text/number_reader.h"

namespace nmk_excellon {

void ExcellonWalk::read_line() {
    CommentedLine line = split_comments(m_line.text, is_message());
    const std::string_view code = line.code;
    m_code_at = line.code_at;
    if (!line.comments.empty()) {
        m_state.read_comment(line.comments, m_line.number);
    }
    if (m_ended) {
        if (code.starts_with('X') || code.starts_with('Y')) {
            refuse("a coordinate after the end of the program (M30 or M00)");
        }
        return keep(m_line.text);
    }
    if (m_in_header) {
        check_inner_comment(line);
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
    m_comment = std::move(line.comments);
    read_words(code);
    keep_comment();
}

bool ExcellonWalk::is_message() const {
    const std::optional<ExcellonWord> word = ExcellonWords(m_line.text).peek();
    const std::optional<int> number = word ? small_number(word->number) : std::nullopt;
    return number && !m_in_header &&
           excellon_command(word->letter, *number) == ExcellonCommand::keep_line;
}

/// Statements and settings of the machine are read as a whole.
void ExcellonWalk::check_inner_comment(const CommentedLine& line) const {
    const std::optional<ExcellonWord> word = ExcellonWords(line.code).peek();
    if (line.has_inner && (!word || word->number.empty())) {
        refuse("a comment within " + nmk_text::quoted(line.code) +
               "; expected it at the end of the line");
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

// excellon_walk_cuts: holes, slots and repeats, and the coordinates of them.

#include "formats/excellon/excellon_walk.h"

namespace nmk_excellon {

void ExcellonWalk::read_cut(ExcellonWords& words) {
    check_tool();
    const ExcellonAxes axes = take_point(words);
    if (!m_is_position_known && !(axes.has_x && axes.has_y)) {
        refuse("X or Y is missing after a pattern; expected both");
    }
    m_is_position_known = true;
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
            refuse("the slot (G85) has no end; expected X, Y or both after it");
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
        refuse("cannot read the count of the repeat " + nmk_text::quoted(word.number) +
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
    if (m_repeated > max_repeated_holes) {
        refuse("more than " + std::to_string(max_repeated_holes) + " repeated holes");
    }
    for (int i = 0; i < *count; ++i) {
        move(m_at.x, step_x.value);
        move(m_at.y, step_y.value);
        emit(m_at, std::nullopt);
    }
}

/// Takes X, Y or both in either order, each at most once.
ExcellonAxes ExcellonWalk::take_point(ExcellonWords& words) {
    ExcellonAxes axes;
    axes.has_x = take_axis(words, 'X', m_at.x);
    axes.has_y = take_axis(words, 'Y', m_at.y);
    if (!axes.has_x && axes.has_y) {
        axes.has_x = take_axis(words, 'X', m_at.x);
    }
    m_has_position = m_has_position || axes.has_x || axes.has_y;
    return axes;
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
        refuse("cannot read the coordinate " + std::string(1, word.letter) +
               nmk_text::quoted(word.number) +
               "; expected a number of at most a million units and nine decimals");
    }
    return *value;
}

void ExcellonWalk::move(ExcellonCoordinate& axis, std::int64_t by) const {
    const std::int64_t value = axis.value + by;
    if (by == 0) {
        return;
    }
    if (value > max_excellon_coordinate || value < -max_excellon_coordinate) {
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
    if (++m_items > nmk_job::max_items) {
        refuse("more than " + std::to_string(nmk_job::max_items) + " holes and slots");
    }
    keep_comment();
    m_listener.cut(*m_tool, ExcellonCut{start, end, m_with_point}, format(), m_line.begin,
                   m_line.end);
}

}  // namespace nmk_excellon

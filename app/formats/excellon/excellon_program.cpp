// excellon_program.cpp: see excellon_program.h.

#include "formats/excellon/excellon_program.h"

#include <algorithm>
#include <utility>

#include "formats/excellon/excellon_words.h"
#include "text/text_lines.h"

namespace nmk_excellon {

namespace {

void move_all(std::vector<std::string>& from, std::vector<std::string>& to) {
    to.insert(to.end(), from.begin(), from.end());
    from.clear();
}

}  // namespace

void ProgramRecorder::line_kept(std::string_view line, ExcellonLine kind) {
    if (m_has_body) {
        (kind == ExcellonLine::remark ? m_remarks : m_definitions).emplace_back(line);
    }
}

void ProgramRecorder::tool_selected(int number, std::string_view text, std::size_t line_begin) {
    if (m_program->cut_begins.empty()) {  // the head goes up to the first tool that cuts
        m_has_body = true;
        m_program->head_end = line_begin;
        m_program->tools.clear();
        m_program->head_blocks += std::exchange(m_program->blocks, {}).size();
        m_remarks.clear();
        m_definitions.clear();
    }
    if (number > 0) {
        m_program->tools.try_emplace(number, ToolLines{std::string(text), {}, {}});
        move_all(m_remarks, m_remarks_before_tool);
    }
}

void ProgramRecorder::cut(int tool, const ExcellonCut& cut, const ExcellonFormat& format,
                          std::size_t /*line_begin*/, std::size_t line_end) {
    ExcellonProgram& program = *m_program;
    program.format = format;
    program.tail_begin = line_end;
    move_all(m_definitions, program.definitions);
    ToolLines& lines = program.tools[tool];
    move_all(m_remarks_before_tool, lines.before);
    move_all(m_remarks, lines.after);
    if (cut.with_point) {
        program.points_from = std::min(program.points_from, program.cut_count());
    }
    program.cut_begins.push_back(static_cast<std::uint32_t>(program.coordinates.size()));
    add_point(cut.start);
    if (cut.end) {
        add_point(*cut.end);
    }
}

void ProgramRecorder::block(const ExcellonBlock& block) {
    ExcellonProgram& program = *m_program;
    add_block_tools(block);
    if (program.cut_begins.empty() && !block.tool_text.empty()) {  // the head goes up to its end
        m_has_body = true;
        program.head_end = block.end;
        program.head_blocks += std::exchange(program.blocks, {}).size();
        program.tools = {{block.tool_after, ToolLines{block.tool_text, {}, {}}}};
        m_remarks.clear();
        m_remarks_before_tool.clear();
        m_definitions.clear();
        ++program.head_blocks;
        return;
    }
    if (!m_has_body) {
        ++program.head_blocks;
        return;
    }
    ProgramBlock recorded{program.cut_count(), block.tool, block.tool_after, {}, block.text};
    move_all(m_remarks_before_tool, recorded.before);
    move_all(m_remarks, recorded.before);
    move_all(m_definitions, program.definitions);
    if (block.tool_after > 0 && !block.tool_text.empty()) {
        program.tools.try_emplace(block.tool_after, ToolLines{block.tool_text, {}, {}});
    }
    program.blocks.push_back(std::move(recorded));
    program.tail_begin = block.end;
}

void ProgramRecorder::add_block_tools(const ExcellonBlock& block) {
    m_program->block_tools.insert({block.tool, block.tool_after});
    nmk_text::TextLines lines(block.text);
    for (nmk_text::TextLine line; lines.next(line);) {
        ExcellonWords words(line.text);
        while (const std::optional<ExcellonWord> word = words.take()) {
            const std::optional<int> number = small_number(word->number);
            if (word->letter == 'T' && number) {
                m_program->block_tools.insert(*number);
            }
        }
    }
}

void ProgramRecorder::add_point(const ExcellonPoint& point) {
    for (const ExcellonCoordinate& coordinate : {point.x, point.y}) {
        const bool has_digits = !coordinate.text.empty();
        const std::ptrdiff_t begin = has_digits ? coordinate.text.data() - m_text.data() : 0;
        m_program->coordinates.push_back({coordinate.value, static_cast<std::uint32_t>(begin),
                                          static_cast<std::uint32_t>(coordinate.text.size())});
    }
}

}  // namespace nmk_excellon

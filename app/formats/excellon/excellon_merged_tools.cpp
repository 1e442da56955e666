// excellon_merged_tools: the tools that a drill program still has after nmk_job::merge_tools.

#include "formats/excellon/excellon_merged_tools.h"

#include <algorithm>
#include <optional>

#include "formats/excellon/excellon_words.h"
#include "text/text_lines.h"

namespace nmk_excellon {

namespace {

void append(std::vector<std::string>& all, const std::vector<std::string>& more) {
    all.insert(all.end(), more.begin(), more.end());
}

}  // namespace

ProgramTools::ProgramTools(const nmk_job::MachiningJob& job, const ExcellonProgram& program)
    : m_job(job), m_program(program), m_lines(program.tools) {
    std::set<int> used;
    for (std::size_t tool = 0; tool < job.tools.size(); ++tool) {
        used.insert(number_of(tool));
    }
    for (const int number : program.tool_numbers) {
        if (used.insert(number).second) {
            merge(number);
        }
    }
}

int ProgramTools::number_of(std::size_t tool) const {
    return m_program.tool_numbers[m_job.tools[tool].source];
}

void ProgramTools::merge(int number) {
    const auto found = m_program.facts.diameters.find(number);
    if (found == m_program.facts.diameters.end()) {
        return;  // only tools with a diameter are merged
    }
    const auto kept =
        std::find_if(m_job.tools.begin(), m_job.tools.end(),
                     [&](const nmk_job::JobTool& tool) { return tool.diameter == found->second; });
    if (kept == m_job.tools.end()) {
        return;
    }
    ToolLines& lines = m_lines[m_program.tool_numbers[kept->source]];
    append(lines.before, m_lines[number].before);
    append(lines.after, m_lines[number].after);
    if (!m_program.block_tools.contains(number)) {
        m_dropped.insert(number);
    }
}

bool ProgramTools::is_of_dropped(std::string_view line) const {
    ExcellonWords words(line);
    const std::optional<ExcellonWord> tool = words.take();
    const std::optional<int> number =
        tool && tool->letter == 'T' ? small_number(tool->number) : std::nullopt;
    if (!number || !is_dropped(*number)) {
        return false;
    }
    while (const std::optional<ExcellonWord> word = words.take()) {
        if (!is_tool_parameter(word->letter)) {
            return false;
        }
    }
    return true;
}

std::string ProgramTools::kept_text(std::string_view text) const {
    if (m_dropped.empty()) {
        return std::string(text);
    }
    std::string kept;
    std::size_t copied = 0;
    nmk_text::TextLines lines(text);
    for (nmk_text::TextLine line; lines.next(line);) {
        if (is_of_dropped(line.text)) {
            kept += text.substr(copied, line.begin - copied);
            copied = line.end;
        }
    }
    kept += text.substr(copied);
    return kept;
}

std::vector<std::string> ProgramTools::kept_lines(const std::vector<std::string>& lines) const {
    std::vector<std::string> kept;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(kept),
                 [&](const std::string& line) { return !is_of_dropped(line); });
    return kept;
}

}  // namespace nmk_excellon

// excellon_writer.cpp: see excellon_writer.h.

#include "formats/excellon/excellon_writer.h"

#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "formats/excellon/excellon_merged_tools.h"
#include "formats/excellon/excellon_order_check.h"
#include "formats/excellon/excellon_program.h"
#include "text/text_lines.h"

namespace nmk_excellon {

namespace {

/// Puts the parts of a program together in another order.
class ProgramText {
  public:
    /// `all_with_point` writes every coordinate with a decimal point.
    ProgramText(const nmk_job::MachiningJob& job, const ExcellonProgram& program,
                bool all_with_point)
        : m_job(job),
          m_program(program),
          m_tools(job, program),
          m_all_with_point(all_with_point),
          m_ending(nmk_text::line_ending(job.text)) {}

    std::string in_order(std::span<const nmk_job::JobCut> order) {
        const std::string_view source = m_job.text;
        m_text = m_tools.kept_text(source.substr(0, m_program.head_end));
        add_lines(m_tools.kept_lines(m_program.definitions));
        if (m_program.facts.incremental) {
            add_line("G90");
        }
        nmk_job::each_tool_run(m_job, order,
                               [&](std::size_t tool, std::span<const nmk_job::JobCut> cuts) {
                                   add_blocks();
                                   add_run(m_tools.number_of(tool), cuts);
                               });
        add_blocks();
        m_text += m_tools.kept_text(source.substr(m_program.tail_begin));
        return std::move(m_text);
    }

  private:
    void add_line(std::string_view line) {
        m_text += line;
        m_text += m_ending;
    }

    void add_lines(const std::vector<std::string>& lines) {
        for (const std::string& line : lines) {
            add_line(line);
        }
    }

    /// The blocks whose cuts have all been written.
    void add_blocks() {
        const std::vector<ProgramBlock>& blocks = m_program.blocks;
        for (; m_blocks < blocks.size() && blocks[m_blocks].cuts_before == m_cuts; ++m_blocks) {
            const ProgramBlock& block = blocks[m_blocks];
            if (block.tool != m_tool && block.tool > 0) {
                add_line(m_program.tools.at(block.tool).select);
            }
            add_lines(block.before);
            m_text += block.text;
            m_tool = block.tool_after;
        }
    }

    /// The remarks of a tool are written with its first run only.
    void add_run(int tool, std::span<const nmk_job::JobCut> cuts) {
        const ToolLines& lines = m_tools.lines(tool);
        const bool is_first_run = m_begun.insert(tool).second;
        if (is_first_run) {
            add_lines(lines.before);
        }
        if (m_tool != tool) {
            add_line(lines.select);
        }
        m_tool = tool;
        m_cuts += cuts.size();
        if (is_first_run) {
            add_lines(lines.after);
        }
        for (const nmk_job::JobCut& cut : cuts) {
            add_cut(cut);
        }
    }

    /// "X1Y2", or "X1Y2G85X3Y4" for a slot.
    void add_cut(const nmk_job::JobCut& cut) {
        const std::size_t begin = m_program.cut_begins[cut.item];
        const bool is_slot = m_program.cut_end(cut.item) - begin == 4;
        const bool with_point = m_all_with_point || cut.item >= m_program.points_from;
        add_point(begin + (cut.reversed ? 2 : 0), with_point);
        if (is_slot) {
            m_text += "G85";
            add_point(begin + (cut.reversed ? 0 : 2), with_point);
        }
        m_text += m_ending;
    }

    void add_point(std::size_t begin, bool with_point) {
        m_text += 'X';
        add_coordinate(m_program.coordinates[begin], with_point);
        m_text += 'Y';
        add_coordinate(m_program.coordinates[begin + 1], with_point);
    }

    void add_coordinate(const ProgramCoordinate& coordinate, bool with_point) {
        if (coordinate.size == 0 || m_all_with_point) {
            m_text += excellon_number_text(coordinate.value, m_program.format, with_point);
        } else {
            m_text.append(m_job.text, coordinate.begin, coordinate.size);
        }
    }

    const nmk_job::MachiningJob& m_job;
    const ExcellonProgram& m_program;
    ProgramTools m_tools;
    bool m_all_with_point;
    std::string_view m_ending;
    std::string m_text;
    std::set<int> m_begun;     // tools that were selected already
    int m_tool = 0;            // selected last; 0: none
    std::size_t m_cuts = 0;    // written so far
    std::size_t m_blocks = 0;  // written so far
};

/// The program, or the Error of a program that does not cut the items in this order.
nmk_text::Result<std::string> write_checked(const nmk_job::MachiningJob& job,
                                            const ExcellonProgram& program,
                                            std::span<const nmk_job::JobCut> order,
                                            bool all_with_point) {
    std::string text = ProgramText(job, program, all_with_point).in_order(order);
    if (const auto checked = check_written_program(job, program, order, text); !checked) {
        return checked.error();
    }
    return text;
}

}  // namespace

nmk_text::Result<std::string> write_excellon(const nmk_job::MachiningJob& job,
                                             std::span<const nmk_job::JobCut> order, bool is_part) {
    const auto* program = dynamic_cast<const ExcellonProgram*>(job.source.get());
    if (program == nullptr || program->cut_count() != job.items.size()) {
        return nmk_text::Error{job.file_name, 0, "not a job that was read from a drill file"};
    }
    const bool may_leave_out = is_part && program->blocks.empty() && job.fences.empty();
    if (const auto checked = check_order(job, order, may_leave_out); !checked) {
        return checked.error();
    }
    if (order.empty()) {
        return job.text;
    }
    nmk_text::Result<std::string> text = write_checked(job, *program, order, false);
    if (text) {
        return text;
    }
    // The numbers of a file without LZ or TZ show which zeros it keeps. Repeats and increments that
    // are written out can hide that; a decimal point in every coordinate makes it irrelevant.
    nmk_text::Result<std::string> with_points = write_checked(job, *program, order, true);
    return with_points ? with_points : text;
}

}  // namespace nmk_excellon

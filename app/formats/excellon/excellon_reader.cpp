// excellon_reader.cpp: see excellon_reader.h.

#include "formats/excellon/excellon_reader.h"

#include <map>

#include "formats/excellon/excellon_parser.h"
#include "formats/excellon/excellon_program.h"

namespace nmk_excellon {

namespace {

/// Collects the items and their tools, and records the program for the writer.
class JobRecorder : public ProgramRecorder {
  public:
    explicit JobRecorder(nmk_job::MachiningJob& job) : ProgramRecorder(job.text), m_job(job) {}

    void cut(int tool, const ExcellonCut& cut, const ExcellonFormat& format, std::size_t line_begin,
             std::size_t line_end) override {
        ProgramRecorder::cut(tool, cut, format, line_begin, line_end);
        nmk_job::JobItem item;
        item.start = excellon_point(cut.start, format.units);
        if (cut.end) {
            item.end = excellon_point(*cut.end, format.units);
        }
        item.tool = position_of(tool);
        m_job.items.push_back(item);
    }

    /// Holes after a block are those of new tools, so that no order moves them across it.
    void block(const ExcellonBlock& block) override {
        ProgramRecorder::block(block);
        m_job.has_fixed_parts = true;
        m_positions.clear();
        const auto items = m_job.items.size();
        if (items > 0 && (m_job.fences.empty() || m_job.fences.back() != items)) {
            m_job.fences.push_back(items);
        }
    }

    void finish(const ExcellonFacts& facts) {
        m_job.units = facts.units;
        m_job.notes = facts.notes;
        for (std::size_t i = 0; i < m_numbers.size(); ++i) {
            const auto found = facts.diameters.find(m_numbers[i]);
            if (found != facts.diameters.end()) {
                m_job.tools[i].diameter = found->second;
            }
        }
        const std::shared_ptr<ExcellonProgram> program = take();
        program->facts = facts;
        program->tool_numbers = std::move(m_numbers);
        m_job.source = program;
    }

  private:
    /// The position of the tool in the job; a new tool is added.
    std::uint32_t position_of(int tool) {
        const auto position = static_cast<std::uint32_t>(m_numbers.size());
        const auto [found, is_new] = m_positions.try_emplace(tool, position);
        if (is_new) {
            m_job.tools.push_back({"T" + std::to_string(tool), std::nullopt});
            m_numbers.push_back(tool);
        }
        return found->second;
    }

    nmk_job::MachiningJob& m_job;
    std::map<int, std::uint32_t> m_positions;
    std::vector<int> m_numbers;  // of the tools of the job
};

}  // namespace

giPoint3 excellon_point(const ExcellonPoint& point, nmk_job::JobUnits units) {
    return giPoint3(excellon_millimetres(point.x.value, units),
                    excellon_millimetres(point.y.value, units), 0.0);
}

nmk_text::Result<nmk_job::MachiningJob> read_excellon(
    const std::string& file_name, std::string text,
    std::optional<nmk_job::JobUnits> units_if_unstated) {
    nmk_job::MachiningJob job;
    job.file_name = file_name;
    job.format = nmk_job::JobFormat::excellon;
    job.text = std::move(text);
    JobRecorder recorder(job);
    const nmk_text::Result<ExcellonFacts> facts =
        parse_excellon(job.text, units_if_unstated, recorder);
    if (!facts) {
        return facts.error().in_file(file_name);
    }
    recorder.finish(*facts);
    return job;
}

}  // namespace nmk_excellon

// excellon_reader.cpp: see excellon_reader.h.

#include "formats/excellon/excellon_reader.h"

#include <map>

#include "formats/excellon/excellon_parser.h"

namespace nmk_excellon {

namespace {

/// Gathers the cuts of each tool.
class CutCollector : public ExcellonListener {
  public:
    explicit CutCollector(std::vector<nmk_job::JobTool>& tools) : m_tools(tools) {}

    void cut(int tool, const ExcellonCut& cut, const ExcellonFormat& format, std::size_t,
             std::size_t) override {
        nmk_job::JobItem item;
        item.start = excellon_point(cut.start, format.units);
        if (cut.end) {
            item.end = excellon_point(*cut.end, format.units);
        }
        item.source_index = m_count++;
        const auto [place, is_new] = m_index.try_emplace(tool, m_tools.size());
        if (is_new) {
            m_tools.push_back({"T" + std::to_string(tool), std::nullopt, {}});
        }
        m_tools[place->second].items.push_back(item);
    }

    void set_diameters(const std::map<int, double>& diameters) {
        for (const auto& [number, index] : m_index) {
            const auto found = diameters.find(number);
            if (found != diameters.end()) {
                m_tools[index].diameter = found->second;
            }
        }
    }

  private:
    std::vector<nmk_job::JobTool>& m_tools;
    std::map<int, std::size_t> m_index;
    std::size_t m_count = 0;
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
    CutCollector collector(job.tools);
    const nmk_text::Result<ExcellonFacts> facts =
        parse_excellon(job.text, units_if_unstated, collector);
    if (!facts) {
        return facts.error().in_file(file_name);
    }
    collector.set_diameters(facts->diameters);
    job.units = facts->units;
    return job;
}

}  // namespace nmk_excellon

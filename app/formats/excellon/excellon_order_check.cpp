// excellon_order_check.cpp: see excellon_order_check.h.

#include "formats/excellon/excellon_order_check.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "formats/excellon/excellon_merged_tools.h"
#include "formats/excellon/excellon_reader.h"

namespace nmk_excellon {

namespace {

/// Compares the cuts of a program with those of an order.
class OrderComparison : public ExcellonListener {
  public:
    OrderComparison(const nmk_job::MachiningJob& job, const ExcellonProgram& program,
                    std::span<const nmk_job::JobCut> order)
        : m_job(job), m_program(program), m_order(order) {}

    void cut(int tool, const ExcellonCut& cut, const ExcellonFormat& format, std::size_t,
             std::size_t) override {
        if (m_count < m_order.size()) {
            m_is_same = m_is_same && is_same(m_order[m_count], tool, cut, format.units);
        }
        ++m_count;
    }

    void block(const ExcellonBlock& block) override {
        if (m_head_blocks < m_program.head_blocks) {
            ++m_head_blocks;
            return;
        }
        const std::vector<ProgramBlock>& blocks = m_program.blocks;
        m_is_same = m_is_same && m_blocks < blocks.size() &&
                    blocks[m_blocks].cuts_before == m_count &&
                    blocks[m_blocks].tool == block.tool && blocks[m_blocks].text == block.text;
        ++m_blocks;
    }

    bool is_same() const {
        return m_is_same && m_count == m_order.size() && m_blocks == m_program.blocks.size();
    }

  private:
    bool is_same(const nmk_job::JobCut& expected, int tool, const ExcellonCut& cut,
                 nmk_job::JobUnits units) const {
        const nmk_job::JobItem& item = m_job.items[expected.item];
        const giPoint3 start = excellon_point(cut.start, units);
        const giPoint3 end = cut.end ? excellon_point(*cut.end, units) : start;
        return m_program.tool_numbers[m_job.tools[item.tool].source] == tool &&
               item.end.has_value() == cut.end.has_value() &&
               start == nmk_job::entry_of(item, expected.reversed) &&
               end == nmk_job::exit_of(item, expected.reversed);
    }

    const nmk_job::MachiningJob& m_job;
    const ExcellonProgram& m_program;
    std::span<const nmk_job::JobCut> m_order;
    std::size_t m_count = 0;
    std::size_t m_head_blocks = 0;
    std::size_t m_blocks = 0;
    bool m_is_same = true;
};

/// Those of the program, without those that were merged into others and are not written.
std::map<int, double> expected_diameters(const nmk_job::MachiningJob& job,
                                         const ExcellonProgram& program,
                                         const std::map<int, double>& written) {
    const ProgramTools tools(job, program);
    std::map<int, double> expected = program.facts.diameters;
    std::erase_if(expected, [&](const auto& each) {
        return tools.is_dropped(each.first) && !written.contains(each.first);
    });
    return expected;
}

}  // namespace

nmk_text::Result<void> check_order(const nmk_job::MachiningJob& job,
                                   std::span<const nmk_job::JobCut> order, bool may_leave_out) {
    const auto error = [&](std::string message) {
        return nmk_text::Error{job.file_name, 0, std::move(message)};
    };
    const std::string count = std::to_string(job.items.size()) + " items";
    std::vector<bool> seen(job.items.size(), false);
    auto fence = job.fences.begin();
    for (std::size_t i = 0; i < order.size(); ++i) {
        const auto [item, reversed] = order[i];
        fence += fence != job.fences.end() && *fence == i ? 1 : 0;
        if (item >= seen.size()) {
            return error("the order has item " + std::to_string(item) + "; the file has " + count);
        }
        if (seen[item]) {
            return error("the order has item " + std::to_string(item) + " twice");
        }
        if (reversed && !job.items[item].end) {
            return error("the order reverses item " + std::to_string(item) + ", which is a hole");
        }
        if (fence != job.fences.end() && item >= *fence) {
            return error("the order moves item " + std::to_string(item) +
                         " across a routed path or a pattern");
        }
        seen[item] = true;
    }
    if (order.size() < seen.size() && !may_leave_out) {
        return error("the order leaves out " + std::to_string(seen.size() - order.size()) + " of " +
                     count);
    }
    return {};
}

nmk_text::Result<void> check_written_program(const nmk_job::MachiningJob& job,
                                             const ExcellonProgram& program,
                                             std::span<const nmk_job::JobCut> order,
                                             std::string_view text) {
    const std::string message = "the holes cannot be written in another order";
    OrderComparison comparison(job, program, order);
    const nmk_text::Result<ExcellonFacts> written = parse_excellon(text, job.units, comparison);
    if (!written) {
        return nmk_text::Error{job.file_name, 0, message + ": " + written.error().message};
    }
    if (!comparison.is_same() ||
        written->diameters != expected_diameters(job, program, written->diameters)) {
        return nmk_text::Error{job.file_name, 0, message};
    }
    return {};
}

}  // namespace nmk_excellon

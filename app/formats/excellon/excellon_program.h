// excellon_program.h: a drill program in parts that can be put together in another order.
//
// The reader records the parts while it reads, so that the writer does not read the text again. A
// coordinate is recorded by its position in the text, which the job holds; the few lines that are
// neither holes nor slots are recorded as text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "formats/excellon/excellon_parser.h"
#include "formats/job/machining_job.h"

namespace nmk_excellon {

/// A coordinate, and its digits if the program has them.
struct ProgramCoordinate {
    std::int64_t value = 0;   // billionths of the unit
    std::uint32_t begin = 0;  // of the digits, in the text
    std::uint32_t size = 0;   // of the digits; 0 if the program has none
};

/// What is written when a tool is selected.
struct ToolLines {
    std::string select;               // "T01"
    std::vector<std::string> before;  // remarks before the tool is selected
    std::vector<std::string> after;   // remarks between the selection and the first hole
};

/// A routed path or a pattern between the cuts.
struct ProgramBlock {
    std::size_t cuts_before = 0;
    int tool = 0;                     // selected before it; 0: none
    int tool_after = 0;               // selected after it
    std::vector<std::string> before;  // remarks
    std::string text;                 // with line endings
};

struct ExcellonProgram : nmk_job::JobSource {
    std::size_t head_end = 0;              // the text before this position is kept as it is
    std::size_t tail_begin = 0;            // so is the text from this position on
    std::vector<std::string> definitions;  // lines between the holes that hold for all of them
    std::map<int, ToolLines> tools;        // by tool number
    std::vector<int> tool_numbers;         // of the tools of the job, by JobTool::source
    std::set<int> block_tools;             // numbers of the tools of all blocks
    std::vector<ProgramBlock> blocks;      // in the order of the file, without those of the head
    std::size_t head_blocks = 0;           // number of those of the head
    ExcellonFormat format;                 // of all coordinates
    ExcellonFacts facts;

    std::vector<ProgramCoordinate> coordinates;  // of all cuts: x and y of each point
    std::vector<std::uint32_t> cut_begins;       // position of the first coordinate of each cut
    std::size_t points_from = std::numeric_limits<std::size_t>::max();  // cuts from here on have
                                                                        // decimal points

    std::size_t cut_count() const { return cut_begins.size(); }

    /// Position behind the last coordinate of the cut.
    std::size_t cut_end(std::size_t cut) const {
        return cut + 1 < cut_count() ? cut_begins[cut + 1] : coordinates.size();
    }
};

/// Records the parts of a program while it is parsed.
class ProgramRecorder : public ExcellonListener {
  public:
    explicit ProgramRecorder(std::string_view text) : m_text(text) {}

    void line_kept(std::string_view line, ExcellonLine kind) override;
    void tool_selected(int number, std::string_view text, std::size_t line_begin) override;
    void cut(int tool, const ExcellonCut& cut, const ExcellonFormat& format, std::size_t line_begin,
             std::size_t line_end) override;
    void block(const ExcellonBlock& block) override;

    /// What was recorded; to be taken once.
    std::shared_ptr<ExcellonProgram> take() { return std::move(m_program); }

  private:
    void add_point(const ExcellonPoint& point);
    void add_block_tools(const ExcellonBlock& block);

    std::string_view m_text;
    std::shared_ptr<ExcellonProgram> m_program = std::make_shared<ExcellonProgram>();
    bool m_has_body = false;
    std::vector<std::string> m_remarks;              // since the last tool or cut
    std::vector<std::string> m_remarks_before_tool;  // before the last tool
    std::vector<std::string> m_definitions;          // since the last cut
};

}  // namespace nmk_excellon

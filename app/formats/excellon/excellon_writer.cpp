// excellon_writer.cpp: see excellon_writer.h.

#include "formats/excellon/excellon_writer.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "formats/excellon/excellon_parser.h"
#include "formats/excellon/excellon_reader.h"
#include "formats/excellon/excellon_words.h"
#include "text/text_lines.h"

namespace nmk_excellon {

namespace {

constexpr std::string_view slot_word = "G85";

/// What one tool brings along.
struct ToolText {
    std::string select;               // "T01"
    std::vector<std::string> before;  // remarks that stood before the tool was taken up
    std::vector<std::string> after;   // remarks that stood behind it, before its holes
};

/// A program in parts that can be put together in another order.
class ProgramParts : public ExcellonListener {
  public:
    explicit ProgramParts(bool all_with_point) : m_all_with_point(all_with_point) {}

    void line_kept(std::string_view line, ExcellonLine kind) override {
        if (!m_body_begin) {
            return;
        }
        auto& pending = kind == ExcellonLine::remark ? m_pending : m_pending_definitions;
        pending.emplace_back(line);
    }

    void tool_selected(int number, std::string_view text, std::size_t line_begin) override {
        if (m_cut_begins.empty()) {  // what stands before the first tool that cuts is the head
            m_body_begin = line_begin;
            tools.clear();
            m_pending.clear();
            m_pending_definitions.clear();
        }
        if (number > 0) {
            tools.try_emplace(number, ToolText{std::string(text), {}, {}});
            move_all(m_pending, m_pending_before);
        }
    }

    void cut(int tool, const ExcellonCut& cut, const ExcellonFormat& format, std::size_t,
             std::size_t line_end) override {
        tail_begin = line_end;
        move_all(m_pending_definitions, definitions);
        move_all(m_pending_before, tools[tool].before);
        move_all(m_pending, tools[tool].after);
        m_cut_begins.push_back(static_cast<std::uint32_t>(m_cuts.size()));
        m_tools_of_cuts.push_back(tool);
        add_point(cut.start, format, cut.with_point || m_all_with_point);
        if (cut.end) {
            m_cuts += slot_word;
            add_point(*cut.end, format, cut.with_point || m_all_with_point);
        }
    }

    std::size_t count() const { return m_cut_begins.size(); }
    int tool_of(std::size_t index) const { return m_tools_of_cuts[index]; }
    std::size_t head_end() const { return m_body_begin.value_or(0); }

    /// "X1Y2" or "X1Y2G85X3Y4", start and end exchanged where asked for.
    std::string cut_text(std::size_t index, bool reversed) const {
        const std::size_t begin = m_cut_begins[index];
        const std::size_t end = index + 1 < count() ? m_cut_begins[index + 1] : m_cuts.size();
        const std::string text = m_cuts.substr(begin, end - begin);
        const std::size_t slot = text.find(slot_word);
        if (!reversed || slot == std::string::npos) {
            return text;
        }
        return text.substr(slot + slot_word.size()) + std::string(slot_word) + text.substr(0, slot);
    }

    std::map<int, ToolText> tools;
    std::vector<std::string> definitions;
    std::size_t tail_begin = 0;

  private:
    static void move_all(std::vector<std::string>& from, std::vector<std::string>& to) {
        to.insert(to.end(), from.begin(), from.end());
        from.clear();
    }

    void add_coordinate(const ExcellonCoordinate& coordinate, const ExcellonFormat& format,
                        bool with_point) {
        m_cuts += coordinate.text.empty() || m_all_with_point
                      ? excellon_number_text(coordinate.value, format, with_point)
                      : std::string(coordinate.text);
    }

    void add_point(const ExcellonPoint& point, const ExcellonFormat& format, bool with_point) {
        m_cuts += 'X';
        add_coordinate(point.x, format, with_point);
        m_cuts += 'Y';
        add_coordinate(point.y, format, with_point);
    }

    bool m_all_with_point;
    std::optional<std::size_t> m_body_begin;
    std::vector<std::string> m_pending;         // remarks since the last tool or cut
    std::vector<std::string> m_pending_before;  // remarks before the last tool
    std::vector<std::string> m_pending_definitions;
    std::string m_cuts;  // the texts of all cuts, one behind the other
    std::vector<std::uint32_t> m_cut_begins;
    std::vector<int> m_tools_of_cuts;
};

/// Compares the cuts of a written program with those that were meant.
class OrderCheck : public ExcellonListener {
  public:
    explicit OrderCheck(const nmk_job::MachiningJob& ordered) : m_job(ordered) {}

    void cut(int tool, const ExcellonCut& cut, const ExcellonFormat& format, std::size_t,
             std::size_t) override {
        while (m_tool < m_job.tools.size() && m_item == m_job.tools[m_tool].items.size()) {
            ++m_tool;
            m_item = 0;
        }
        if (m_tool == m_job.tools.size()) {
            m_same = false;
            return;
        }
        const nmk_job::JobItem& item = m_job.tools[m_tool].items[m_item++];
        const giPoint3 start = excellon_point(cut.start, format.units);
        const giPoint3 end = cut.end ? excellon_point(*cut.end, format.units) : start;
        m_same = m_same && m_job.tools[m_tool].name == "T" + std::to_string(tool) &&
                 item.end.has_value() == cut.end.has_value() && start == item.entry() &&
                 end == item.exit();
        ++m_count;
    }

    bool same(std::size_t count) const { return m_same && m_count == count; }

  private:
    const nmk_job::MachiningJob& m_job;
    std::size_t m_tool = 0;
    std::size_t m_item = 0;
    std::size_t m_count = 0;
    bool m_same = true;
};

std::optional<int> tool_number(const std::string& name) {
    return name.starts_with('T') ? small_number(std::string_view(name).substr(1)) : std::nullopt;
}

/// Why the order is no order of the file's cuts: empty when all is well.
std::string problem_of_order(const nmk_job::MachiningJob& ordered, const ProgramParts& parts) {
    std::vector<bool> seen(parts.count(), false);
    std::size_t count = 0;
    for (const nmk_job::JobTool& tool : ordered.tools) {
        for (const nmk_job::JobItem& item : tool.items) {
            const std::string name = "item " + std::to_string(item.source_index);
            if (item.source_index >= seen.size() || seen[item.source_index]) {
                return name + " of the order is not in the file or stands twice in the order";
            }
            if (tool_number(tool.name) != parts.tool_of(item.source_index)) {
                return name + " is ordered with " + tool.name + ", which does not cut it";
            }
            if (item.reversed && !item.end) {
                return name + " is turned but has no end";
            }
            seen[item.source_index] = true;
            ++count;
        }
    }
    return count == seen.size() ? ""
                                : "the order leaves out " + std::to_string(seen.size() - count) +
                                      " of " + std::to_string(seen.size()) + " items";
}

/// Puts the parts together.
class ProgramText {
  public:
    ProgramText(const nmk_job::MachiningJob& ordered, ProgramParts& parts)
        : m_job(ordered), m_parts(parts), m_ending(nmk_text::line_ending(ordered.text)) {}

    std::string put_together(bool with_absolute_positions) {
        const std::string_view source = m_job.text;
        m_text = source.substr(0, m_parts.head_end());
        add_lines(m_parts.definitions);
        if (with_absolute_positions) {
            add_line("G90");
        }
        for (const nmk_job::JobTool& tool : m_job.tools) {
            if (!tool.items.empty()) {
                add_tool(tool);
            }
        }
        m_text += source.substr(m_parts.tail_begin);
        return std::move(m_text);
    }

  private:
    void add_line(std::string_view line) {
        m_text += line;
        m_text += m_ending;
    }

    void add_lines(std::vector<std::string>& lines) {
        for (const std::string& line : lines) {
            add_line(line);
        }
        lines.clear();  // a tool that is taken up again does not repeat its remarks
    }

    void add_tool(const nmk_job::JobTool& tool) {
        const int number = tool_number(tool.name).value_or(0);
        ToolText& text = m_parts.tools[number];
        add_lines(text.before);
        if (number != m_current_tool) {
            add_line(text.select);
        }
        m_current_tool = number;
        add_lines(text.after);
        for (const nmk_job::JobItem& item : tool.items) {
            add_line(m_parts.cut_text(item.source_index, item.reversed));
        }
    }

    const nmk_job::MachiningJob& m_job;
    ProgramParts& m_parts;
    std::string_view m_ending;
    std::string m_text;
    int m_current_tool = 0;
};

/// One way of writing the program; the error tells why the result would not be the ordered one.
nmk_text::Result<std::string> write_checked(const nmk_job::MachiningJob& ordered,
                                            bool all_with_point) {
    ProgramParts parts(all_with_point);
    const nmk_text::Result<ExcellonFacts> facts =
        parse_excellon(ordered.text, ordered.units, parts);
    if (!facts) {
        return facts.error().in_file(ordered.file_name);
    }
    if (std::string problem = problem_of_order(ordered, parts); !problem.empty()) {
        return nmk_text::Error{ordered.file_name, 0, std::move(problem)};
    }
    if (parts.count() == 0) {
        return ordered.text;
    }
    std::string text = ProgramText(ordered, parts).put_together(facts->incremental);
    OrderCheck check(ordered);
    const nmk_text::Result<ExcellonFacts> written = parse_excellon(text, ordered.units, check);
    const std::string message = "its holes cannot be written in another order";
    if (!written) {
        return nmk_text::Error{ordered.file_name, written.error().line,
                               message + ": " + written.error().message};
    }
    if (!check.same(parts.count()) || written->diameters != facts->diameters) {
        return nmk_text::Error{ordered.file_name, 0, message};
    }
    return text;
}

}  // namespace

nmk_text::Result<std::string> write_excellon(const nmk_job::MachiningJob& ordered) {
    nmk_text::Result<std::string> text = write_checked(ordered, false);
    if (text) {
        return text;
    }
    // Which zeros a file without LZ or TZ keeps is told by its numbers. Repeats and increments that
    // are written out can take that away; a point in every coordinate then says the same.
    nmk_text::Result<std::string> with_points = write_checked(ordered, true);
    return with_points ? with_points : text;
}

}  // namespace nmk_excellon

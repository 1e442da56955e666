// gcode_writer: an ordered job as a program for a mill or a drilling machine.

#include "formats/gcode/gcode_writer.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "files/base_name.h"
#include "formats/gcode/tool_numbers.h"
#include "text/number_format.h"

namespace nmk_gcode {

namespace {

constexpr int decimals_of_mm = 4;
constexpr int decimals_of_inches = 5;
constexpr int decimals_of_feeds = 2;
constexpr std::size_t max_comment = 60;  // letters; controls cut long lines
// Smaller numbers would vanish in the decimals of the program.
constexpr double least_height = 0.001;  // mm; depth, and of the retract height above an item
constexpr double max_place = 1e5;       // mm; controls read few digits before the decimal point

/// Text from outside as a comment. Brackets would end it, and controls act on other letters, also
/// within comments: letters, digits and a few marks remain, anything else becomes '_'.
std::string comment(std::string_view text) {
    constexpr std::string_view marks = " .,-+=:/";
    std::string safe;
    for (const char letter : text.substr(0, max_comment)) {
        const bool is_letter = (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
        const bool is_digit = letter >= '0' && letter <= '9';
        const bool is_kept = is_letter || is_digit || marks.find(letter) != std::string_view::npos;
        safe += is_kept ? letter : '_';
    }
    return "(" + safe + ")\n";
}

/// A number with a decimal point, whatever its value: without one many controls count in the least
/// step of an axis, so that 10 is a hundredth of a millimetre.
std::string decimal(double value, int decimals) {
    std::string text = nmk_text::short_number(value, decimals);
    return text.find('.') == std::string::npos ? text + "." : text;
}

class Program {
  public:
    Program(const nmk_job::MachiningJob& job, const GcodeSettings& settings, const Bends& bends)
        : m_job(job),
          m_settings(settings),
          m_bends(bends),
          m_tool_numbers(tool_numbers(job.tools)) {}

    std::string write(std::span<const nmk_job::JobCut> order) {
        const bool is_whole = m_settings.is_across_tools;
        const auto cut_run = [&](std::size_t tool, std::span<const nmk_job::JobCut> cuts) {
            change_tool(tool);
            if (!is_whole || &cuts.front() == &order.front()) {
                go_to_start();
            }
            cut_all(cuts);
            if (!is_whole || &cuts.back() == &order.back()) {
                go_to_end(is_whole ? order.front() : cuts.front());
            }
        };
        nmk_job::each_tool_run(m_job, order, cut_run);
        m_text += m_settings.spindle ? "M5\nM30\n%\n" : "M30\n%\n";
        return beginning(order.size()) + m_text;
    }

  private:
    double in_units(double mm) const { return mm / nmk_job::mm_of(m_settings.units); }

    std::string length(double mm) const {
        const bool is_inch = m_settings.units == nmk_job::JobUnits::inches;
        return decimal(in_units(mm), is_inch ? decimals_of_inches : decimals_of_mm);
    }
    std::string feed(double mm_per_minute) const {
        return " F" + decimal(in_units(mm_per_minute), decimals_of_feeds);
    }
    std::string place(const giPoint3& p) const { return " X" + length(p.x) + " Y" + length(p.y); }

    // Where a control joins moves by rounding their corners, it would cut the bends short.
    std::string beginning(std::size_t cuts) const {
        std::string text = "%\n" + comment(nmk_files::base_name(m_job.file_name));
        if (cuts < m_job.items.size()) {
            text += comment(std::to_string(m_job.items.size() - cuts) + " of " +
                            std::to_string(m_job.items.size()) + " items left out");
        }
        text += m_settings.units == nmk_job::JobUnits::inches ? "G20" : "G21";
        text += " G17 G40 G49 G80 G90 G94\n";
        return m_has_bends ? text + "G61\n" : text;
    }

    // The tool is up when the program stops, and up again before the next rapid.
    void change_tool(std::size_t position) {
        const nmk_job::JobTool& tool = m_job.tools[position];
        const std::string diameter =
            tool.diameter ? " diameter " + nmk_text::short_number(*tool.diameter, 4) + " mm" : "";
        if (m_settings.spindle) {
            m_text += "M5\n";
        }
        m_text += comment("tool " + tool.name + diameter);
        m_text += "T" + std::to_string(m_tool_numbers[position]) + " M6\nM0\n";
        if (m_settings.spindle) {
            m_text += "S" + nmk_text::short_number(*m_settings.spindle, 0) + " M3\n";
        }
        m_text += "G0 Z" + length(m_settings.retract) + "\n";
        if (m_at) {
            m_text += "G0" + place(*m_at) + "\n";
        }
    }

    void go_to_start() {
        if (m_settings.start) {
            rapid_to(*m_settings.start);
        }
    }

    void go_to_end(const nmk_job::JobCut& first) {
        if (m_settings.is_closed) {
            rapid_to(nmk_job::entry_of(m_job.items[first.item], first.reversed));
        } else if (m_settings.end) {
            rapid_to(*m_settings.end);
        }
    }

    void cut_all(std::span<const nmk_job::JobCut> cuts) {
        for (const nmk_job::JobCut& cut : cuts) {
            const nmk_job::JobItem& item = m_job.items[cut.item];
            rapid_to(nmk_job::entry_of(item, cut.reversed));
            m_text +=
                "G1 Z" + length(m_at->z - m_settings.depth) + feed(m_settings.plunge_feed) + "\n";
            if (item.end) {
                const giPoint3& end = nmk_job::exit_of(item, cut.reversed);
                m_text += "G1" + place(end) + " Z" + length(end.z - m_settings.depth) +
                          feed(*m_settings.feed) + "\n";
                m_at = end;
            }
            m_text += "G0 Z" + length(m_settings.retract) + "\n";
        }
    }

    // The first rapid of the program comes from an unknown place.
    void rapid_to(const giPoint3& to) {
        if (m_at && m_bends) {
            for (const giPoint3& bend : m_bends(*m_at, to)) {
                m_text += "G0" + place(bend) + "\n";
                m_has_bends = true;
            }
        }
        if (!m_at || m_at->x != to.x || m_at->y != to.y) {
            m_text += "G0" + place(to) + "\n";
        }
        m_at = to;
    }

    const nmk_job::MachiningJob& m_job;
    const GcodeSettings& m_settings;
    const Bends& m_bends;
    std::vector<int> m_tool_numbers;
    std::optional<giPoint3> m_at;  // the place of the tool, with the z of the item there
    bool m_has_bends = false;
    std::string m_text;  // all but its beginning
};

using Fault = std::string;  // empty: none

bool is_feed(double value) { return value >= min_feed && std::isfinite(value); }

Fault fault_of_settings(const GcodeSettings& settings) {
    if (!(settings.depth >= least_height) || !std::isfinite(settings.depth)) {
        return "expected a depth of at least 0.001 mm";
    }
    if (!is_feed(settings.plunge_feed) || !is_feed(settings.feed.value_or(min_feed))) {
        return "expected feeds of at least 1 mm per minute";
    }
    if (settings.spindle && !(*settings.spindle >= 1.0 && std::isfinite(*settings.spindle))) {
        return "expected a spindle speed of at least 1 per minute";
    }
    return {};
}

/// What the items of an order need.
struct Needs {
    double highest = 0.0;   // z, mm
    double farthest = 0.0;  // any coordinate, mm
    bool has_slots = false;

    void add(const giPoint3& place) {
        highest = std::max(highest, place.z);
        farthest = std::max({farthest, std::fabs(place.x), std::fabs(place.y), std::fabs(place.z)});
    }
};

Needs needs_of(const nmk_job::MachiningJob& job, std::span<const nmk_job::JobCut> order,
               const GcodeSettings& settings) {
    Needs needs;
    for (const nmk_job::JobCut& cut : order) {
        const nmk_job::JobItem& item = job.items[cut.item];
        needs.add(item.start);
        needs.add(item.end.value_or(item.start));
        needs.has_slots = needs.has_slots || item.end.has_value();
    }
    for (const std::optional<giPoint3>& place : {settings.start, settings.end}) {
        if (place) {
            needs.add({place->x, place->y, 0.0});  // at the retract height, whatever its z
        }
    }
    return needs;
}

Fault fault_of_needs(const Needs& needs, const GcodeSettings& settings) {
    if (!(settings.retract >= needs.highest + least_height) || !std::isfinite(settings.retract)) {
        return "the highest item is at z " + nmk_text::short_number(needs.highest, 4) +
               " mm; expected a retract height above it and above 0";
    }
    if (!(needs.farthest <= max_place)) {
        return "expected places within 100000 mm of the origin";
    }
    return needs.has_slots && !settings.feed ? "the order has slots; expected a feed for them"
                                             : Fault();
}

Fault fault_of(const nmk_job::MachiningJob& job, std::span<const nmk_job::JobCut> order,
               const GcodeSettings& settings) {
    if (job.has_fixed_parts) {
        return "routed paths and patterns cannot be written as G-code; expected holes and slots "
               "only";
    }
    const Fault fault = fault_of_settings(settings);
    return fault.empty() ? fault_of_needs(needs_of(job, order, settings), settings) : fault;
}

}  // namespace

nmk_text::Result<std::string> write_gcode(const nmk_job::MachiningJob& job,
                                          std::span<const nmk_job::JobCut> order,
                                          const GcodeSettings& settings, const Bends& bends) {
    const Fault fault = fault_of(job, order, settings);
    if (!fault.empty()) {
        return nmk_text::Error{{}, 0, fault};
    }
    return Program(job, settings, bends).write(order);
}

}  // namespace nmk_gcode

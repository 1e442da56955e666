#include "debug_picture.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <ostream>

namespace nmk_arcline {
namespace {

constexpr double longer_side = 800.0;  // pixels
constexpr double margin = 20.0;        // pixels, on every side
constexpr std::array<const char*, 8> palette = {"#1f77b4", "#d62728", "#2ca02c", "#ff7f0e",
                                                "#9467bd", "#8c564b", "#17becf", "#7f7f7f"};

// Independent of the locale, unlike the stream's own conversion.
std::string pixels(double value) {
    std::array<char, 64> text{};
    const auto written =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, 3);
    return {text.data(), written.ptr};
}

// Labels are arbitrary text: markup is escaped, and characters that XML forbids become spaces.
std::string escaped(const std::string& label) {
    std::string text;
    for (const char each : label) {
        switch (each) {
            case '&':
                text += "&amp;";
                break;
            case '<':
                text += "&lt;";
                break;
            case '>':
                text += "&gt;";
                break;
            case '"':
                text += "&quot;";
                break;
            default:
                text += static_cast<unsigned char>(each) < 0x20 ? ' ' : each;
        }
    }
    return text;
}

const char* colour_of(int index) {
    const int count = static_cast<int>(palette.size());
    return palette[static_cast<std::size_t>(((index % count) + count) % count)];
}

}  // namespace

DebugPicture::Group& DebugPicture::group_of(const std::string& label) {
    const auto [entry, is_new] = m_position_of.try_emplace(label, m_groups.size());
    if (is_new) m_groups.push_back({label, {}});
    return m_groups[entry->second];
}

void DebugPicture::add(const std::string& label, const nmkAbsPolyArcLineVec& path, int colour,
                       int weight) {
    for (const giPoint3& point : path.points) {
        m_left = m_is_empty ? point.x : std::min(m_left, point.x);
        m_right = m_is_empty ? point.x : std::max(m_right, point.x);
        m_bottom = m_is_empty ? point.y : std::min(m_bottom, point.y);
        m_top = m_is_empty ? point.y : std::max(m_top, point.y);
        m_is_empty = false;
    }
    group_of(label).lines.push_back({path, colour, std::max(weight, 1)});
}

void DebugPicture::write_line(std::ostream& out, const Line& line, double scale) const {
    out << "    <polyline stroke=\"" << colour_of(line.colour) << "\" stroke-width=\""
        << std::to_string(line.weight) << "\" points=\"";
    const char* between = "";
    for (const giPoint3& point : line.path.points) {
        const double x = margin + (point.x - m_left) * scale;
        const double y = margin + (m_top - point.y) * scale;
        out << between << pixels(x) << ',' << pixels(y);
        between = " ";
    }
    out << "\"/>\n";
}

void DebugPicture::write(std::ostream& out) const {
    const double wide = m_right - m_left;
    const double high = m_top - m_bottom;
    const double longest = std::max(wide, high);
    // No scale fits an extent of zero, or one beyond the range of double.
    const double fitting = longer_side / longest;
    const double scale = longest > 0.0 && std::isfinite(fitting) ? fitting : 0.0;
    const std::string width = pixels(2.0 * margin + (scale > 0.0 ? wide * scale : 0.0));
    const std::string height = pixels(2.0 * margin + (scale > 0.0 ? high * scale : 0.0));
    out << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << width << "\" height=\"" << height
        << "\" viewBox=\"0 0 " << width << ' ' << height << "\">\n";
    for (const Group& group : m_groups) {
        out << "  <g fill=\"none\">\n    <title>" << escaped(group.label) << "</title>\n";
        for (const Line& line : group.lines) {
            if (scale > 0.0) write_line(out, line, scale);
        }
        out << "  </g>\n";
    }
    out << "</svg>\n";
}

}  // namespace nmk_arcline

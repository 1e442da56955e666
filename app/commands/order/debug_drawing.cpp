// debug_drawing: a debug channel of the library, on while a command runs.

#include "commands/order/debug_drawing.h"

#include <nmkarcline/nmkDebugGeometry.h>

#include <algorithm>
#include <sstream>

namespace nmk_order {

namespace {

// The channels on which a sort draws, each with the lowest level that draws anything.
const DebugChannel known_channels[] = {{"nmkPointSorter", 2}, {"nmkAnnealStateNonReversible", 1}};

nmkDebugGeometry& geometry_of(const std::string& name) {
    return nmkDebugGeometry::get_from_manager(name.c_str());
}

std::string known_names() {
    std::string names;
    for (const DebugChannel& known : known_channels) {
        names += (names.empty() ? "" : " or ") + known.name;
    }
    return names;
}

}  // namespace

bool read_debug_channel(const std::string& text, DebugChannel& channel, std::string& problem) {
    const std::size_t equals = text.find('=');
    const std::string name = text.substr(0, equals);
    const auto* known =
        std::find_if(std::begin(known_channels), std::end(known_channels),
                     [&name](const DebugChannel& candidate) { return candidate.name == name; });
    if (known == std::end(known_channels)) {
        problem = "unknown debug channel; expected " + known_names();
        return false;
    }
    channel = *known;
    if (equals == std::string::npos) {
        return true;
    }
    const std::string level = text.substr(equals + 1);
    if (level.size() != 1 || level[0] < '1' || level[0] > '9') {
        problem = "unknown debug level; expected 1 to 9";
        return false;
    }
    channel.level = level[0] - '0';
    return true;
}

DebugDrawing::DebugDrawing(const DebugChannel& channel) : m_name(channel.name) {
    if (!m_name.empty()) {
        geometry_of(m_name).clear();
        geometry_of(m_name).switch_on(channel.level);
    }
}

DebugDrawing::~DebugDrawing() {
    if (!m_name.empty()) {
        geometry_of(m_name).switch_off();
        geometry_of(m_name).clear();
    }
}

bool is_debug_drawing_empty(const DebugChannel& channel) {
    return geometry_of(channel.name).size() == 0;
}

std::string debug_drawing_svg(const DebugChannel& channel) {
    std::ostringstream text;
    geometry_of(channel.name).write_svg(text);
    return text.str();
}

}  // namespace nmk_order

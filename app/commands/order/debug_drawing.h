// debug_drawing.h: a debug channel of the library, on while a command runs.
//
// The library draws on named channels what it is given and what it makes of it; see
// nmkDebugGeometry. They are off unless somebody asks for one by name.
#pragma once

#include <string>

namespace nmk_order {

/// What the ordering of the library draws on; a channel is told with as much detail as it has.
struct DebugChannel {
    std::string name;  // empty: none
    int level = 1;
};

/// The channel of a text "NAME" or "NAME=LEVEL", with the level that shows everything where none is
/// told. False, with one line in `problem`, when there is no such channel or level.
bool read_debug_channel(const std::string& text, DebugChannel& channel, std::string& problem);

/// Switches a channel on and forgets its drawings at the end.
class DebugDrawing {
  public:
    explicit DebugDrawing(const DebugChannel& channel);
    ~DebugDrawing();
    DebugDrawing(const DebugDrawing&) = delete;
    DebugDrawing& operator=(const DebugDrawing&) = delete;

  private:
    std::string m_name;
};

/// True when nothing was drawn on the channel.
bool is_debug_drawing_empty(const DebugChannel& channel);

/// What was drawn on the channel so far, as SVG.
std::string debug_drawing_svg(const DebugChannel& channel);

}  // namespace nmk_order

// debug_drawing.h: a debug channel of the library, on while a command runs.
//
// The library can draw its input and output on named channels; see nmkDebugGeometry. A channel is
// off unless the user switches it on by name.
#pragma once

#include <string>

namespace nmk_order {

/// A channel on which the ordering of the library draws, with the level of detail.
struct DebugChannel {
    std::string name;  // empty: none
    int level = 1;
};

/// Reads "NAME" or "NAME=LEVEL"; without a level the channel gets the one that draws everything.
/// False, with one line in `problem`, for an unknown channel or level.
bool read_debug_channel(const std::string& text, DebugChannel& channel, std::string& problem);

/// Switches a channel on; the destructor switches it off and clears it.
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

/// The drawings on the channel so far, as SVG.
std::string debug_drawing_svg(const DebugChannel& channel);

}  // namespace nmk_order

// html_frame.h: the frame of every HTML page of the tool: head, style, heading and scripts.
//
// A page is one file that loads nothing: its security policy forbids every request, and only the
// tool's own script runs in it, whatever a name in the content might smuggle in.
#pragma once

#include <string>

namespace nmk_draw {

/// The page as text. Title and heading are escaped here; `content` is HTML already.
std::string html_frame(const std::string& title, const std::string& heading,
                       const std::string& content);

}  // namespace nmk_draw

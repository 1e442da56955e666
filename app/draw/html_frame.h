// html_frame.h: the frame of every HTML page of the tool: head, style and heading.
#pragma once

#include <string>

namespace nmk_draw {

/// The page as text. Title and heading are escaped here; `content` is HTML already.
std::string html_frame(const std::string& title, const std::string& heading,
                       const std::string& content);

}  // namespace nmk_draw

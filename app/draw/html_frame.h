// html_frame.h: what every page of the tool has around its content: head, style and heading.
#pragma once

#include <string>

namespace nmk_draw {

/// The page as text. Title and heading are escaped here, `content` is taken as it is.
std::string html_frame(const std::string& title, const std::string& heading,
                       const std::string& content);

}  // namespace nmk_draw

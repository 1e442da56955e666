// page_texts.h: the style and the script of every HTML page, from the files in page/.
//
// The build turns these files into C++ (cmake/EmbedPage.cmake), and computes the hashes by which a
// page's security policy names them: "sha256-" and the hash in base64.
#pragma once

#include <string_view>

namespace nmk_draw {

std::string_view page_style();
std::string_view page_style_hash();
std::string_view page_script();
std::string_view page_script_hash();

}  // namespace nmk_draw

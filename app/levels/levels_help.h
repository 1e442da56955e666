// levels_help.h: what `nmk help levels` prints.
#pragma once

#include <string>

namespace nmk_app {

std::string levels_help();

}  // namespace nmk_app

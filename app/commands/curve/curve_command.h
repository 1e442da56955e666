// curve_command.h: the command `nmk curve`, which makes curves and examines those of files.
#pragma once

#include "shell/command.h"

namespace nmk_curve {

nmk_shell::Run declare_curve(nmk_shell::OptionTable& table);

inline constexpr nmk_shell::Command curve_command{"curve", "make, measure, compare and draw curves",
                                                  declare_curve};

}  // namespace nmk_curve

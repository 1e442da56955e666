// fault_code.h: the code of a fault, from what the kernel and the processor report.
#pragma once

#include <signal.h>

#include "machine_state.h"

namespace nmk_seh {

inline constexpr unsigned int stack_overflow = 0xC00000FD;

/// The code under which structured exceptions report such a fault; 0 for a signal that is no fault.
unsigned int fault_code(const siginfo_t& fault, const MachineState& state);

}  // namespace nmk_seh

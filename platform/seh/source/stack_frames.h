// stack_frames.h: whether an exception can be thrown out of an instruction.
#pragma once

#include "machine_state.h"

namespace nmk_seh {

/// Finds out where the C library is in memory. Once, before the first fault.
void find_c_library();

/// Whether the unwinder knows the function that the instruction is part of.
bool has_frame(std::uintptr_t instruction);

/// Whether the C library may hold a lock there, which an exception would leave held: in all its
/// functions but those for bytes and texts in memory, and in these when it calls them itself. Only
/// in a signal handler, for the instruction that was interrupted.
bool may_hold_locks(std::uintptr_t instruction);

/// Where the stack overflowed before a function had begun its work, moves the state to the call of
/// that function: an exception that came out of the beginning would end the process, since a
/// compiler has no table for it. Only in a signal handler.
void leave_unbegun_function(MachineState& state);

}  // namespace nmk_seh

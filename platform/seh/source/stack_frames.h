// stack_frames.h: whether an exception can be thrown out of an instruction.
#pragma once

#include <cstdint>

namespace nmk_seh {

/// Finds out where the C library is in memory. Once, before the first fault.
void find_c_library();

/// Whether the unwinder knows the function that the instruction is part of.
bool has_frame(std::uintptr_t instruction);

/// Whether the C library may hold a lock there, which an exception would leave held: in all its
/// functions but those for bytes and texts in memory, and in these when it calls them itself. Only
/// in a signal handler, for the instruction that was interrupted.
bool may_hold_locks(std::uintptr_t instruction);

}  // namespace nmk_seh

// x86_instruction.h: as much of an instruction of x86-64 as decides what its fault is.
//
// The instruction is one that the processor has just tried to execute, so all of it can be read,
// and so can the operand of a division.
#pragma once

#include <array>
#include <cstdint>

namespace nmk_seh {

/// The integer registers in the processor's own order: rax, rcx, rdx, rbx, rsp, rbp, rsi, rdi, r8
/// to r15.
using X86Registers = std::array<std::uint64_t, 16>;

/// Whether only the kernel may execute it: hlt, cli, ports, control registers and the like.
bool is_privileged(const unsigned char* instruction);

/// Whether it is a division by anything but 0. False where the divisor is addressed in a way that
/// compilers do not use: relative to a segment, or by an address of 32 bits.
bool divides_by_other_than_zero(const unsigned char* instruction, const X86Registers& registers);

}  // namespace nmk_seh

// machine_state.h: the registers of a thread at a fault, as far as processors differ in them.
//
// A view of the context that the kernel hands to a signal handler. What is changed in it is where
// the unwinder begins.
#pragma once

#include <signal.h>
#include <ucontext.h>
#include <unwind.h>

#include <cstdint>

namespace nmk_seh {

class MachineState {
  public:
    /// A position that can be restored.
    struct Position {
        std::uintptr_t instruction, stack;
    };

    /// Switches off what a thread may have had on and the handler cannot work with: the check that
    /// numbers in memory are aligned. First in a handler.
    static void make_ready() noexcept;

    explicit MachineState(void* context) : m_context(static_cast<ucontext_t*>(context)) {}

    Position position() const noexcept;
    void set_position(const Position& position) noexcept;

    /// Takes the position and the registers that calls preserve from a frame further up, as if what
    /// that called had just returned.
    void become(_Unwind_Context* frame) noexcept;

    /// Whether the processor reports a breakpoint behind the instruction.
    bool is_behind_a_breakpoint(const siginfo_t& fault) const noexcept;

    /// Whether the fault is that the next instruction cannot be fetched from there.
    bool is_fetch(const siginfo_t& fault) const noexcept;

    /// The position of the call that led to the first instruction of a function.
    Position caller() const noexcept;

    /// Whether SIGTRAP reports one step, and not a breakpoint.
    bool is_single_step(const siginfo_t& fault) const noexcept;

    /// Whether the instruction is one that only the kernel may execute.
    bool is_privileged() const noexcept;

    /// Whether an integer division failed because its result is too large: its divisor is not 0.
    bool is_division_overflow() const noexcept;

    /// Whether a floating-point operand was denormal, and that is all that was reported.
    bool is_denormal_operand() const noexcept;

    /// Whether the stack of floating-point registers was full or empty.
    bool is_register_stack_fault() const noexcept;

    /// Gives the processor the floating-point controls that the thread had, without the pending
    /// reports: a handler begins with those of a new process.
    void restore_floating_point_controls() const noexcept;

  private:
    ucontext_t* m_context;
};

}  // namespace nmk_seh

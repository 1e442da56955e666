// machine_state for arm64, whose handlers keep the floating-point controls, and whose divisions by
// zero give 0 without a fault.

#if defined(__aarch64__)

#include "machine_state.h"

namespace nmk_seh {

namespace {

constexpr int link_register = 30;
constexpr std::uintptr_t size_of_instruction = 4;

}  // namespace

void MachineState::make_ready() noexcept {}

MachineState::Position MachineState::position() const noexcept {
    return {static_cast<std::uintptr_t>(m_context->uc_mcontext.pc),
            static_cast<std::uintptr_t>(m_context->uc_mcontext.sp)};
}

void MachineState::set_position(const Position& position) noexcept {
    m_context->uc_mcontext.pc = position.instruction;
    m_context->uc_mcontext.sp = position.stack;
}

void MachineState::become(_Unwind_Context* frame) noexcept {
    constexpr int first_preserved = 19, last_preserved = 29;
    for (int number = first_preserved; number <= last_preserved; ++number) {
        m_context->uc_mcontext.regs[number] = ::_Unwind_GetGR(frame, number);
    }
    set_position({::_Unwind_GetIP(frame) - size_of_instruction, ::_Unwind_GetCFA(frame)});
}

bool MachineState::is_behind_a_breakpoint(const siginfo_t&) const noexcept { return false; }

bool MachineState::is_fetch(const siginfo_t& fault) const noexcept {
    return reinterpret_cast<std::uintptr_t>(fault.si_addr) == position().instruction;
}

MachineState::Position MachineState::caller() const noexcept {
    const auto return_address =
        static_cast<std::uintptr_t>(m_context->uc_mcontext.regs[link_register]);
    return {return_address - size_of_instruction, position().stack};
}

bool MachineState::is_single_step(const siginfo_t& fault) const noexcept {
    return fault.si_code == TRAP_TRACE || fault.si_code == TRAP_HWBKPT;
}

bool MachineState::is_privileged() const noexcept { return false; }

bool MachineState::is_division_overflow() const noexcept { return false; }

bool MachineState::is_denormal_operand() const noexcept { return false; }

bool MachineState::is_register_stack_fault() const noexcept { return false; }

void MachineState::restore_floating_point_controls() const noexcept {}

}  // namespace nmk_seh

#endif

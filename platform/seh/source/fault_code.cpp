#include "fault_code.h"

namespace nmk_seh {

namespace {

constexpr unsigned int datatype_misalignment = 0x80000002;
constexpr unsigned int breakpoint = 0x80000003;
constexpr unsigned int single_step = 0x80000004;
constexpr unsigned int access_violation = 0xC0000005;
constexpr unsigned int in_page_error = 0xC0000006;
constexpr unsigned int illegal_instruction = 0xC000001D;
constexpr unsigned int array_bounds_exceeded = 0xC000008C;
constexpr unsigned int flt_denormal_operand = 0xC000008D;
constexpr unsigned int flt_divide_by_zero = 0xC000008E;
constexpr unsigned int flt_inexact_result = 0xC000008F;
constexpr unsigned int flt_invalid_operation = 0xC0000090;
constexpr unsigned int flt_overflow = 0xC0000091;
constexpr unsigned int flt_stack_check = 0xC0000092;
constexpr unsigned int flt_underflow = 0xC0000093;
constexpr unsigned int int_divide_by_zero = 0xC0000094;
constexpr unsigned int int_overflow = 0xC0000095;
constexpr unsigned int priv_instruction = 0xC0000096;

// Bytes between the stack pointer and an access that was made because of it: a call, a frame that
// is probed page by page, an array in a frame. Memory so near is the stack's own.
constexpr std::uintptr_t reach_of_a_frame = 64 * 1024;

bool is_stack_overflow(const siginfo_t& fault, const MachineState& state) {
    const auto address = reinterpret_cast<std::uintptr_t>(fault.si_addr);
    const std::uintptr_t stack = state.position().stack;
    return fault.si_code != SI_KERNEL && !state.is_fetch(fault) &&
           address - (stack - reach_of_a_frame) < 2 * reach_of_a_frame;
}

unsigned int segment_code(const siginfo_t& fault, const MachineState& state) {
    if (is_stack_overflow(fault, state)) return stack_overflow;
    if (fault.si_code == SI_KERNEL && state.is_privileged()) return priv_instruction;
    return access_violation;
}

unsigned int bus_code(const siginfo_t& fault) {
    if (fault.si_code == BUS_ADRALN) return datatype_misalignment;
    // An address that no memory can have, taken from the stack pointer.
    if (fault.si_code == SI_KERNEL) return access_violation;
    return in_page_error;
}

unsigned int arithmetic_code(const siginfo_t& fault, const MachineState& state) {
    switch (fault.si_code) {
        case FPE_INTDIV:
            return state.is_division_overflow() ? int_overflow : int_divide_by_zero;
        case FPE_INTOVF:
            return int_overflow;
        case FPE_FLTDIV:
            return flt_divide_by_zero;
        case FPE_FLTOVF:
            return flt_overflow;
        case FPE_FLTUND:
            return state.is_denormal_operand() ? flt_denormal_operand : flt_underflow;
        case FPE_FLTRES:
            return flt_inexact_result;
        case FPE_FLTSUB:
            return array_bounds_exceeded;
        default:
            return state.is_register_stack_fault() ? flt_stack_check : flt_invalid_operation;
    }
}

unsigned int instruction_code(const siginfo_t& fault) {
    const bool is_privileged = fault.si_code == ILL_PRVOPC || fault.si_code == ILL_PRVREG;
    return is_privileged ? priv_instruction : illegal_instruction;
}

}  // namespace

unsigned int fault_code(const siginfo_t& fault, const MachineState& state) {
    switch (fault.si_signo) {
        case SIGSEGV:
            return segment_code(fault, state);
        case SIGBUS:
            return bus_code(fault);
        case SIGFPE:
            return arithmetic_code(fault, state);
        case SIGILL:
            return instruction_code(fault);
        case SIGTRAP:
            return state.is_single_step(fault) ? single_step : breakpoint;
        default:
            return 0;
    }
}

}  // namespace nmk_seh

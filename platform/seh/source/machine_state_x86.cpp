// machine_state for x86-64.

#if defined(__x86_64__)

#include "machine_state.h"
#include "x86_instruction.h"

namespace nmk_seh {

namespace {

// Numbers of the processor's exceptions.
constexpr long long trap_debug = 1, trap_page_fault = 14;

constexpr long long page_fault_of_a_fetch = 0x10;  // in the error code of a page fault

// Bits of the floating-point status: the processor has the same in both units.
constexpr unsigned int invalid = 0x01, denormal = 0x02, underflow = 0x10, stack_fault = 0x40;

// The mask bits of mxcsr are 7 bits above the reports.
constexpr unsigned int mxcsr_masks = 7, mxcsr_reports = 0x3F;

std::uintptr_t as_address(greg_t value) { return static_cast<std::uintptr_t>(value); }

// The upper 17 bits of an address are the same.
bool is_canonical(std::uintptr_t address) {
    return address < (std::uintptr_t{1} << 47) || address >= ~std::uintptr_t{0} << 47;
}

// What the thread had not masked and the processor reports, from both units.
unsigned int floating_point_reports(const ucontext_t& context) {
    const auto& unit = *context.uc_mcontext.fpregs;
    const unsigned int of_stack_unit = unit.swd & ~unit.cwd;
    const unsigned int of_vector_unit = unit.mxcsr & ~(unit.mxcsr >> mxcsr_masks);
    return (of_stack_unit | of_vector_unit) & mxcsr_reports;
}

const unsigned char* instruction_of(const MachineState& state) {
    return reinterpret_cast<const unsigned char*>(state.position().instruction);
}

X86Registers registers_of(const ucontext_t& context) {
    constexpr std::array order = {REG_RAX, REG_RCX, REG_RDX, REG_RBX, REG_RSP, REG_RBP,
                                  REG_RSI, REG_RDI, REG_R8,  REG_R9,  REG_R10, REG_R11,
                                  REG_R12, REG_R13, REG_R14, REG_R15};
    X86Registers registers = {};
    for (std::size_t i = 0; i < order.size(); ++i) {
        registers[i] = as_address(context.uc_mcontext.gregs[order[i]]);
    }
    return registers;
}

constexpr unsigned long long alignment_check = 1ULL << 18;  // in the flags

}  // namespace

void MachineState::make_ready() noexcept {
    __builtin_ia32_writeeflags_u64(__builtin_ia32_readeflags_u64() & ~alignment_check);
}

MachineState::Position MachineState::position() const noexcept {
    const auto& registers = m_context->uc_mcontext.gregs;
    return {as_address(registers[REG_RIP]), as_address(registers[REG_RSP])};
}

void MachineState::set_position(const Position& position) noexcept {
    m_context->uc_mcontext.gregs[REG_RIP] = static_cast<greg_t>(position.instruction);
    m_context->uc_mcontext.gregs[REG_RSP] = static_cast<greg_t>(position.stack);
}

void MachineState::become(_Unwind_Context* frame) noexcept {
    struct Preserved {
        int number;  // in tables of the unwinder
        int place;   // in the context
    };
    constexpr std::array<Preserved, 6> preserved = {
        {{3, REG_RBX}, {6, REG_RBP}, {12, REG_R12}, {13, REG_R13}, {14, REG_R14}, {15, REG_R15}}};
    for (const Preserved& one : preserved) {
        m_context->uc_mcontext.gregs[one.place] =
            static_cast<greg_t>(::_Unwind_GetGR(frame, one.number));
    }
    set_position({::_Unwind_GetIP(frame) - 1, ::_Unwind_GetCFA(frame)});
}

bool MachineState::is_behind_a_breakpoint(const siginfo_t& fault) const noexcept {
    return fault.si_signo == SIGTRAP && (fault.si_code == SI_KERNEL || fault.si_code == TRAP_BRKPT);
}

bool MachineState::is_fetch(const siginfo_t& fault) const noexcept {
    const auto& registers = m_context->uc_mcontext.gregs;
    if (registers[REG_TRAPNO] == trap_page_fault) {
        return (registers[REG_ERR] & page_fault_of_a_fetch) != 0 ||
               fault.si_addr == instruction_of(*this);
    }
    return !is_canonical(position().instruction);
}

MachineState::Position MachineState::caller() const noexcept {
    const Position now = position();
    const auto return_address = *reinterpret_cast<const std::uintptr_t*>(now.stack);
    return {return_address - 1, now.stack + sizeof return_address};
}

bool MachineState::is_single_step(const siginfo_t&) const noexcept {
    return m_context->uc_mcontext.gregs[REG_TRAPNO] == trap_debug;
}

bool MachineState::is_privileged() const noexcept {
    return is_canonical(position().instruction) && nmk_seh::is_privileged(instruction_of(*this));
}

bool MachineState::is_division_overflow() const noexcept {
    return divides_by_other_than_zero(instruction_of(*this), registers_of(*m_context));
}

bool MachineState::is_denormal_operand() const noexcept {
    return (floating_point_reports(*m_context) & (denormal | underflow)) == denormal;
}

bool MachineState::is_register_stack_fault() const noexcept {
    return (floating_point_reports(*m_context) & invalid) != 0 &&
           (m_context->uc_mcontext.fpregs->swd & stack_fault) != 0;
}

void MachineState::restore_floating_point_controls() const noexcept {
    const auto& unit = *m_context->uc_mcontext.fpregs;
    const unsigned int vector_control = unit.mxcsr & ~mxcsr_reports;
    const unsigned short stack_control = unit.cwd;
    asm volatile("ldmxcsr %0" : : "m"(vector_control));
    asm volatile("fldcw %0" : : "m"(stack_control));
}

}  // namespace nmk_seh

#endif

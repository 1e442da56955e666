#include "fault_handler.h"

#include <signal.h>

#include "fault_code.h"
#include "machine_state.h"
#include "previous_handlers.h"
#include "stack_frames.h"

namespace nmk_seh {

namespace {

// Of the initial-exec kind: the handler must not be the first to ask for it, as that would take
// memory.
[[gnu::tls_model("initial-exec")]] constinit thread_local const ThreadFaults* this_thread = nullptr;

// A fault of the handler or the translator itself would lead to the same fault again.
bool is_translated(const siginfo_t& fault, const MachineState& state) {
    return fault.si_code > 0 && this_thread != nullptr && this_thread->translator != nullptr &&
           !this_thread->stack.contains(state.position().stack);
}

// Moves the position to where the unwinder finds the function at fault: back into the instruction
// of a breakpoint, and to the call where a function was called that is not there. False where an
// exception cannot or must not be thrown.
bool find_frame(const siginfo_t& fault, unsigned int code, MachineState& state) {
    MachineState::Position position = state.position();
    if (state.is_behind_a_breakpoint(fault)) --position.instruction;
    if (!has_frame(position.instruction)) {
        if (!state.is_fetch(fault)) return false;
        position = state.caller();
        if (!has_frame(position.instruction)) return false;
    }
    state.set_position(position);
    if (code == stack_overflow) leave_unbegun_function(state);
    return !may_hold_locks(state.position().instruction);
}

void handle_fault(int signal, siginfo_t* info, void* context) {
    MachineState::make_ready();
    MachineState state(context);
    if (is_translated(*info, state)) {
        mcontext_t& registers = static_cast<ucontext_t*>(context)->uc_mcontext;
        const mcontext_t before = registers;
        const unsigned int code = fault_code(*info, state);
        if (find_frame(*info, code, state)) {
            if (code == stack_overflow) this_thread->reserve.give_out();
            state.restore_floating_point_controls();
            this_thread->translator(code, nullptr);
        }
        registers = before;
    }
    call_previous_handler(signal, info, context);
}

bool set_handlers() {
    find_c_library();
    replace_handlers(handle_fault);
    return true;
}

}  // namespace

void handle_faults_of_this_thread(const ThreadFaults* thread) {
    [[maybe_unused]] static const bool are_set = set_handlers();
    this_thread = thread;
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : fault_signals) sigaddset(&signals, signal);
    ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

}  // namespace nmk_seh

// previous_handlers.h: what the process did with the signals before, and still does with those that
// are not translated.
#pragma once

#include <signal.h>

#include <array>

namespace nmk_seh {

/// The signals that report faults.
constexpr std::array fault_signals = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP};

/// Makes `handler` that of every fault signal, and keeps those from before. Once in a process.
void replace_handlers(void (*handler)(int, siginfo_t*, void*));

/// In a handler: does with the signal what was done before it was replaced. Where that is the end
/// of the process it ends by this signal, at the instruction at fault.
void call_previous_handler(int signal, siginfo_t* info, void* context);

}  // namespace nmk_seh

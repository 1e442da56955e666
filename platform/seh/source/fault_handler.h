// fault_handler.h: the handler of the signals that report faults.
#pragma once

#include <seh/set_se_translator.h>

#include "alternate_stack.h"
#include "stack_reserve.h"

namespace nmk_seh {

/// What the handler has to know of a thread.
struct ThreadFaults {
    _se_translator_function translator = nullptr;
    AlternateStack stack;
    StackReserve reserve;
};

/// Sets what the handler finds for the calling thread; null: its faults are not translated. The
/// first call in a process sets the handlers. Unblocks their signals.
void handle_faults_of_this_thread(const ThreadFaults* thread);

}  // namespace nmk_seh

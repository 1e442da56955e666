// set_se_translator.h: faults of the processor as calls of a function that may throw.
//
// A fault is what the kernel of the system reports about an instruction of the thread itself: an
// access violation, a division by zero, an illegal instruction, a breakpoint, a stack that is full.
// A thread that has set a translator has it called, on a small stack of its own, in place of the
// signal; what it throws comes out of the instruction at fault. Which code can be left that way is
// said in docs/faults.md.
//
// Not translated, and given to the handler that the process had before (without one the signal ends
// the process): faults of threads without a translator, signals that were sent by kill or raise,
// faults that no frame of the stack can be found for, those within the C library, except in its
// functions for bytes and texts in memory, and those of the translator itself.
//
// The first call in a process sets handlers for SIGSEGV, SIGBUS, SIGFPE, SIGILL and SIGTRAP. A host
// that sets its own afterwards replaces them.
#pragma once

#include <utils/utExport.h>

/// What a translator is given beside the code; always null here.
struct _EXCEPTION_POINTERS;

/// Throws, usually. When it returns the fault is given to the handler from before.
///
///   code   of the fault, as nmkCExceptTrans lists them: 0xC0000005 for an access violation
using _se_translator_function = void (*)(unsigned int code, _EXCEPTION_POINTERS* pointers);

/// Sets the translator of the calling thread, until the thread ends; null removes it. Returns the
/// one that it had, null at first.
///
/// Also unblocks the five signals in this thread, and gives it an alternate signal stack, which is
/// taken away again when the thread ends. Without memory for one, stack overflow is not translated.
UT_EXPORT _se_translator_function _set_se_translator(_se_translator_function translator);

/// Makes the calling thread ready for another overflow of its stack, once it has left the end of
/// the stack: what is set aside there for destructors is set aside again. _set_se_translator does
/// so as well. Without a translator nothing happens. Returns 1.
UT_EXPORT int _resetstkoflw();

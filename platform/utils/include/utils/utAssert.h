// utAssert.h: the assertion service.
//
// A failed assertion is a message to the developers, not an error for the user: the code that
// reports it goes on. A host may put its own handler in place of the default one, which writes a
// line to standard error. The handler is process-wide and may be called from any thread.
#pragma once

#include <utils/utExport.h>

/// Receives the message, the source file, the line and the function of a failed assertion.
using utAssertHandler = void (*)(const char* message, const char* file, int line,
                                 const char* function);

/// Puts `handler` in place and answers the one it replaces; null puts the default back.
UT_EXPORT utAssertHandler ut_set_assert_handler(utAssertHandler handler);

/// Hands a failed assertion to the handler in place and returns.
UT_EXPORT void ut_assert_failed(const char* message, const char* file, int line,
                                const char* function);

/// Reports `message` when `condition` does not hold; evaluates it in every kind of build.
#define UT_ASSERT(condition, message)                                                \
    do {                                                                             \
        if (!(condition)) ut_assert_failed((message), __FILE__, __LINE__, __func__); \
    } while (false)

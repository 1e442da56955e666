// utAssert.h: the assertion service.
//
// A failed assertion is a message to the developers, not an error for the user: the code that
// reports it continues. A host may replace the default handler, which writes a line to standard
// error. The handler is process-wide and may be called from any thread.
#pragma once

#include <utils/utExport.h>

/// Receives the message, the source file, the line and the function of a failed assertion.
using utAssertHandler = void (*)(const char* message, const char* file, int line,
                                 const char* function);

/// Installs `handler` and returns the one it replaces; null installs the default handler.
UT_EXPORT utAssertHandler ut_set_assert_handler(utAssertHandler handler);

/// Passes a failed assertion to the installed handler, then returns. Texts may be null.
UT_EXPORT void ut_assert_failed(const char* message, const char* file, int line,
                                const char* function);

/// Reports `message` when `condition` is false; it is evaluated in every build type.
#define UT_ASSERT(condition, message)                                                \
    do {                                                                             \
        if (!(condition)) ut_assert_failed((message), __FILE__, __LINE__, __func__); \
    } while (false)

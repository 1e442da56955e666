#include <utils/utAssert.h>

#include <atomic>
#include <cstdio>

namespace {

const char* text_or_nothing(const char* text) { return text != nullptr ? text : ""; }

void write_to_standard_error(const char* message, const char* file, int line,
                             const char* function) {
    std::fprintf(stderr, "%s:%d: assertion failed in %s: %s\n", text_or_nothing(file), line,
                 text_or_nothing(function), text_or_nothing(message));
}

std::atomic<utAssertHandler>& handler_in_place() {
    static std::atomic<utAssertHandler> handler{write_to_standard_error};
    return handler;
}

}  // namespace

utAssertHandler ut_set_assert_handler(utAssertHandler handler) {
    return handler_in_place().exchange(handler != nullptr ? handler : write_to_standard_error);
}

void ut_assert_failed(const char* message, const char* file, int line, const char* function) {
    handler_in_place().load()(message, file, line, function);
}

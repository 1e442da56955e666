#include <utils/utAssert.h>

#include <atomic>
#include <cstdio>

namespace {

const char* text_or_empty(const char* text) { return text != nullptr ? text : ""; }

void write_to_standard_error(const char* message, const char* file, int line,
                             const char* function) {
    std::fprintf(stderr, "%s:%d: assertion failed in %s: %s\n", text_or_empty(file), line,
                 text_or_empty(function), text_or_empty(message));
}

std::atomic<utAssertHandler>& installed_handler() {
    static std::atomic<utAssertHandler> handler{write_to_standard_error};
    return handler;
}

}  // namespace

utAssertHandler ut_set_assert_handler(utAssertHandler handler) {
    return installed_handler().exchange(handler != nullptr ? handler : write_to_standard_error);
}

void ut_assert_failed(const char* message, const char* file, int line, const char* function) {
    installed_handler().load()(message, file, line, function);
}

#include <apsl/apHighResTime.h>

#include <chrono>

double apHighResTime::time() {
    const auto since_start = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(since_start).count();
}

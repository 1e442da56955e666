#include <apsl/apwait.h>

#include <chrono>
#include <thread>

void apwait(int milliseconds) {
    if (milliseconds > 0) std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

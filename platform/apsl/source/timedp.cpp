#include <apsl/apHighResTime.h>
#include <apsl/timedp.h>

void timedp(double* seconds) {
    if (seconds != nullptr) *seconds = apHighResTime::time();
}

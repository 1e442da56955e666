#include <apsl/ap_chmod.h>
#include <sys/stat.h>

int ap_chmod(const char* name, int mode) noexcept {
    return name == nullptr ? -1 : ::chmod(name, static_cast<mode_t>(mode));
}

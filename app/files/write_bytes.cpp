// write_bytes: writes bytes to an open file.

#include "files/write_bytes.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace nmk_files {

bool write_bytes(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return true;
}

}  // namespace nmk_files

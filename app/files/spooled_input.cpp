// spooled_input: standard input as a file that can be read at any place.

#include "files/spooled_input.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <vector>

#include "files/read_whole_file.h"
#include "files/staged_file.h"
#include "files/temporary_directory.h"
#include "files/write_bytes.h"

namespace nmk_files {

namespace {

constexpr std::size_t block_size = std::size_t{1} << 16U;
constexpr int between_calls_of_the_watch = 100;  // milliseconds, while no bytes arrive

nmk_text::Error problem(const char* what) {
    return {input_name(standard_stream), 0, std::string(what) + ": " + std::strerror(errno)};
}

/// A file whose name is gone at once.
int open_without_a_name() {
    const SignalBlock until_the_name_is_gone;
    std::string name = temporary_directory() / "nmk-XXXXXX";
    const int descriptor = ::mkostemp(name.data(), O_CLOEXEC);
    if (descriptor >= 0) ::unlink(name.c_str());
    return descriptor;
}

/// Whether a read would not wait; at the end of the input too.
bool is_ready() {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    return ::poll(&input, 1, between_calls_of_the_watch) > 0;
}

}  // namespace

nmk_text::Result<SpooledInput> SpooledInput::read(const Watch& watch) {
    SpooledInput spooled;
    spooled.m_file.reset(open_without_a_name());
    if (!spooled.m_file.is_open()) return problem("a temporary file cannot be made");
    std::vector<char> block(block_size);
    std::int64_t bytes = 0;
    while (watch(bytes)) {
        if (!is_ready()) continue;
        const ssize_t count = ::read(STDIN_FILENO, block.data(), block.size());
        if (count < 0 && (errno == EINTR || errno == EAGAIN)) continue;
        if (count < 0) return problem("cannot be read");
        if (count == 0) {
            spooled.m_is_whole = true;
            break;
        }
        const std::string_view read(block.data(), static_cast<std::size_t>(count));
        if (!write_bytes(spooled.m_file.number(), read)) {
            return problem("a temporary file cannot be written");
        }
        bytes += count;
    }
    return spooled;
}

std::string SpooledInput::name() const {
    return "/proc/self/fd/" + std::to_string(m_file.number());
}

}  // namespace nmk_files

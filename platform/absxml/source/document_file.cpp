#include "document_file.h"

#include <fcntl.h>
#include <filesystem/descriptor.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "malformed.h"

namespace nmk_absxml {

namespace {

[[noreturn]] void refuse(const std::string& reason) { throw Malformed{0, "the file " + reason}; }

[[noreturn]] void refuse_with_errno(const std::string& reason) {
    refuse(reason + ": " + std::strerror(errno));
}

// Reads up to the end, also where the size of the file is not known (/proc) or changes meanwhile.
std::string read_all(int descriptor, std::size_t expected_size, std::size_t max_size) {
    constexpr std::size_t piece = std::size_t{1} << 16U;
    std::string bytes;
    std::size_t count = 0;
    for (;;) {
        if (count == bytes.size())
            bytes.resize(std::max(expected_size + 1, count + count / 2 + piece));
        const ssize_t got = ::read(descriptor, bytes.data() + count, bytes.size() - count);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) refuse_with_errno("cannot be read");
        if (got == 0) break;
        count += static_cast<std::size_t>(got);
        if (count > max_size)
            refuse("is too large; expected at most " + std::to_string(max_size) + " bytes");
    }
    bytes.resize(count);
    return bytes;
}

}  // namespace

std::string read_file(const std::string& file_name, std::size_t max_size) {
    // A pipe is opened without waiting for its writer.
    const nmk_filesystem::Descriptor file(
        ::open(file_name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.is_open()) refuse_with_errno("cannot be opened");
    struct stat status {};
    if (::fstat(file.number(), &status) != 0) refuse_with_errno("cannot be read");
    if (!S_ISREG(status.st_mode)) refuse("is not a regular file");
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size > max_size) {
        refuse("is too large; expected at most " + std::to_string(max_size) + " bytes");
    }
    return read_all(file.number(), size, max_size);
}

}  // namespace nmk_absxml

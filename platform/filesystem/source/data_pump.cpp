#include "data_pump.h"

#include <filesystem/faults.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace nmk_filesystem {

namespace {

// Bytes that go through memory at once. Up to that size a read and a write are also quicker than
// letting the kernel copy.
constexpr std::int64_t buffer_size = 1 << 16;

bool means_unsupported(int error_number) {
    return error_number == EXDEV || error_number == EINVAL || error_number == ENOSYS ||
           error_number == EOPNOTSUPP || error_number == EPERM;
}

// A call that a signal may interrupt.
template <class Call>
std::int64_t without_interruption(Call call) {
    std::int64_t result;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

}  // namespace

DataPump::DataPump(int from, int to, std::int64_t total)
    : m_from(from), m_to(to), m_uses_kernel(total > buffer_size) {}

std::int64_t DataPump::move(std::int64_t most) {
    if (m_uses_kernel) {
        const std::int64_t moved = move_by_kernel(most);
        // Nothing at first may mean a virtual file (/proc), of which only read() returns data.
        if (moved > 0 || (moved == 0 && m_kernel_has_moved) ||
            (moved < 0 && !means_unsupported(errno))) {
            m_kernel_has_moved = true;
            return moved;
        }
        m_uses_kernel = false;
    }
    return move_through_memory(std::min(most, buffer_size));
}

std::int64_t DataPump::move_by_kernel(std::int64_t most) {
    return without_interruption([&]() -> std::int64_t {
        if (const int fault = injected_fault("copy_file_range", ""); fault != 0) {
            errno = fault;
            return -1;
        }
        const auto length = static_cast<std::size_t>(most);
        return ::copy_file_range(m_from, nullptr, m_to, nullptr, length, 0);
    });
}

std::int64_t DataPump::move_through_memory(std::int64_t most) {
    if (!m_memory) m_memory = std::make_unique_for_overwrite<char[]>(buffer_size);
    const std::int64_t length = without_interruption(
        [&] { return ::read(m_from, m_memory.get(), static_cast<std::size_t>(most)); });
    return length < 0 || write_all(length) ? length : -1;
}

bool DataPump::write_all(std::int64_t length) {
    for (std::int64_t written = 0; written < length;) {
        const std::int64_t step = without_interruption([&] {
            return ::write(m_to, m_memory.get() + written,
                           static_cast<std::size_t>(length - written));
        });
        if (step < 0) return false;
        written += step;
    }
    return true;
}

}  // namespace nmk_filesystem

// data_pump.h: moves bytes from one open file to another.
#pragma once

#include <cstdint>
#include <memory>

namespace nmk_filesystem {

/// Lets the kernel copy where it can, and copies through memory elsewhere.
class DataPump {
  public:
    /// `total` is the length of the source as the file system reports it.
    DataPump(int from, int to, std::int64_t total);

    /// Moves up to `most` bytes: how many; 0 at the end of the source, -1 with errno.
    std::int64_t move(std::int64_t most);

  private:
    std::int64_t move_by_kernel(std::int64_t most);
    std::int64_t move_through_memory(std::int64_t most);
    bool write_all(std::int64_t length);

    int m_from;
    int m_to;
    bool m_uses_kernel;
    bool m_kernel_has_moved = false;
    std::unique_ptr<char[]> m_memory;
};

}  // namespace nmk_filesystem

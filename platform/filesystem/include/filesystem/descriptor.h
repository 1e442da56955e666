// descriptor.h: an open file descriptor that is closed when its owner ends.
#pragma once

#include <unistd.h>

#include <utility>

namespace nmk_filesystem {

class Descriptor {
  public:
    explicit Descriptor(int number = -1) : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        reset(std::exchange(other.m_number, -1));
        return *this;
    }
    ~Descriptor() { reset(-1); }

    bool is_open() const { return m_number >= 0; }
    int number() const { return m_number; }

    /// Hands the descriptor over to the caller, which closes it.
    int release() { return std::exchange(m_number, -1); }

    /// Closes the present descriptor and owns `number` from now on; errno is left alone.
    void reset(int number);

  private:
    int m_number;
};

}  // namespace nmk_filesystem

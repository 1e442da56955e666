// alternate_stack.h: the stack on which a thread handles its faults.
#pragma once

#include <signal.h>

#include <cstddef>
#include <cstdint>

namespace nmk_seh {

/// An alternate signal stack of the calling thread, with a page below it that cannot be accessed.
class AlternateStack {
  public:
    AlternateStack() = default;
    AlternateStack(const AlternateStack&) = delete;
    AlternateStack& operator=(const AlternateStack&) = delete;

    /// Gives the thread back the stack that it had before arm().
    ~AlternateStack();

    /// Takes memory and makes it the thread's stack for signals. Nothing changes where there is no
    /// memory, or when it was called before.
    void arm();

    /// Whether the address is in it.
    bool contains(std::uintptr_t address) const noexcept;

  private:
    void* m_mapping = nullptr;
    std::size_t m_size = 0;  // bytes, with the page below
    stack_t m_before = {};   // what the thread had
};

}  // namespace nmk_seh

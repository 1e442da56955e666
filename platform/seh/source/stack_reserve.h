// stack_reserve.h: room on a thread's stack for what is done after the stack has overflowed.
//
// An exception destroys the objects of each function on the stack of that function: at the end of a
// stack there has to be room for the destructors and the unwinder. The main thread's stack is
// allowed to grow by as much at each overflow. The end of another thread's stack is made
// inaccessible beforehand, given out at an overflow, and taken back once the thread has left it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace nmk_seh {

class StackReserve {
  public:
    StackReserve() = default;
    StackReserve(const StackReserve&) = delete;
    StackReserve& operator=(const StackReserve&) = delete;

    /// Leaves the stack as it was before arm(): the C library may give it to another thread.
    ~StackReserve();

    /// Sets the room of the calling thread aside, or again after give_out(), if the thread is not
    /// in it. A stack that is small keeps all its room.
    void arm();

    /// Gives the room out. In a signal handler, too.
    void give_out() const noexcept;

  private:
    void find_end();

    bool m_is_known = false;
    bool m_grows = false;   // the main thread's
    char* m_end = nullptr;  // the lowest address of the reserve; null: there is none
    mutable bool m_is_out = true;
};

}  // namespace nmk_seh

#include "stack_reserve.h"

#include <pthread.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>

namespace nmk_seh {

namespace {

// Some hundred times what the unwinder takes for one frame; a multiple of every size of a page.
constexpr std::size_t size_of_reserve = 64 * 1024;

// Below this a thread would feel the loss.
constexpr std::size_t least_stack = 8 * size_of_reserve;

bool is_main_thread() { return ::syscall(SYS_gettid) == ::getpid(); }

// Between the reserve and a frame that may be interrupted by another overflow.
bool is_far_above(const char* end) {
    const auto frame = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    return frame - reinterpret_cast<std::uintptr_t>(end) > 2 * size_of_reserve;
}

void let_the_stack_grow() {
    rlimit limit = {};
    if (::getrlimit(RLIMIT_STACK, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return;
    limit.rlim_cur = std::min<rlim_t>(limit.rlim_cur + size_of_reserve, limit.rlim_max);
    ::setrlimit(RLIMIT_STACK, &limit);
}

}  // namespace

void StackReserve::find_end() {
    m_is_known = true;
    m_grows = is_main_thread();
    pthread_attr_t attributes;
    if (m_grows || ::pthread_getattr_np(::pthread_self(), &attributes) != 0) return;
    void* lowest = nullptr;
    std::size_t size = 0;
    ::pthread_attr_getstack(&attributes, &lowest, &size);
    ::pthread_attr_destroy(&attributes);
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    const bool is_aligned = reinterpret_cast<std::uintptr_t>(lowest) % page == 0;
    if (is_aligned && size >= least_stack) m_end = static_cast<char*>(lowest);
}

void StackReserve::arm() {
    if (!m_is_known) find_end();
    if (m_end == nullptr || !m_is_out || !is_far_above(m_end)) return;
    m_is_out = ::mprotect(m_end, size_of_reserve, PROT_NONE) != 0;
}

void StackReserve::give_out() const noexcept {
    if (m_grows) let_the_stack_grow();
    if (m_is_out) return;
    m_is_out = ::mprotect(m_end, size_of_reserve, PROT_READ | PROT_WRITE) == 0;
}

StackReserve::~StackReserve() {
    if (!m_is_out) give_out();
}

}  // namespace nmk_seh

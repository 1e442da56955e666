#include "alternate_stack.h"

#include <sys/auxv.h>
#include <sys/mman.h>
#include <unistd.h>

namespace nmk_seh {

namespace {

// For the handler, the translator and the unwinder. Registers that the kernel saves come on top.
constexpr std::size_t room_for_work = 128 * 1024;

#if !defined(AT_MINSIGSTKSZ)
constexpr unsigned long AT_MINSIGSTKSZ = 51;
#endif

std::size_t page_size() { return static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)); }

std::size_t stack_size() {
    const std::size_t wanted = room_for_work + ::getauxval(AT_MINSIGSTKSZ);
    return (wanted + page_size() - 1) / page_size() * page_size();
}

}  // namespace

void AlternateStack::arm() {
    if (m_mapping != nullptr) return;
    const std::size_t size = page_size() + stack_size();
    void* const mapping = ::mmap(nullptr, size, PROT_READ | PROT_WRITE,
                                 MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE | MAP_STACK, -1, 0);
    if (mapping == MAP_FAILED) return;
    stack_t stack = {};
    stack.ss_sp = static_cast<char*>(mapping) + page_size();
    stack.ss_size = stack_size();
    if (::mprotect(mapping, page_size(), PROT_NONE) != 0 || ::sigaltstack(&stack, &m_before) != 0) {
        ::munmap(mapping, size);
        return;
    }
    m_mapping = mapping;
    m_size = size;
}

AlternateStack::~AlternateStack() {
    if (m_mapping == nullptr) return;
    stack_t now = {};
    // A stack that was set after ours is its owner's to take away.
    if (::sigaltstack(nullptr, &now) == 0 &&
        now.ss_sp == static_cast<char*>(m_mapping) + page_size() &&
        ::sigaltstack(&m_before, nullptr) != 0) {
        return;  // still in use: better lost than taken away
    }
    ::munmap(m_mapping, m_size);
}

bool AlternateStack::contains(std::uintptr_t address) const noexcept {
    return address - reinterpret_cast<std::uintptr_t>(m_mapping) < m_size;
}

}  // namespace nmk_seh

// processor_faults.h: functions that fault, for tests of what becomes of it.
//
// They are to be called through pointers: a compiler that sees inside finds that they cannot throw.
// Those that begin by unmasking floating-point exceptions leave them unmasked.
#pragma once

#include <fenv.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <ostream>

namespace processor_faults {

/// Whether tests may throw out of an instruction: what GCC compiles for it. Not under the sanitizer
/// of addresses, whose own accesses come first, nor under that of threads, whose handler of signals
/// must not be left by an exception.
#if defined(NMK_FAULTS_CAN_BE_THROWN) && defined(__x86_64__) && !defined(__clang__) && \
    !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
inline constexpr bool can_be_thrown = true;
#else
inline constexpr bool can_be_thrown = false;
#endif

inline constexpr const char* reason_to_skip =
    "faults are thrown only in code of GCC for x86-64, without sanitizers of addresses or threads";

/// One kind of fault.
struct Fault {
    const char* name;
    void (*provoke)();
    unsigned int code;
};

inline std::ostream& operator<<(std::ostream& out, const Fault& fault) { return out << fault.name; }

/// Numbers that no compiler knows.
inline volatile std::uintptr_t null_address = 0;
inline volatile int zero = 0, minus_1 = -1, smallest_int = -2147483647 - 1, read_value = 0;
inline volatile double zero_double = 0.0, one = 1.0, ten = 10.0, large = 1e308, small = 1e-308,
                       denormal = 1e-310, result = 0.0;
inline volatile long double zero_long_double = 0.0L, long_result = 0.0L;

inline volatile int* address(std::uintptr_t number) {
    return reinterpret_cast<volatile int*>(number + null_address);
}

inline void read_null() { read_value = *address(0); }
inline void write_null() { *address(0) = 1; }
inline void read_impossible_address() { read_value = *address(std::uintptr_t{1} << 63); }

inline void write_to_constants() {
    static void* const page = ::mmap(nullptr, 4096, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    *static_cast<volatile int*>(page) = 1;
}

inline void call_null() { reinterpret_cast<void (*)()>(null_address + 0)(); }

inline void call_data() {
    static int data[4] = {};
    reinterpret_cast<void (*)()>(data + null_address)();
}

inline void read_behind_the_end_of_a_file() {
    static void* const page = [] {
        char name[] = "/tmp/processor_faults_XXXXXX";
        const int file = ::mkstemp(name);
        ::unlink(name);
        void* const mapped = ::mmap(nullptr, 4096, PROT_READ, MAP_SHARED, file, 0);
        ::close(file);
        return mapped;
    }();
    read_value = *static_cast<volatile int*>(page);
}

inline void divide_by_zero() { read_value = smallest_int / zero; }
inline void remainder_by_zero() { read_value = smallest_int % zero; }
inline void divide_smallest_int() { read_value = smallest_int / minus_1; }

inline void floating_division() {
    ::feenableexcept(FE_DIVBYZERO);
    result = one / zero_double;
}
inline void floating_division_on_the_stack_unit() {
    ::feenableexcept(FE_DIVBYZERO);
    long_result = static_cast<long double>(one) / zero_long_double;
    long_result = long_result + 1.0L;
}
inline void floating_invalid() {
    ::feenableexcept(FE_INVALID);
    result = zero_double / zero_double;
}
inline void floating_overflow() {
    ::feenableexcept(FE_OVERFLOW);
    result = large * ten;
}
inline void floating_underflow() {
    ::feenableexcept(FE_UNDERFLOW);
    result = small * small;
}
inline void floating_inexact() {
    ::feenableexcept(FE_INEXACT);
    result = one / ten;
}

#if defined(__x86_64__)

inline void step() { asm volatile("pushfq; orq $0x100, (%%rsp); popfq; nop; nop" : : : "memory"); }

inline void execute_illegal_instruction() { asm volatile("ud2"); }
inline void break_here() { asm volatile("int3"); }

/// The instruction behind the breakpoint is none of this function.
inline void break_at_the_end() {
    volatile char room[200];
    asm volatile("int3" : : "r"(room) : "memory");
    __builtin_unreachable();
}

/// Sends this thread the signal while it executes an instruction of its own.
inline void send_while_busy(int signal) {
    constexpr long number_of_tgkill = 234;
    const long process = ::getpid(), thread = ::gettid();
    asm volatile("syscall"
                 :
                 : "a"(number_of_tgkill), "D"(process), "S"(thread), "d"(static_cast<long>(signal))
                 : "rcx", "r11", "memory");
}

inline void halt() { asm volatile("hlt"); }
inline void write_to_a_port() { asm volatile("outb %%al, $0x80" : : : "memory"); }

inline void read_misaligned_number() {
    static const int numbers[2] = {};
    const char* const misaligned = reinterpret_cast<const char*>(numbers) + 1;
    asm volatile("pushfq; orq $0x40000, (%%rsp); popfq; movl (%0), %%eax"
                 :
                 : "r"(misaligned)
                 : "eax", "memory", "cc");
}

inline void floating_denormal() {
    constexpr unsigned int mask_of_denormal_operands = 0x100;
    unsigned int control = 0;
    asm volatile("stmxcsr %0" : "=m"(control));
    control &= ~mask_of_denormal_operands;
    asm volatile("ldmxcsr %0" : : "m"(control));
    result = denormal + one;
}

inline void floating_stack_check() {
    ::feenableexcept(FE_INVALID);
    asm volatile("fldz; fldz; fldz; fldz; fldz; fldz; fldz; fldz; fldz; fwait");
}

#endif

/// Recurses until the stack is full. The function that is called is not known to the compiler.
inline void (*volatile fill)(int) = nullptr;
inline void fill_the_stack(int depth) {
    volatile char room[500];
    room[depth % 500] = 1;
    fill(depth + 1);
    read_value = static_cast<unsigned char>(room[depth % 500]);
}
inline void overflow_the_stack() {
    fill = fill_the_stack;
    fill(0);
}

/// A frame that has something to destroy, and each of its callers too. It is so large that the
/// function probes the stack before it begins its work.
inline int alive = 0;
struct Counted {
    Counted() { ++alive; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    ~Counted() { --alive; }
};
inline void fill_the_stack_with_objects(int depth) {
    const Counted counted;
    volatile char room[5000];
    room[depth % 5000] = 1;
    fill(depth + 1);
    read_value = static_cast<unsigned char>(room[depth % 5000]);
}
inline void overflow_the_stack_with_objects() {
    fill = fill_the_stack_with_objects;
    fill(0);
}

/// An object whose destructor needs 16 KiB of the stack.
struct LargeDestructor {
    LargeDestructor() { ++alive; }
    LargeDestructor(const LargeDestructor&) = delete;
    LargeDestructor& operator=(const LargeDestructor&) = delete;
    ~LargeDestructor() {
        volatile char room[16 << 10];
        for (int page = 0; page < 4; ++page) room[page << 12] = 1;
        alive -= room[0];
    }
};
inline void fill_the_stack_with_large_destructors(int depth) {
    const LargeDestructor destroyed;
    fill(depth + 1);
    read_value = depth;
}
inline void overflow_the_stack_with_large_destructors() {
    fill = fill_the_stack_with_large_destructors;
    fill(0);
}

}  // namespace processor_faults

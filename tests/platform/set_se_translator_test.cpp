#include <gtest/gtest.h>
#include <seh/set_se_translator.h>
#include <signal.h>
#include <sys/resource.h>
#include <xmmintrin.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csetjmp>
#include <cstring>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "child_process.h"
#include "processor_faults.h"

namespace {

using processor_faults::Fault;

constexpr unsigned int access_violation = 0xC0000005;
constexpr unsigned int int_divide_by_zero = 0xC0000094;
constexpr unsigned int int_overflow = 0xC0000095;
constexpr unsigned int stack_overflow = 0xC00000FD;

constexpr int ended_by = 1000;  // what in_a_child adds to a signal

struct Thrown {
    unsigned int code;
};

void throw_code(unsigned int code, _EXCEPTION_POINTERS*) { throw Thrown{code}; }

// The code that is thrown; 0 where nothing is.
unsigned int code_of(void (*provoke)()) {
    try {
        provoke();
    } catch (const Thrown& thrown) {
        _resetstkoflw();
        return thrown.code;
    }
    return 0;
}

int destroyed = 0;

struct CountsDestruction {
    CountsDestruction() = default;
    CountsDestruction(const CountsDestruction&) = delete;
    CountsDestruction& operator=(const CountsDestruction&) = delete;
    ~CountsDestruction() { ++destroyed; }
};

// A frame between the fault and its catcher.
void provoke_beside_an_object(void (*provoke)()) {
    const CountsDestruction object;
    provoke();
}

// Translates in the thread of the test, and leaves nothing unmasked.
class set_se_translator_faults : public testing::TestWithParam<Fault> {
  protected:
    void SetUp() override {
        if (!processor_faults::can_be_thrown) GTEST_SKIP() << processor_faults::reason_to_skip;
        _set_se_translator(throw_code);
    }
    void TearDown() override {
        _set_se_translator(nullptr);
        ::fesetenv(FE_DFL_ENV);
    }
};

using set_se_translator = set_se_translator_faults;

// A child's own work with a translator; what it returns is the exit code.
template <class Work>
int translated_in_a_child(const Work& work) {
    return in_a_child([&] {
        const rlimit no_core = {};
        ::setrlimit(RLIMIT_CORE, &no_core);
        _set_se_translator(throw_code);
        return work();
    });
}

int ends_by_itself(void (*provoke)()) {
    return in_a_child([&] {
        const rlimit no_core = {};
        ::setrlimit(RLIMIT_CORE, &no_core);
        provoke();
        return 0;
    });
}

}  // namespace

TEST_P(set_se_translator_faults, are_thrown_three_times_in_a_row_and_destructors_run) {
    destroyed = 0;
    for (int time = 1; time <= 3; ++time) {
        unsigned int code = 0;
        try {
            provoke_beside_an_object(GetParam().provoke);
        } catch (const Thrown& thrown) {
            code = thrown.code;
        }
        EXPECT_EQ(code, GetParam().code) << "time " << time;
        EXPECT_EQ(destroyed, time);
    }
}

TEST_P(set_se_translator_faults, leave_no_signal_blocked) {
    sigset_t before, after;
    ::pthread_sigmask(SIG_SETMASK, nullptr, &before);
    ASSERT_EQ(code_of(GetParam().provoke), GetParam().code);
    ::pthread_sigmask(SIG_SETMASK, nullptr, &after);
    for (int signal = 1; signal < 32; ++signal) {
        EXPECT_EQ(sigismember(&before, signal), sigismember(&after, signal)) << signal;
    }
}

TEST_P(set_se_translator_faults, end_a_thread_without_a_translator_by_their_signal) {
    _set_se_translator(nullptr);
    const int signal = ends_by_itself(GetParam().provoke) - ended_by;
    const std::array expected = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP};
    EXPECT_NE(std::ranges::find(expected, signal), expected.end()) << signal;
}

#if defined(__x86_64__)
INSTANTIATE_TEST_SUITE_P(
    all, set_se_translator_faults,
    testing::Values(
        Fault{"a_read_of_null", processor_faults::read_null, access_violation},
        Fault{"a_write_to_null", processor_faults::write_null, access_violation},
        Fault{"an_address_that_no_memory_can_have", processor_faults::read_impossible_address,
              access_violation},
        Fault{"a_write_to_constants", processor_faults::write_to_constants, access_violation},
        Fault{"a_call_of_null", processor_faults::call_null, access_violation},
        Fault{"a_call_into_data", processor_faults::call_data, access_violation},
        Fault{"a_read_behind_the_end_of_a_file", processor_faults::read_behind_the_end_of_a_file,
              0xC0000006},
        Fault{"a_misaligned_number_where_that_is_checked", processor_faults::read_misaligned_number,
              0x80000002},
        Fault{"an_integer_division", processor_faults::divide_by_zero, int_divide_by_zero},
        Fault{"an_integer_remainder", processor_faults::remainder_by_zero, int_divide_by_zero},
        Fault{"the_smallest_integer_by_minus_1", processor_faults::divide_smallest_int,
              int_overflow},
        Fault{"an_illegal_instruction", processor_faults::execute_illegal_instruction, 0xC000001D},
        Fault{"a_breakpoint", processor_faults::break_here, 0x80000003},
        Fault{"a_breakpoint_at_the_end_of_a_function", processor_faults::break_at_the_end,
              0x80000003},
        Fault{"a_single_step", processor_faults::step, 0x80000004},
        Fault{"a_halt", processor_faults::halt, 0xC0000096},
        Fault{"a_write_to_a_port", processor_faults::write_to_a_port, 0xC0000096},
        Fault{"a_floating_division", processor_faults::floating_division, 0xC000008E},
        Fault{"a_floating_division_on_the_stack_unit",
              processor_faults::floating_division_on_the_stack_unit, 0xC000008E},
        Fault{"an_invalid_operation", processor_faults::floating_invalid, 0xC0000090},
        Fault{"a_floating_overflow", processor_faults::floating_overflow, 0xC0000091},
        Fault{"a_floating_underflow", processor_faults::floating_underflow, 0xC0000093},
        Fault{"an_inexact_result", processor_faults::floating_inexact, 0xC000008F},
        Fault{"a_denormal_operand", processor_faults::floating_denormal, 0xC000008D},
        Fault{"a_full_stack_of_floating_registers", processor_faults::floating_stack_check,
              0xC0000092},
        Fault{"a_full_stack", processor_faults::overflow_the_stack, stack_overflow}),
    [](const auto& fault) { return std::string(fault.param.name); });
#endif

namespace {

// One way of naming the divisor of a division of the smallest integer.
struct Division {
    const char* name;
    void (*divide)();
};
std::ostream& operator<<(std::ostream& out, const Division& division) {
    return out << division.name;
}

volatile std::int64_t the_divisor = 0;

#if defined(__x86_64__)

std::array<std::int64_t, 64> divisors;

std::uintptr_t around_divisors() {
    divisors.fill(std::int64_t{the_divisor});
    return reinterpret_cast<std::uintptr_t>(&divisors[32]);
}

// The smallest integer of 32 bits in eax, edx and of 64 in rax, rdx; of 16 in ax.
#define NMK_DIVIDE_32(text, ...) \
    asm volatile(text : : "a"(0x80000000U), "d"(0xFFFFFFFFU), __VA_ARGS__ : "cc", "memory")
#define NMK_DIVIDE_64(text, ...)                                                   \
    asm volatile(text                                                              \
                 :                                                                 \
                 : "a"(0x8000000000000000U), "d"(0xFFFFFFFFFFFFFFFFU), __VA_ARGS__ \
                 : "cc", "memory")

const Division divisions[] = {
    {"a_register", [] { NMK_DIVIDE_32("idivl %%ecx", "c"(the_divisor)); }},
    {"one_of_the_upper_registers",
     [] { NMK_DIVIDE_32("movl %%ecx, %%r9d; idivl %%r9d", "c"(the_divisor)); }},
    {"a_register_of_64_bits", [] { NMK_DIVIDE_64("idivq %%rcx", "c"(the_divisor)); }},
    {"a_register_of_16_bits",
     [] {
         asm volatile("idivw %%cx" : : "a"(0x8000), "d"(0xFFFF), "c"(the_divisor) : "cc", "memory");
     }},
    {"a_register_of_8_bits",
     [] {
         asm volatile("idivb %%cl" : : "a"(0x8000), "c"(the_divisor) : "cc", "memory");
     }},
    {"the_second_byte_of_a_register",
     [] {
         asm volatile("movb %%cl, %%ch; movb $1, %%cl; idivb %%ch"
                      :
                      : "a"(0x8000), "c"(the_divisor)
                      : "cc", "memory");
     }},
    {"the_lowest_byte_of_rsi",
     [] {
         asm volatile("idivb %%sil" : : "a"(0x8000), "S"(the_divisor) : "cc", "memory");
     }},
    {"without_sign", [] { NMK_DIVIDE_32("divl %%ecx", "c"(the_divisor)); }},
    {"relative_to_the_instruction", [] { NMK_DIVIDE_32("idivl %2", "m"(the_divisor)); }},
    {"a_base", [] { NMK_DIVIDE_32("idivl (%%rcx)", "c"(around_divisors())); }},
    {"a_base_and_a_small_distance",
     [] { NMK_DIVIDE_32("idivl -8(%%rcx)", "c"(around_divisors())); }},
    {"a_base_and_a_large_distance",
     [] { NMK_DIVIDE_32("idivl 0x4000(%%rcx)", "c"(around_divisors() - 0x4000)); }},
    {"a_base_and_an_index",
     [] { NMK_DIVIDE_32("idivl (%%rcx,%%rsi,8)", "c"(around_divisors()), "S"(3L)); }},
    {"a_base_an_index_and_a_distance",
     [] { NMK_DIVIDE_32("idivl -16(%%rcx,%%rsi,4)", "c"(around_divisors()), "S"(2L)); }},
    {"an_index_alone", [] { NMK_DIVIDE_32("idivl 8(,%%rcx,8)", "c"(around_divisors() / 8)); }},
    {"an_upper_base",
     [] { NMK_DIVIDE_32("movq %%rcx, %%r12; idivl (%%r12)", "c"(around_divisors())); }},
    {"an_upper_base_and_an_upper_index",
     [] {
         NMK_DIVIDE_32("movq %%rcx, %%r13; movq %%rsi, %%r12; idivl (%%r13,%%r12,8)",
                       "c"(around_divisors()), "S"(-3L));
     }},
    {"the_stack",
     [] {
         NMK_DIVIDE_32(
             "pushq %%rcx; movq %%rsp, %%rsi; movq (%%rsi), %%rdi; popq %%rcx;"
             "movl %%edi, -8(%%rsp); idivl -8(%%rsp)",
             "c"(the_divisor));
     }},
};

#undef NMK_DIVIDE_32
#undef NMK_DIVIDE_64

#else

const Division divisions[] = {{"none", [] {}}};

#endif

class set_se_translator_division : public testing::TestWithParam<Division> {
  protected:
    void SetUp() override {
        if (!processor_faults::can_be_thrown) GTEST_SKIP() << processor_faults::reason_to_skip;
        _set_se_translator(throw_code);
    }
    void TearDown() override { _set_se_translator(nullptr); }
};

}  // namespace

TEST_P(set_se_translator_division, by_zero_and_one_that_overflows_have_different_codes) {
    the_divisor = 0;
    EXPECT_EQ(code_of(GetParam().divide), int_divide_by_zero);
    the_divisor = -1;
    const bool is_unsigned = std::string(GetParam().name) == "without_sign";
    if (is_unsigned) the_divisor = 1;
    EXPECT_EQ(code_of(GetParam().divide), int_overflow);
}

INSTANTIATE_TEST_SUITE_P(by, set_se_translator_division, testing::ValuesIn(divisions),
                         [](const auto& division) { return std::string(division.param.name); });

TEST_F(set_se_translator, returns_the_translator_from_before_in_each_thread) {
    std::thread([] {
        EXPECT_EQ(_set_se_translator(throw_code), nullptr);
        EXPECT_EQ(_set_se_translator(nullptr), throw_code);
        EXPECT_EQ(_set_se_translator(nullptr), nullptr);
    }).join();
    EXPECT_EQ(_set_se_translator(throw_code), throw_code);
}

TEST_F(set_se_translator, translates_on_eight_threads_at_once) {
    std::vector<std::thread> threads;
    std::array<int, 8> counts = {};
    for (int& count : counts) {
        threads.emplace_back([&count] {
            _set_se_translator(throw_code);
            for (int i = 0; i < 1000; ++i) {
                count += code_of(processor_faults::read_null) == access_violation ? 1 : 0;
                count += code_of(processor_faults::divide_by_zero) == int_divide_by_zero ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(counts, (std::array{2000, 2000, 2000, 2000, 2000, 2000, 2000, 2000}));
}

TEST_F(set_se_translator, translates_an_overflow_of_the_stack_of_any_thread_twice) {
    std::thread([] {
        _set_se_translator(throw_code);
        EXPECT_EQ(code_of(processor_faults::overflow_the_stack), stack_overflow);
        EXPECT_EQ(code_of(processor_faults::overflow_the_stack), stack_overflow);
    }).join();
}

TEST_F(set_se_translator, destroys_the_objects_of_every_frame_of_a_stack_that_overflowed) {
    const auto overflow = [] {
        _set_se_translator(throw_code);
        for (int time = 0; time < 3; ++time) {
            EXPECT_EQ(code_of(processor_faults::overflow_the_stack_with_objects), stack_overflow);
            EXPECT_EQ(processor_faults::alive, 0);
        }
    };
    overflow();
    std::thread(overflow).join();
}

namespace {

// Overflows the stack of a thread from every place of a frame, so that every instruction of a
// function that uses the stack is at fault once.
void* overflow_from_every_place(void* failures) {
    _set_se_translator(throw_code);
    for (std::size_t distance = 0; distance < 5120; distance += 64) {
        volatile char* const room = static_cast<volatile char*>(__builtin_alloca(distance + 1));
        room[distance] = 1;
        const bool is_right =
            code_of(processor_faults::overflow_the_stack_with_objects) == stack_overflow &&
            processor_faults::alive == 0;
        if (!is_right) ++*static_cast<int*>(failures);
    }
    return nullptr;
}

}  // namespace

TEST_F(set_se_translator, translates_an_overflow_at_any_instruction_that_uses_the_stack) {
    int failures = 0;
    pthread_attr_t attributes;
    ::pthread_attr_init(&attributes);
    ::pthread_attr_setstacksize(&attributes, 600 * 1024);
    pthread_t thread = {};
    ASSERT_EQ(::pthread_create(&thread, &attributes, overflow_from_every_place, &failures), 0);
    ::pthread_join(thread, nullptr);
    ::pthread_attr_destroy(&attributes);
    EXPECT_EQ(failures, 0);
}

TEST_F(set_se_translator, translates_faults_within_callbacks_of_the_c_library) {
    const auto faulting = [](const void*, const void*) {
        processor_faults::read_null();
        return 0;
    };
    unsigned int code = 0;
    std::array<int, 100> numbers = {};
    try {
        std::qsort(numbers.data(), numbers.size(), sizeof(int), faulting);
    } catch (const Thrown& thrown) {
        code = thrown.code;
    }
    EXPECT_EQ(code, access_violation);
}

TEST_F(set_se_translator, translates_faults_within_callbacks_of_templates) {
    std::vector<int> numbers(100, 1);
    unsigned int code = 0;
    void (*volatile provoke)() = processor_faults::divide_by_zero;
    try {
        std::sort(numbers.begin(), numbers.end(), [&](int a, int b) {
            provoke();
            return a < b;
        });
    } catch (const Thrown& thrown) {
        code = thrown.code;
    }
    EXPECT_EQ(code, int_divide_by_zero);
}

TEST_F(set_se_translator, translates_faults_of_functions_for_bytes_and_texts) {
    static char bytes[100];
    static const char* nowhere = nullptr;
    nowhere = const_cast<const char*>(
        reinterpret_cast<const volatile char*>(processor_faults::address(16)));
    static volatile std::size_t count = 77;
    EXPECT_EQ(code_of([] { std::memcpy(bytes, nowhere, count); }), access_violation);
    EXPECT_EQ(code_of([] { std::memmove(bytes, nowhere, count); }), access_violation);
    EXPECT_EQ(code_of([] { std::memset(const_cast<char*>(nowhere), 1, count); }), access_violation);
    EXPECT_EQ(code_of([] { processor_faults::read_value = std::memcmp(bytes, nowhere, count); }),
              access_violation);
}

#if defined(__x86_64__)
TEST_F(set_se_translator, restores_the_controls_of_both_floating_units) {
    ::fesetround(FE_UPWARD);
    ::feenableexcept(FE_DIVBYZERO);
    ::feclearexcept(FE_ALL_EXCEPT);  // what was reported before is not a control
    const unsigned int before = _mm_getcsr();
    EXPECT_EQ(code_of(processor_faults::read_null), access_violation);
    EXPECT_EQ(_mm_getcsr(), before);
    processor_faults::result = 0.0;
    EXPECT_EQ(code_of([] {
                  processor_faults::result = processor_faults::one / processor_faults::zero_double;
              }),
              0xC000008E);
    EXPECT_EQ(_mm_getcsr(), before);
}
#endif

TEST_F(set_se_translator, restores_the_controls_of_floating_point) {
    ::fesetround(FE_UPWARD);
    ::feenableexcept(FE_DIVBYZERO);
    EXPECT_EQ(code_of(processor_faults::read_null), access_violation);
    EXPECT_EQ(::fegetround(), FE_UPWARD);
    EXPECT_EQ(::fegetexcept(), FE_DIVBYZERO);
    EXPECT_EQ(code_of(processor_faults::floating_division), 0xC000008E);
    EXPECT_EQ(::fegetround(), FE_UPWARD);
    EXPECT_EQ(::fegetexcept(), FE_DIVBYZERO);
    EXPECT_EQ(::fetestexcept(FE_ALL_EXCEPT), 0);
}

TEST_F(set_se_translator, unblocks_the_signals_of_faults) {
    sigset_t all, now;
    sigfillset(&all);
    std::thread([&] {
        ::pthread_sigmask(SIG_BLOCK, &all, nullptr);
        _set_se_translator(throw_code);
        EXPECT_EQ(code_of(processor_faults::read_null), access_violation);
        ::pthread_sigmask(SIG_BLOCK, nullptr, &now);
    }).join();
    EXPECT_EQ(sigismember(&now, SIGSEGV), 0);
    EXPECT_EQ(sigismember(&now, SIGTERM), 1);
}

TEST_F(set_se_translator, leaves_errno_to_the_thread) {
    errno = 77;
    EXPECT_EQ(code_of(processor_faults::read_null), access_violation);
    EXPECT_EQ(errno, 77);
}

TEST_F(set_se_translator, ends_the_process_where_another_thread_faults_that_has_none) {
    EXPECT_EQ(translated_in_a_child([] {
                  std::thread(processor_faults::read_null).join();
                  return 0;
              }),
              ended_by + SIGSEGV);
}

TEST_F(set_se_translator, ends_the_process_where_the_c_library_itself_faults) {
    void (*volatile print)() = [] {
        char text[10];
        std::snprintf(text, sizeof text, "%s",
                      const_cast<const char*>(
                          reinterpret_cast<const volatile char*>(processor_faults::address(16))));
    };
    void (*volatile release)() = [] { std::free(const_cast<int*>(processor_faults::address(16))); };
    for (void (*volatile provoke)() : {print, release}) {
        EXPECT_EQ(translated_in_a_child([&] { return static_cast<int>(code_of(provoke)); }),
                  ended_by + SIGSEGV);
    }
}

TEST_F(set_se_translator, ends_the_process_where_the_translator_returns) {
    EXPECT_EQ(translated_in_a_child([] {
                  _set_se_translator([](unsigned int, _EXCEPTION_POINTERS*) {});
                  return static_cast<int>(code_of(processor_faults::break_here));
              }),
              ended_by + SIGTRAP);
}

TEST_F(set_se_translator, ends_the_process_where_the_translator_faults) {
    EXPECT_EQ(translated_in_a_child([] {
                  _set_se_translator(
                      [](unsigned int, _EXCEPTION_POINTERS*) { processor_faults::read_null(); });
                  return static_cast<int>(code_of(processor_faults::divide_by_zero));
              }),
              ended_by + SIGSEGV);
}

TEST_F(set_se_translator, ends_the_process_where_a_fault_leaves_a_function_that_must_not_throw) {
    void (*volatile provoke)() noexcept = []() noexcept {
        const CountsDestruction object;
        void (*volatile read)() = processor_faults::read_null;
        read();
    };
    EXPECT_EQ(translated_in_a_child([&] {
                  try {
                      provoke();
                  } catch (const Thrown&) {
                  }
                  return 0;
              }),
              ended_by + SIGABRT);
}

TEST_F(set_se_translator, removes_the_signal_stack_when_the_thread_ends) {
    const auto count_mappings = [] {
        std::ifstream maps("/proc/self/maps");
        return std::count(std::istreambuf_iterator<char>(maps), {}, '\n');
    };
    const auto run_thread = [] {
        std::thread([] {
            _set_se_translator(throw_code);
            EXPECT_EQ(code_of(processor_faults::read_null), access_violation);
        }).join();
    };
    run_thread();
    const auto before = count_mappings();
    for (int i = 0; i < 100; ++i) run_thread();
    EXPECT_LT(count_mappings(), before + 20);
}

namespace {

// Takes a look at the thread's signal stack after all later objects of the thread are destroyed.
struct LooksAtTheStack {
    explicit LooksAtTheStack(stack_t& into) : found(&into) {}
    LooksAtTheStack(const LooksAtTheStack&) = delete;
    LooksAtTheStack& operator=(const LooksAtTheStack&) = delete;
    ~LooksAtTheStack() { ::sigaltstack(nullptr, found); }
    stack_t* found;
};

// Sets a translator when it is too late.
struct SetsATranslator {
    SetsATranslator() = default;
    SetsATranslator(const SetsATranslator&) = delete;
    SetsATranslator& operator=(const SetsATranslator&) = delete;
    ~SetsATranslator() { result = _set_se_translator(throw_code) == nullptr ? 1 : 2; }
    static inline int result = 0;
};

}  // namespace

TEST_F(set_se_translator, gives_the_thread_back_the_signal_stack_that_it_had) {
    std::vector<char> memory(64 * 1024);
    stack_t own = {}, found = {};
    own.ss_sp = memory.data();
    own.ss_size = memory.size();
    std::thread([&] {
        ::sigaltstack(&own, nullptr);
        thread_local LooksAtTheStack last(found);
        ASSERT_NE(last.found, nullptr);
        _set_se_translator(throw_code);
        EXPECT_EQ(code_of(processor_faults::read_null), access_violation);
    }).join();
    EXPECT_EQ(found.ss_sp, memory.data());
}

TEST_F(set_se_translator, sets_nothing_once_the_thread_ends) {
    SetsATranslator::result = 0;
    std::thread([] {
        thread_local SetsATranslator last;
        EXPECT_EQ(last.result, 0);
        _set_se_translator(throw_code);
    }).join();
    EXPECT_EQ(SetsATranslator::result, 1);
}

// The handlers from before are those at the first call in a process: each of these tests is run in
// a process that begins anew.
class set_se_translator_previous_handler : public testing::Test {
  protected:
    void SetUp() override {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        const rlimit no_core = {};
        ::setrlimit(RLIMIT_CORE, &no_core);
    }
};

namespace {

volatile sig_atomic_t handled = 0, handled_code = 0, was_blocked = 0;

void count_signal(int) {
    handled = handled + 1;
    errno = 5;
}

void note_signal(int, siginfo_t* info, void*) {
    sigset_t now;
    ::pthread_sigmask(SIG_BLOCK, nullptr, &now);
    handled = handled + 1;
    handled_code = info->si_code;
    was_blocked = (sigismember(&now, SIGUSR1) == 1 && sigismember(&now, SIGSEGV) == 1) ? 1 : 0;
}

void set_handler(int signal, void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    ::sigaction(signal, &action, nullptr);
}

void set_noting_handler(int signal, int flags) {
    struct sigaction action = {};
    action.sa_sigaction = note_signal;
    action.sa_flags = SA_SIGINFO | flags;
    sigaddset(&action.sa_mask, SIGUSR1);
    ::sigaction(signal, &action, nullptr);
}

[[noreturn]] void exit_with(bool is_right) { std::_Exit(is_right ? 0 : 1); }

sigjmp_buf where_to_go;

}  // namespace

TEST_F(set_se_translator_previous_handler, is_called_for_signals_that_were_sent) {
    EXPECT_EXIT(
        {
            set_handler(SIGFPE, count_signal);
            set_noting_handler(SIGSEGV, 0);
            _set_se_translator(throw_code);
            for (int i = 0; i < 3; ++i) ::raise(SIGFPE);
            ::kill(::getpid(), SIGFPE);
            const bool is_plain_called = handled == 4;
            ::raise(SIGSEGV);
            exit_with(is_plain_called && handled == 5 && handled_code == SI_TKILL &&
                      was_blocked == 1);
        },
        testing::ExitedWithCode(0), "");
}

#if defined(__x86_64__)
TEST_F(set_se_translator_previous_handler, is_called_for_a_signal_that_comes_while_a_thread_works) {
    EXPECT_EXIT(
        {
            set_handler(SIGFPE, count_signal);
            _set_se_translator(throw_code);
            errno = 77;
            processor_faults::send_while_busy(SIGFPE);
            exit_with(handled == 1 && errno == 77);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(set_se_translator_previous_handler, continues_behind_a_breakpoint) {
    EXPECT_EXIT(
        {
            set_handler(SIGTRAP, count_signal);
            _set_se_translator([](unsigned int, _EXCEPTION_POINTERS*) {});
            ::alarm(20);
            processor_faults::break_here();
            exit_with(handled == 1);
        },
        testing::ExitedWithCode(0), "");
}
#endif

TEST_F(set_se_translator_previous_handler, is_called_for_faults_of_threads_without_a_translator) {
    EXPECT_EXIT(
        {
            set_handler(SIGSEGV, [](int) { ::siglongjmp(where_to_go, 1); });
            _set_se_translator(throw_code);
            _set_se_translator(nullptr);
            if (sigsetjmp(where_to_go, 1) == 0) {
                processor_faults::read_null();
                exit_with(false);
            }
            exit_with(true);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(set_se_translator_previous_handler, that_was_set_for_one_signal_is_called_once) {
    EXPECT_EXIT(
        {
            set_noting_handler(SIGTRAP, static_cast<int>(SA_RESETHAND));
            _set_se_translator(throw_code);
            ::raise(SIGTRAP);
            if (handled != 1) exit_with(false);
            ::raise(SIGTRAP);
            exit_with(true);
        },
        testing::KilledBySignal(SIGTRAP), "");
}

TEST_F(set_se_translator_previous_handler, that_ignored_a_signal_still_does) {
    EXPECT_EXIT(
        {
            set_handler(SIGBUS, SIG_IGN);
            _set_se_translator(throw_code);
            ::raise(SIGBUS);
            exit_with(true);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(set_se_translator_previous_handler, that_there_was_none_ends_the_process_by_what_is_sent) {
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP}) {
        EXPECT_EXIT(
            {
                set_handler(signal, SIG_DFL);
                _set_se_translator(throw_code);
                ::raise(signal);
                exit_with(true);
            },
            testing::KilledBySignal(signal), "");
    }
}

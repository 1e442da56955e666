#include <gtest/gtest.h>
#include <mfc/CRuntimeClass.h>
#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/ordering/nmkPointSorter.h>
#include <nmktoolbox/ordering/nmkSortItemWithPoint.h>
#include <nmktoolbox/runtime/nmkCExceptTrans.h>
#include <seh/set_se_translator.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <new>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include "processor_faults.h"

namespace {

constinit thread_local bool no_memory = false;

}  // namespace

// The one that returns null can fail on purpose.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    if (no_memory) return nullptr;
    try {
        return ::operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

namespace {

std::string message_of(unsigned int code) {
    nmkCExceptTrans fault(code);
    char message[64];
    fault.GetErrorMessage(message, sizeof message, nullptr);
    return message;
}

struct Message {
    const char* name;
    unsigned int code;
    const char* message;
};

std::ostream& operator<<(std::ostream& out, const Message& message) { return out << message.name; }

class nmkCExceptTrans_GetErrorMessage : public testing::TestWithParam<Message> {};

// The function that install() makes the translator of the thread.
_se_translator_function installed_translator() {
    nmkCExceptTrans::install();
    return _set_se_translator(nullptr);
}

// The message of what is thrown, which is then deleted; "null" for a null pointer.
std::string message_thrown_by(void (*provoke)()) {
    try {
        provoke();
        // NOLINTNEXTLINE(misc-throw-by-value-catch-by-reference): faults are thrown as pointers
    } catch (nmkCExceptTrans* fault) {
        if (fault == nullptr) return "null";
        char message[64];
        fault->GetErrorMessage(message, sizeof message, nullptr);
        fault->Delete();
        return message;
    }
    return "nothing";
}

class nmkCExceptTrans_install : public testing::Test {
  protected:
    void SetUp() override {
        if (!processor_faults::can_be_thrown) GTEST_SKIP() << processor_faults::reason_to_skip;
        nmkCExceptTrans::install();
    }
    void TearDown() override { _set_se_translator(nullptr); }
};

const std::string access_violation = "EXCEPTION_ACCESS_VIOLATION - (c0000005)";

struct Hole : nmkSortItemWithPoint {
    explicit Hole(double x) : place(x, 0.0, 0.0) {}
    const giPoint3& get_point() const override { return place; }
    giPoint3 place;
};

// A progress reporter of a host, with a fault in it.
class FaultyProgress : public nmkProgressBreak {
  public:
    int increment() override {
        provoke();
        return 0;
    }
    void (*provoke)() = processor_faults::read_null;
};

void sort_with_a_faulty_progress() {
    std::vector<Hole> holes;
    for (int i = 0; i < 50; ++i) holes.emplace_back(i * 7 % 50);
    nmkPointSorter sorter(nmkSortTypeShortest);
    for (Hole& hole : holes) sorter.add_item(&hole);
    FaultyProgress progress;
    sorter.sort(0.01, giPoint3(0.0, 0.0, 0.0), &progress);
}

}  // namespace

TEST_P(nmkCExceptTrans_GetErrorMessage, is_the_name_and_the_code) {
    EXPECT_EQ(message_of(GetParam().code), GetParam().message);
    EXPECT_LT(std::strlen(GetParam().message), 64U);
}

INSTANTIATE_TEST_SUITE_P(
    of, nmkCExceptTrans_GetErrorMessage,
    testing::Values(
        Message{"guard_page", 0x80000001, "EXCEPTION_GUARD_PAGE - (80000001)"},
        Message{"misalignment", 0x80000002, "EXCEPTION_DATATYPE_MISALIGNMENT - (80000002)"},
        Message{"breakpoint", 0x80000003, "EXCEPTION_BREAKPOINT - (80000003)"},
        Message{"single_step", 0x80000004, "EXCEPTION_SINGLE_STEP - (80000004)"},
        Message{"access_violation", 0xC0000005, "EXCEPTION_ACCESS_VIOLATION - (c0000005)"},
        Message{"in_page_error", 0xC0000006, "EXCEPTION_IN_PAGE_ERROR - (c0000006)"},
        Message{"invalid_handle", 0xC0000008, "EXCEPTION_INVALID_HANDLE - (c0000008)"},
        Message{"illegal_instruction", 0xC000001D, "EXCEPTION_ILLEGAL_INSTRUCTION - (c000001d)"},
        Message{"noncontinuable", 0xC0000025, "EXCEPTION_NONCONTINUABLE_EXCEPTION - (c0000025)"},
        Message{"invalid_disposition", 0xC0000026, "EXCEPTION_INVALID_DISPOSITION - (c0000026)"},
        Message{"array_bounds", 0xC000008C, "EXCEPTION_ARRAY_BOUNDS_EXCEEDED - (c000008c)"},
        Message{"denormal_operand", 0xC000008D, "EXCEPTION_FLT_DENORMAL_OPERAND - (c000008d)"},
        Message{"floating_division", 0xC000008E, "EXCEPTION_FLT_DIVIDE_BY_ZERO - (c000008e)"},
        Message{"inexact_result", 0xC000008F, "EXCEPTION_FLT_INEXACT_RESULT - (c000008f)"},
        Message{"invalid_operation", 0xC0000090, "EXCEPTION_FLT_INVALID_OPERATION - (c0000090)"},
        Message{"floating_overflow", 0xC0000091, "EXCEPTION_FLT_OVERFLOW - (c0000091)"},
        Message{"floating_stack", 0xC0000092, "EXCEPTION_FLT_STACK_CHECK - (c0000092)"},
        Message{"floating_underflow", 0xC0000093, "EXCEPTION_FLT_UNDERFLOW - (c0000093)"},
        Message{"integer_division", 0xC0000094, "EXCEPTION_INT_DIVIDE_BY_ZERO - (c0000094)"},
        Message{"integer_overflow", 0xC0000095, "EXCEPTION_INT_OVERFLOW - (c0000095)"},
        Message{"privileged", 0xC0000096, "EXCEPTION_PRIV_INSTRUCTION - (c0000096)"},
        Message{"stack_overflow", 0xC00000FD, "EXCEPTION_STACK_OVERFLOW - (c00000fd)"},
        Message{"a_gap_of_the_table", 0xC0000007, "EXCEPTION_UNKNOWN - (c0000007)"},
        Message{"no_code", 0, "EXCEPTION_UNKNOWN - (0)"},
        Message{"a_small_code", 0xAB, "EXCEPTION_UNKNOWN - (ab)"},
        Message{"the_largest_code", 0xFFFFFFFF, "EXCEPTION_UNKNOWN - (ffffffff)"}),
    [](const auto& message) { return std::string(message.param.name); });

TEST(nmkCExceptTrans, writes_its_message_without_a_help_context) {
    nmkCExceptTrans fault(0xC0000005);
    char message[64];
    EXPECT_EQ(fault.GetErrorMessage(message, sizeof message, nullptr), 1);
    EXPECT_EQ(message, access_violation);
}

TEST(nmkCExceptTrans, sets_the_help_context_to_0) {
    nmkCExceptTrans fault(0xC0000005);
    char message[64];
    unsigned int help_context = 7;
    EXPECT_EQ(fault.GetErrorMessage(message, sizeof message, &help_context), 1);
    EXPECT_EQ(help_context, 0U);
}

TEST(nmkCExceptTrans, writes_the_whole_message_whatever_the_size) {
    nmkCExceptTrans fault(0xC0000005);
    for (const unsigned int size : {0U, 1U, 10U, 64U}) {
        char message[64] = "";
        EXPECT_EQ(fault.GetErrorMessage(message, size, nullptr), 1);
        EXPECT_EQ(message, access_violation) << size;
    }
}

TEST(nmkCExceptTrans, is_an_exception_of_the_framework_that_cannot_be_stored) {
    const nmkCExceptTrans fault(0xC0000005);
    const CRuntimeClass* const runtime_class = fault.GetRuntimeClass();
    EXPECT_STREQ(runtime_class->m_lpszClassName, "nmkCExceptTrans");
    EXPECT_EQ(runtime_class->m_wSchema, 0xFFFFU);
    EXPECT_EQ(nmkCExceptTrans::GetThisClass(), runtime_class);
    EXPECT_EQ(nmkCExceptTrans::_GetBaseClass(), CException::GetThisClass());
    EXPECT_TRUE(fault.IsKindOf(CException::GetThisClass()));
    EXPECT_TRUE(fault.IsKindOf(CObject::GetThisClass()));
}

TEST(nmkCExceptTrans, its_translator_throws_a_pointer_to_an_object_with_the_code) {
    const _se_translator_function translator = installed_translator();
    ASSERT_NE(translator, nullptr);
    try {
        translator(0xC0000094, nullptr);
        FAIL();
        // NOLINTNEXTLINE(misc-throw-by-value-catch-by-reference): faults are thrown as pointers
    } catch (CException* fault) {
        char message[64];
        fault->GetErrorMessage(message, sizeof message, nullptr);
        EXPECT_STREQ(message, "EXCEPTION_INT_DIVIDE_BY_ZERO - (c0000094)");
        EXPECT_TRUE(fault->IsKindOf(nmkCExceptTrans::GetThisClass()));
        fault->Delete();
    }
}

TEST(nmkCExceptTrans, its_translator_throws_null_without_memory) {
    const _se_translator_function translator = installed_translator();
    no_memory = true;
    try {
        translator(0xC0000094, nullptr);
        ADD_FAILURE();
        // NOLINTNEXTLINE(misc-throw-by-value-catch-by-reference): faults are thrown as pointers
    } catch (nmkCExceptTrans* fault) {
        EXPECT_EQ(fault, nullptr);
    }
    no_memory = false;
}

TEST(nmkCExceptTrans, install_concerns_the_calling_thread_alone) {
    nmkCExceptTrans::install();
    std::thread([] { EXPECT_EQ(_set_se_translator(nullptr), nullptr); }).join();
    EXPECT_NE(_set_se_translator(nullptr), nullptr);
}

TEST_F(nmkCExceptTrans_install, makes_a_fault_an_exception_three_times_in_a_row) {
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(message_thrown_by(processor_faults::read_null), access_violation);
        EXPECT_EQ(message_thrown_by(processor_faults::divide_by_zero),
                  "EXCEPTION_INT_DIVIDE_BY_ZERO - (c0000094)");
    }
}

TEST_F(nmkCExceptTrans_install, may_be_called_again) {
    nmkCExceptTrans::install();
    nmkCExceptTrans::install();
    EXPECT_EQ(message_thrown_by(processor_faults::write_null), access_violation);
}

TEST_F(nmkCExceptTrans_install, lets_a_stack_overflow_three_times) {
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(message_thrown_by(processor_faults::overflow_the_stack_with_objects),
                  "EXCEPTION_STACK_OVERFLOW - (c00000fd)");
        EXPECT_EQ(processor_faults::alive, 0);
    }
}

TEST_F(nmkCExceptTrans_install, lets_the_stack_of_a_thread_overflow_three_times) {
    std::thread([] {
        nmkCExceptTrans::install();
        for (int time = 0; time < 3; ++time) {
            EXPECT_EQ(message_thrown_by(processor_faults::overflow_the_stack_with_objects),
                      "EXCEPTION_STACK_OVERFLOW - (c00000fd)");
        }
    }).join();
}

TEST_F(nmkCExceptTrans_install, leaves_room_for_destructors_at_each_overflow_of_a_stack) {
    std::thread([] {
        nmkCExceptTrans::install();
        for (int time = 0; time < 3; ++time) {
            EXPECT_EQ(
                message_thrown_by(processor_faults::overflow_the_stack_with_large_destructors),
                "EXCEPTION_STACK_OVERFLOW - (c00000fd)");
            EXPECT_EQ(processor_faults::alive, 0);
        }
    }).join();
}

TEST_F(nmkCExceptTrans_install, reports_a_fault_without_memory_as_null) {
    void (*volatile provoke)() = [] {
        no_memory = true;
        processor_faults::read_null();
    };
    EXPECT_EQ(message_thrown_by(provoke), "null");
    no_memory = false;
}

TEST_F(nmkCExceptTrans_install, makes_a_fault_within_a_callback_of_the_library_an_exception) {
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(message_thrown_by(sort_with_a_faulty_progress), access_violation);
    }
}

TEST_F(nmkCExceptTrans_install, works_on_eight_threads_at_once) {
    std::vector<std::thread> threads;
    std::array<int, 8> counts = {};
    for (int& count : counts) {
        threads.emplace_back([&count] {
            nmkCExceptTrans::install();
            for (int i = 0; i < 100; ++i) {
                count += message_thrown_by(processor_faults::read_null) == access_violation ? 1 : 0;
                const std::string of_sort = message_thrown_by(sort_with_a_faulty_progress);
                count += of_sort == access_violation ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(counts, (std::array{200, 200, 200, 200, 200, 200, 200, 200}));
}

#include "runtime/exception_names.h"

#include <algorithm>
#include <array>

namespace nmk_runtime {

namespace {

struct NamedCode {
    unsigned int code;
    const char* name;
};

// Ascending.
constexpr std::array<NamedCode, 22> table = {{
    {0x80000001, "EXCEPTION_GUARD_PAGE"},
    {0x80000002, "EXCEPTION_DATATYPE_MISALIGNMENT"},
    {0x80000003, "EXCEPTION_BREAKPOINT"},
    {0x80000004, "EXCEPTION_SINGLE_STEP"},
    {0xC0000005, "EXCEPTION_ACCESS_VIOLATION"},
    {0xC0000006, "EXCEPTION_IN_PAGE_ERROR"},
    {0xC0000008, "EXCEPTION_INVALID_HANDLE"},
    {0xC000001D, "EXCEPTION_ILLEGAL_INSTRUCTION"},
    {0xC0000025, "EXCEPTION_NONCONTINUABLE_EXCEPTION"},
    {0xC0000026, "EXCEPTION_INVALID_DISPOSITION"},
    {0xC000008C, "EXCEPTION_ARRAY_BOUNDS_EXCEEDED"},
    {0xC000008D, "EXCEPTION_FLT_DENORMAL_OPERAND"},
    {0xC000008E, "EXCEPTION_FLT_DIVIDE_BY_ZERO"},
    {0xC000008F, "EXCEPTION_FLT_INEXACT_RESULT"},
    {0xC0000090, "EXCEPTION_FLT_INVALID_OPERATION"},
    {0xC0000091, "EXCEPTION_FLT_OVERFLOW"},
    {0xC0000092, "EXCEPTION_FLT_STACK_CHECK"},
    {0xC0000093, "EXCEPTION_FLT_UNDERFLOW"},
    {0xC0000094, "EXCEPTION_INT_DIVIDE_BY_ZERO"},
    {0xC0000095, "EXCEPTION_INT_OVERFLOW"},
    {0xC0000096, "EXCEPTION_PRIV_INSTRUCTION"},
    {0xC00000FD, "EXCEPTION_STACK_OVERFLOW"},
}};

static_assert(std::ranges::is_sorted(table, {}, &NamedCode::code));

}  // namespace

const char* exception_name(unsigned int code) {
    const auto* const found = std::ranges::lower_bound(table, code, {}, &NamedCode::code);
    return found != table.end() && found->code == code ? found->name : "EXCEPTION_UNKNOWN";
}

}  // namespace nmk_runtime

#include "stack_frames.h"

#include <dlfcn.h>
#include <unwind.h>

#include <algorithm>
#include <array>

// What the unwinder of GCC itself looks functions up with.
struct FunctionBases {
    void* tbase;
    void* dbase;
    void* func;  // the beginning of the function
};
extern "C" const void* _Unwind_Find_FDE(void* instruction, FunctionBases* bases);

namespace nmk_seh {

namespace {

// Functions that work on the caller's memory alone.
constexpr std::array names_without_locks = {
    "memchr",  "memcmp",  "memcpy",  "memmove", "memset",  "rawmemchr", "strcasecmp",
    "strcat",  "strchr",  "strcmp",  "strcpy",  "strlen",  "strncat",   "strncmp",
    "strncpy", "strnlen", "strrchr", "wcslen",  "wmemchr", "wmemcmp",   "wmemset"};

std::array<const void*, names_without_locks.size()> functions_without_locks = {};

// Where a library begins in memory; null: not found.
const void* c_library = nullptr;
const void* dynamic_linker = nullptr;

// Takes no lock and no memory.
const void* library_of(const void* address) {
    dl_find_object library = {};
    const bool is_found = ::_dl_find_object(const_cast<void*>(address), &library) == 0;
    return is_found ? library.dlfo_map_start : nullptr;
}

const void* library_with(const char* function) {
    return library_of(::dlsym(RTLD_DEFAULT, function));
}

bool is_in_c_library(std::uintptr_t instruction) {
    const void* const library = library_of(reinterpret_cast<const void*>(instruction));
    return library != nullptr && (library == c_library || library == dynamic_linker);
}

bool is_without_locks(std::uintptr_t instruction) {
    FunctionBases bases = {};
    return _Unwind_Find_FDE(reinterpret_cast<void*>(instruction), &bases) != nullptr &&
           std::ranges::find(functions_without_locks, bases.func) != functions_without_locks.end();
}

// The search for the interrupted instruction among the frames of the handler, and for the one that
// called its function.
struct CallerSearch {
    std::uintptr_t instruction;
    bool is_next = false;
    std::uintptr_t caller = 0;
};

_Unwind_Reason_Code look_at_frame(_Unwind_Context* frame, void* argument) {
    auto& search = *static_cast<CallerSearch*>(argument);
    if (search.is_next) {
        search.caller = ::_Unwind_GetIP(frame) - 1;
        return _URC_NORMAL_STOP;
    }
    search.is_next = ::_Unwind_GetIP(frame) == search.instruction;
    return _URC_NO_REASON;
}

std::uintptr_t caller_of(std::uintptr_t instruction) {
    CallerSearch search{instruction};
    ::_Unwind_Backtrace(look_at_frame, &search);
    return search.caller;
}

}  // namespace

void find_c_library() {
    c_library = library_with("__libc_start_main");
    dynamic_linker = library_with("__tls_get_addr");
    std::ranges::transform(names_without_locks, functions_without_locks.begin(),
                           [](const char* name) { return ::dlsym(RTLD_DEFAULT, name); });
}

bool has_frame(std::uintptr_t instruction) {
    FunctionBases bases = {};
    return _Unwind_Find_FDE(reinterpret_cast<void*>(instruction), &bases) != nullptr;
}

bool may_hold_locks(std::uintptr_t instruction) {
    if (!is_in_c_library(instruction)) return false;
    return !is_without_locks(instruction) || is_in_c_library(caller_of(instruction));
}

}  // namespace nmk_seh

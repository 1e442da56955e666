#include "stack_frames.h"

#include <dlfcn.h>
#include <unwind.h>

#include <algorithm>
#include <array>

// What the unwinder of GCC itself looks functions up with.
struct dwarf_eh_bases {
    void* tbase;
    void* dbase;
    void* func;  // the beginning of the function
};
extern "C" const void* _Unwind_Find_FDE(void* instruction, dwarf_eh_bases* bases);

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
    dwarf_eh_bases bases = {};
    return _Unwind_Find_FDE(reinterpret_cast<void*>(instruction), &bases) != nullptr &&
           std::ranges::find(functions_without_locks, bases.func) != functions_without_locks.end();
}

// Calls `visit` with the frame of the interrupted instruction and with that of its caller.
template <class Visit>
class FrameWalk {
  public:
    FrameWalk(std::uintptr_t instruction, Visit visit)
        : m_instruction(instruction), m_visit(visit) {
        ::_Unwind_Backtrace(step, this);
    }

  private:
    static _Unwind_Reason_Code step(_Unwind_Context* frame, void* walk) {
        return static_cast<FrameWalk*>(walk)->look_at(frame);
    }

    _Unwind_Reason_Code look_at(_Unwind_Context* frame) {
        if (m_is_found) {
            m_visit(frame, true);
            return _URC_NORMAL_STOP;
        }
        m_is_found = ::_Unwind_GetIP(frame) == m_instruction;
        if (m_is_found) m_visit(frame, false);
        return _URC_NO_REASON;
    }

    std::uintptr_t m_instruction;
    Visit m_visit;
    bool m_is_found = false;
};

std::uintptr_t caller_of(std::uintptr_t instruction) {
    std::uintptr_t caller = 0;
    FrameWalk(instruction, [&](_Unwind_Context* frame, bool is_caller) {
        if (is_caller) caller = ::_Unwind_GetIP(frame) - 1;
    });
    return caller;
}

// Reads a table of exceptions, as compilers write them.
class TableReader {
  public:
    explicit TableReader(const void* table) : m_at(static_cast<const unsigned char*>(table)) {}

    unsigned char byte() { return *m_at++; }

    // A number in groups of seven bits, the lowest first.
    std::uintptr_t number() {
        std::uintptr_t value = 0;
        unsigned char group = 0x80;
        for (unsigned int shift = 0; (group & 0x80) != 0; shift += 7) {
            group = byte();
            value |= static_cast<std::uintptr_t>(group & 0x7F) << shift;
        }
        return value;
    }

  private:
    const unsigned char* m_at;
};

constexpr unsigned char omitted = 0xFF, in_groups = 0x01;

// How far from the beginning of a function its first call is for which there is an entry: 0 where
// the function has no table, or one of a kind that GCC does not write.
std::uintptr_t first_entry(_Unwind_Context* function) {
    const void* const table = ::_Unwind_GetLanguageSpecificData(function);
    if (table == nullptr) return 0;
    TableReader reader(table);
    if (reader.byte() != omitted) return 0;
    if (reader.byte() != omitted) reader.number();
    if (reader.byte() != in_groups) return 0;
    const std::uintptr_t length = reader.number();
    return length == 0 ? 0 : reader.number();
}

bool is_unbegun(_Unwind_Context* function) {
    return ::_Unwind_GetIP(function) < ::_Unwind_GetRegionStart(function) + first_entry(function);
}

}  // namespace

void find_c_library() {
    c_library = library_with("__libc_start_main");
    dynamic_linker = library_with("__tls_get_addr");
    std::ranges::transform(names_without_locks, functions_without_locks.begin(),
                           [](const char* name) { return ::dlsym(RTLD_DEFAULT, name); });
}

bool has_frame(std::uintptr_t instruction) {
    dwarf_eh_bases bases = {};
    return _Unwind_Find_FDE(reinterpret_cast<void*>(instruction), &bases) != nullptr;
}

bool may_hold_locks(std::uintptr_t instruction) {
    if (!is_in_c_library(instruction)) return false;
    return !is_without_locks(instruction) || is_in_c_library(caller_of(instruction));
}

void leave_unbegun_function(MachineState& state) {
    bool is_left = false;
    FrameWalk(state.position().instruction, [&](_Unwind_Context* frame, bool is_caller) {
        if (!is_caller) is_left = is_unbegun(frame);
        if (is_caller && is_left) state.become(frame);
    });
}

}  // namespace nmk_seh

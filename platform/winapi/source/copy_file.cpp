#include <filesystem/copy_file.h>
#include <winapi/copy_file.h>
#include <winapi/last_error.h>

#include <cerrno>

#include "failure.h"

namespace {

// The caller's routine and its flag for cancelling.
class Watcher {
  public:
    Watcher(LPPROGRESS_ROUTINE routine, LPVOID data, LPBOOL cancel)
        : m_routine(routine), m_data(data), m_cancel(cancel) {}

    bool watches() const { return m_routine != nullptr || m_cancel != nullptr; }

    // False when the copy is to end.
    bool operator()(std::int64_t total, std::int64_t transferred) {
        const DWORD wish = m_routine == nullptr ? PROGRESS_CONTINUE : call(total, transferred);
        if (wish == PROGRESS_QUIET) m_routine = nullptr;
        return (wish == PROGRESS_CONTINUE || wish == PROGRESS_QUIET) &&
               (m_cancel == nullptr || !is_set(m_cancel));
    }

  private:
    DWORD call(std::int64_t total, std::int64_t transferred) const {
        const DWORD reason = transferred == 0 ? CALLBACK_STREAM_SWITCH : CALLBACK_CHUNK_FINISHED;
        return m_routine(number(total), number(transferred), number(total), number(transferred), 1,
                         reason, nullptr, nullptr, m_data);
    }

    // Another thread may set the flag.
    static bool is_set(LPBOOL flag) { return __atomic_load_n(flag, __ATOMIC_RELAXED) != FALSE; }

    static LARGE_INTEGER number(std::int64_t value) {
        LARGE_INTEGER large;
        large.QuadPart = value;
        return large;
    }

    LPPROGRESS_ROUTINE m_routine;
    LPVOID m_data;
    LPBOOL m_cancel;
};

BOOL fail_to_copy(const nmk_filesystem::CopyResult& result, LPCSTR source, LPCSTR target) {
    switch (result.error_number) {
        case EEXIST:
            return winapi::fail_with(ERROR_FILE_EXISTS);
        case ENODATA:
            return winapi::fail_with(ERROR_HANDLE_EOF);
        case ECANCELED:
            return winapi::fail_with(ERROR_REQUEST_ABORTED);
        default:
            return winapi::fail(result.error_number, result.concerns_target ? target : source);
    }
}

}  // namespace

BOOL CopyFileExA(LPCSTR source, LPCSTR target, LPPROGRESS_ROUTINE routine, LPVOID data,
                 LPBOOL cancel, DWORD flags) {
    if (winapi::is_nothing(source) || winapi::is_nothing(target)) {
        return winapi::fail(ENOENT, "");
    }
    if (const int fault = winapi::injected_fault("CopyFileExA", source); fault != 0) {
        return winapi::fail(fault, source);
    }
    nmk_filesystem::CopySettings settings;
    if ((flags & COPY_FILE_FAIL_IF_EXISTS) != 0) {
        settings.existing = nmk_filesystem::SafeFile::Existing::kept;
    }
    const Watcher watcher(routine, data, cancel);
    if (watcher.watches()) settings.watch = watcher;
    const auto result = nmk_filesystem::copy_file({AT_FDCWD, source}, {AT_FDCWD, target}, settings);
    return result.error_number == 0 ? TRUE : fail_to_copy(result, source, target);
}

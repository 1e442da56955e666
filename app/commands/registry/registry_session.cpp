// registry_session: the lock that every session on the registry holds.

#include "commands/registry/registry_session.h"

#include <winapi/configuration_directory.h>
#include <winapi/last_error.h>
#include <winapi/mutexes.h>
#include <winapi/processes.h>

#include "text/number_format.h"

namespace nmk_registry {

namespace {

constexpr const char* mutex_name = "com.norvex.registry";
constexpr double milliseconds_in_a_second = 1000.0;

}  // namespace

Session::Session(double seconds) : m_mutex(CreateMutexA(nullptr, FALSE, mutex_name)) {
    const DWORD waited =
        m_mutex == nullptr
            ? WAIT_FAILED
            : WaitForSingleObject(m_mutex, static_cast<DWORD>(seconds * milliseconds_in_a_second));
    if (waited == WAIT_TIMEOUT) {
        m_is_busy = true;
        m_problem = "another session holds the lock of the registry; waited " +
                    nmk_text::short_number(seconds, 3) + " s, --wait SECONDS waits longer";
    } else if (waited == WAIT_FAILED) {
        m_problem = winapi::configuration_directory() + ": the lock of the registry cannot be " +
                    "taken (error " + std::to_string(GetLastError()) +
                    "); expected a directory that may be written";
    }
}

Session::~Session() {
    if (m_problem.empty()) ReleaseMutex(m_mutex);
    if (m_mutex != nullptr) CloseHandle(m_mutex);
}

}  // namespace nmk_registry

// Named mutexes: a lock file for each name, in the directory "locks" of the configuration
// directory.
//
// Whoever has a handle shares the lock on the part `existence`; nobody having it means that the
// mutex does not exist. The owner has the lock on `ownership`, through a description of its own
// that it opened to wait, and sets the mark; to release it is to clear the mark and close the file.
// A mark that is found set is that of an owner that ended. Creating a handle happens under
// `creation`, one at a time.
#include <winapi/configuration_directory.h>
#include <winapi/last_error.h>
#include <winapi/mutexes.h>
#include <winapi/processes.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "failure.h"
#include "handle_table.h"
#include "lock_file.h"
#include "make_directories.h"
#include "registry_store.h"

namespace {

using winapi::LockFile;
using Clock = std::chrono::steady_clock;

// A wait that is limited asks again after so long, first and at most.
constexpr std::chrono::microseconds min_pause{200};
constexpr std::chrono::microseconds max_pause{5000};

// A mutex that a thread owns.
struct HeldMutex {
    std::string file_name;
    int count;  // of waits that are not released yet
    std::unique_ptr<LockFile> file;
};

using HeldMutexes = std::vector<HeldMutex>;

// The mutexes of this thread. The pointer is null after the thread's own objects are destroyed.
constinit thread_local HeldMutexes* held_mutexes = nullptr;

struct HeldMutexesOwner {
    HeldMutexes mutexes;
    HeldMutexesOwner() { held_mutexes = &mutexes; }
    // Files that are closed here keep their marks: their mutexes are abandoned.
    ~HeldMutexesOwner() { held_mutexes = nullptr; }
};

void make_held_mutexes() { static thread_local const HeldMutexesOwner owner; }

// Null if this thread does not own it. What a parent owned is not owned after a fork.
HeldMutex* find_held(const std::string& file_name) {
    if (held_mutexes == nullptr) return nullptr;
    std::erase_if(*held_mutexes, [](const HeldMutex& held) { return !held.file->is_open(); });
    const auto found = std::ranges::find(*held_mutexes, file_name, &HeldMutex::file_name);
    return found == held_mutexes->end() ? nullptr : &*found;
}

// 0, EAGAIN after so many milliseconds, or another errno.
int lock_within(LockFile& file, DWORD milliseconds, Clock::time_point start) {
    if (milliseconds == INFINITE) return file.lock(LockFile::Part::ownership);
    const auto end = start + std::chrono::milliseconds(milliseconds);
    auto pause = min_pause;
    int error_number = file.try_lock(LockFile::Part::ownership);
    while (error_number == EAGAIN && Clock::now() < end) {
        std::this_thread::sleep_until(std::min<Clock::time_point>(end, Clock::now() + pause));
        pause = std::min(2 * pause, max_pause);
        error_number = file.try_lock(LockFile::Part::ownership);
    }
    return error_number;
}

class NamedMutex : public winapi::HandleObject {
  public:
    explicit NamedMutex(std::string file_name) : m_file_name(std::move(file_name)) {}

    // 0 or errno; `is_new` becomes true if the mutex did not exist.
    int create(bool own_if_new, bool& is_new) {
        int error_number = m_existence.open(m_file_name);
        if (error_number == 0) error_number = m_existence.lock(LockFile::Part::creation);
        if (error_number != 0) return error_number;
        is_new = m_existence.try_lock(LockFile::Part::existence) == 0;
        if (is_new && m_existence.is_marked()) m_existence.mark(false);
        error_number = m_existence.try_share(LockFile::Part::existence);
        if (error_number == 0 && is_new && own_if_new && wait(INFINITE) == WAIT_FAILED) {
            error_number = errno;
        }
        m_existence.unlock(LockFile::Part::creation);
        return error_number;
    }

    DWORD wait(DWORD milliseconds) override {
        if (HeldMutex* const held = find_held(m_file_name)) {
            ++held->count;
            return WAIT_OBJECT_0;
        }
        if (held_mutexes == nullptr) make_held_mutexes();
        if (held_mutexes == nullptr) {  // the thread is ending
            winapi::fail_with(ERROR_INVALID_HANDLE);
            return WAIT_FAILED;
        }
        auto file = std::make_unique<LockFile>();
        const int error_number = take(*file, milliseconds);
        if (error_number == EAGAIN) return WAIT_TIMEOUT;
        if (error_number != 0) {
            winapi::fail(error_number, m_file_name.c_str());
            return WAIT_FAILED;
        }
        const bool is_abandoned = file->is_marked();
        file->mark(true);
        held_mutexes->push_back({m_file_name, 1, std::move(file)});
        return is_abandoned ? WAIT_ABANDONED : WAIT_OBJECT_0;
    }

    BOOL release() {
        HeldMutex* const held = find_held(m_file_name);
        if (held == nullptr) return winapi::fail_with(ERROR_NOT_OWNER);
        if (--held->count > 0) return TRUE;
        winapi::RegistryStore::the_store().flush();
        held->file->mark(false);
        held_mutexes->erase(held_mutexes->begin() + (held - held_mutexes->data()));
        return TRUE;
    }

  private:
    // A handle that came through a fork joins again; 0 or errno.
    int join() {
        bool is_new = false;
        return m_existence.is_open() ? 0 : create(false, is_new);
    }

    // Opens the file and locks it, once more if it was deleted meanwhile.
    int take(LockFile& file, DWORD milliseconds) {
        const auto start = Clock::now();
        int error_number = join();
        bool is_named = false;
        while (error_number == 0 && !is_named) {
            error_number = file.open(m_file_name);
            if (error_number == 0) error_number = lock_within(file, milliseconds, start);
            is_named = file.is_still_named(m_file_name);
        }
        return error_number;
    }

    const std::string m_file_name;
    LockFile m_existence;
};

constexpr std::string_view local_prefix = "Local\\";
constexpr std::string_view global_prefix = "Global\\";

bool is_plain(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' ||
           c == '_' || c == '.';
}

// The name as that of a file: other bytes, and a dot in front, as "%" and two digits.
std::string file_name_of(std::string_view name) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string file_name;
    for (const char c : name) {
        if (is_plain(c) && !(c == '.' && file_name.empty())) {
            file_name += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            file_name += {'%', digits[byte >> 4], digits[byte & 15]};
        }
    }
    return file_name;
}

// The name without its prefix; 0 or a last error.
DWORD check_name(LPCSTR name, std::string_view& plain_name) {
    if (winapi::is_nothing(name)) return ERROR_INVALID_PARAMETER;
    plain_name = name;
    if (plain_name.size() >= MAX_PATH) return ERROR_FILENAME_EXCED_RANGE;
    for (const std::string_view prefix : {local_prefix, global_prefix}) {
        if (plain_name.starts_with(prefix)) {
            plain_name.remove_prefix(prefix.size());
            break;
        }
    }
    if (plain_name.empty()) return ERROR_INVALID_PARAMETER;
    return plain_name.find('\\') == plain_name.npos ? 0 : ERROR_PATH_NOT_FOUND;
}

HANDLE fail_to_create(int error_number, const std::string& name) {
    winapi::fail(error_number, name.c_str());
    return nullptr;
}

}  // namespace

HANDLE CreateMutexA(const void* security, BOOL initial_owner, LPCSTR name) {
    std::string_view plain_name;
    const DWORD reason =
        security != nullptr ? ERROR_INVALID_PARAMETER : check_name(name, plain_name);
    if (reason != 0) {
        winapi::fail_with(reason);
        return nullptr;
    }
    const std::string directory = winapi::configuration_directory();
    if (directory.empty()) return fail_to_create(ENOENT, directory);
    const std::string locks = directory + "/locks";
    const std::string file_name = locks + "/" + file_name_of(plain_name);
    const auto mutex = std::make_shared<NamedMutex>(file_name);
    bool is_new = false;
    int error_number = mutex->create(initial_owner != FALSE, is_new);
    if (error_number == ENOENT) {
        error_number = winapi::make_directories(locks);
        if (error_number != 0) return fail_to_create(error_number, locks);
        error_number = mutex->create(initial_owner != FALSE, is_new);
    }
    if (error_number != 0) return fail_to_create(error_number, file_name);
    SetLastError(is_new ? ERROR_SUCCESS : ERROR_ALREADY_EXISTS);
    return winapi::open_handle(mutex);
}

BOOL ReleaseMutex(HANDLE mutex) {
    const auto named = winapi::object_of_kind<NamedMutex>(mutex);
    return named == nullptr ? winapi::fail_with(ERROR_INVALID_HANDLE) : named->release();
}

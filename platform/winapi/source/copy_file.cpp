#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>
#include <winapi/copy_file.h>
#include <winapi/last_error.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string>

#include "attributes_of.h"
#include "copy_target.h"
#include "failure.h"

namespace {

// Bytes between two looks at the caller's wish to cancel, and between two calls of its routine.
constexpr std::int64_t watched_part = 1 << 20;
// Bytes handed to the kernel at once when nobody watches.
constexpr std::int64_t unwatched_part = 1 << 28;
// Bytes that go through our own memory where the kernel cannot copy by itself. Up to that size a
// read and a write are also quicker than asking it.
constexpr std::int64_t buffered_part = 1 << 16;

class Descriptor {
  public:
    explicit Descriptor(int number) : m_number(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (m_number >= 0) {
            ::close(m_number);
        }
    }
    int number() const { return m_number; }

  private:
    int m_number;
};

// The caller's routine and its flag for cancelling.
class Watcher {
  public:
    Watcher(LPPROGRESS_ROUTINE routine, LPVOID data, LPBOOL cancel, std::int64_t total)
        : m_routine(routine), m_data(data), m_cancel(cancel), m_total(total) {}

    bool watches() const { return m_routine != nullptr || m_cancel != nullptr; }

    // What the caller wants now: PROGRESS_CONTINUE, PROGRESS_CANCEL or PROGRESS_STOP.
    DWORD ask(std::int64_t transferred, DWORD reason) {
        DWORD answer = PROGRESS_CONTINUE;
        if (m_routine != nullptr) {
            answer = m_routine(number(m_total), number(transferred), number(m_total),
                               number(transferred), 1, reason, nullptr, nullptr, m_data);
        }
        if (answer == PROGRESS_QUIET) {
            m_routine = nullptr;
            answer = PROGRESS_CONTINUE;
        }
        if (answer == PROGRESS_CONTINUE && m_cancel != nullptr && is_set(m_cancel)) {
            answer = PROGRESS_CANCEL;
        }
        return answer;
    }

  private:
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
    std::int64_t m_total;
};

// Moves bytes from one open file to another: by the kernel where it can, through memory elsewhere.
class Pump {
  public:
    Pump(int from, int to, std::int64_t total)
        : m_from(from), m_to(to), m_by_kernel(total > buffered_part) {}

    // Moves up to that many: how many, 0 at the end of the source, -1 with errno.
    std::int64_t move(std::int64_t most) {
        if (m_by_kernel) {
            const std::int64_t moved = move_by_kernel(most);
            // Nothing at once may mean a file that only a read brings to life.
            if (moved > 0 || (moved == 0 && m_moved_by_kernel) || (moved < 0 && !cannot(errno))) {
                m_moved_by_kernel = true;
                return moved;
            }
            m_by_kernel = false;
        }
        return move_through_memory(std::min(most, buffered_part));
    }

  private:
    static bool cannot(int error_number) {
        return error_number == EXDEV || error_number == EINVAL || error_number == ENOSYS ||
               error_number == EOPNOTSUPP || error_number == EPERM;
    }

    std::int64_t move_by_kernel(std::int64_t most) {
        std::int64_t moved;
        do {
            moved = ask_kernel(most);
        } while (moved < 0 && errno == EINTR);
        return moved;
    }

    std::int64_t ask_kernel(std::int64_t most) {
        if (const int fault = winapi::injected_fault("copy_file_range", ""); fault != 0) {
            errno = fault;
            return -1;
        }
        return ::copy_file_range(m_from, nullptr, m_to, nullptr, static_cast<std::size_t>(most), 0);
    }

    std::int64_t move_through_memory(std::int64_t most) {
        if (!m_memory) {
            m_memory = std::make_unique_for_overwrite<char[]>(buffered_part);
        }
        ssize_t length;
        do {
            length = ::read(m_from, m_memory.get(), static_cast<std::size_t>(most));
        } while (length < 0 && errno == EINTR);
        for (ssize_t written = 0; written < length;) {
            const ssize_t step =
                ::write(m_to, m_memory.get() + written, static_cast<std::size_t>(length - written));
            if (step < 0 && errno != EINTR) {
                return -1;
            }
            written += std::max<ssize_t>(step, 0);
        }
        return length;
    }

    int m_from;
    int m_to;
    bool m_by_kernel;
    bool m_moved_by_kernel = false;
    std::unique_ptr<char[]> m_memory;
};

// How the contents came across: a last error, and whether what is there is to be kept.
struct Outcome {
    DWORD reason;
    bool keep;
};

Outcome aborted(DWORD answer) { return {ERROR_REQUEST_ABORTED, answer == PROGRESS_STOP}; }

Outcome failed(int error_number, const char* name) {
    return {winapi::last_error_of(error_number, name), false};
}

// Moves `total` bytes, or all there are where the total is 0: files of the kernel tell no length.
Outcome move_contents(int from, int to, std::int64_t total, Watcher& watcher, const char* source) {
    if (const DWORD answer = watcher.ask(0, CALLBACK_STREAM_SWITCH); answer != PROGRESS_CONTINUE) {
        return aborted(answer);
    }
    const std::int64_t part = watcher.watches() ? watched_part : unwatched_part;
    Pump pump(from, to, total);
    std::int64_t transferred = 0;
    while (total == 0 || transferred < total) {
        if (const int fault = winapi::injected_fault("copy part", source); fault != 0) {
            return failed(fault, source);
        }
        const auto moved = pump.move(total == 0 ? part : std::min(part, total - transferred));
        if (moved < 0) {
            return failed(errno, source);
        }
        if (moved == 0) {
            break;
        }
        transferred += moved;
        const DWORD answer = watcher.ask(transferred, CALLBACK_CHUNK_FINISHED);
        if (answer != PROGRESS_CONTINUE) {
            return aborted(answer);
        }
    }
    return transferred < total ? Outcome{ERROR_HANDLE_EOF, false} : Outcome{ERROR_SUCCESS, true};
}

// What is known of the target before it is written.
struct Place {
    std::string name;  // without links at its end
    bool exists = false;
    struct stat record = {};
};

// Looks at the target: 0, or the last error that forbids the copy.
DWORD look_at_target(const char* target, const struct stat& source, DWORD flags, Place& place) {
    place.name = target;
    struct stat link;
    if (::lstat(target, &link) != 0) {
        // A missing folder is told when the file is made; all else here.
        place.exists = false;
        return errno == ENOENT ? ERROR_SUCCESS : winapi::last_error_of(errno, target);
    }
    place.exists = true;
    if ((flags & COPY_FILE_FAIL_IF_EXISTS) != 0) {
        return ERROR_FILE_EXISTS;
    }
    place.record = link;
    if (S_ISLNK(link.st_mode)) {
        const std::unique_ptr<char, decltype(&::free)> whole(::realpath(target, nullptr), &::free);
        if (!whole || ::stat(whole.get(), &place.record) != 0) {
            return winapi::last_error_of(errno, target);
        }
        place.name = whole.get();
    }
    if (place.record.st_ino == source.st_ino && place.record.st_dev == source.st_dev) {
        return ERROR_SHARING_VIOLATION;
    }
    const bool writable = S_ISREG(place.record.st_mode) && !winapi::is_read_only(place.record) &&
                          ::faccessat(AT_FDCWD, place.name.c_str(), W_OK, AT_EACCESS) == 0;
    return writable ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

// Makes the file to write to; 0 or the last error.
DWORD open_target(const char* target, const struct stat& source, DWORD flags,
                  winapi::CopyTarget& written) {
    // Somebody else may make the target between the look and the making: then look again.
    for (int i = 0; i < 3; ++i) {
        Place place;
        const DWORD refused = look_at_target(target, source, flags, place);
        if (refused != ERROR_SUCCESS) {
            return refused;
        }
        const mode_t rights = source.st_mode & 0777;
        const int error_number = place.exists
                                     ? written.make_beside(place.name, place.record, rights)
                                     : written.make(place.name, rights);
        if (error_number == ENOENT) {
            return ERROR_PATH_NOT_FOUND;
        }
        if (error_number != EEXIST) {
            return error_number == 0 ? ERROR_SUCCESS : winapi::last_error_of(error_number, target);
        }
    }
    return ERROR_SHARING_VIOLATION;
}

// Times only: the rights were given when the file was made. A disk that keeps no times is no
// reason to fail.
void copy_times(const struct stat& source, int target) {
    const timespec times[2] = {source.st_atim, source.st_mtim};
    [[maybe_unused]] const int kept = ::futimens(target, times);
}

BOOL copy_open_file(int from, const char* source, const char* target, Watcher& watcher,
                    const struct stat& record, DWORD flags) {
    winapi::CopyTarget written;
    if (const DWORD refused = open_target(target, record, flags, written); refused != 0) {
        return winapi::fail_with(refused);
    }
    const Outcome outcome =
        move_contents(from, written.descriptor(), record.st_size, watcher, source);
    if (outcome.keep) {
        copy_times(record, written.descriptor());
        if (const int error_number = written.keep(); error_number != 0) {
            return winapi::fail(error_number, target);
        }
    }
    return outcome.reason == ERROR_SUCCESS ? TRUE : winapi::fail_with(outcome.reason);
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
    // Without waiting: a pipe that nobody writes to must not hold the copy up.
    const Descriptor from(::open(source, O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat record;
    if (from.number() < 0 || ::fstat(from.number(), &record) != 0) {
        return winapi::fail(errno == ENXIO ? EACCES : errno, source);
    }
    if (!S_ISREG(record.st_mode)) {
        return winapi::fail(EACCES, source);
    }
    Watcher watcher(routine, data, cancel, record.st_size);
    return copy_open_file(from.number(), source, target, watcher, record, flags);
}

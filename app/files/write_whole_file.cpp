// write_whole_file.cpp: see write_whole_file.h.

#include "files/write_whole_file.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <vector>

namespace nmk_files {

namespace {

/// Holds back the signals that would end the process between making a file and naming it.
class SignalsWait {
  public:
    SignalsWait() {
        sigset_t ending;
        sigemptyset(&ending);
        for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGALRM, SIGUSR1, SIGUSR2}) {
            sigaddset(&ending, number);
        }
        pthread_sigmask(SIG_BLOCK, &ending, &m_before);
    }
    SignalsWait(const SignalsWait&) = delete;
    SignalsWait& operator=(const SignalsWait&) = delete;
    ~SignalsWait() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

  private:
    sigset_t m_before{};
};

std::string problem(const char* what) { return std::string(what) + ": " + std::strerror(errno); }

/// Writes all bytes; false with errno set where that fails.
bool write_all(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count < 0 && errno != EINTR) {
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return true;
}

/// A link's file where it names one that exists; otherwise the name itself.
std::string file_behind(const std::string& file_name) {
    const std::unique_ptr<char, decltype(&std::free)> found(::realpath(file_name.c_str(), nullptr),
                                                            &std::free);
    return found ? std::string(found.get()) : file_name;
}

/// Gives the new file the owner of the one it replaces, where the process may, and answers the
/// rights it is to have: those of that file, or those that the process gives new files.
mode_t take_over(int descriptor, const struct stat* replaced) {
    if (replaced != nullptr) {
        const bool same_owner = ::fchown(descriptor, replaced->st_uid, replaced->st_gid) == 0;
        return replaced->st_mode & (same_owner ? 07777U : 0777U);
    }
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666U & ~mask;
}

std::optional<std::string> write_to_device(const std::string& name, std::string_view text) {
    const int descriptor = ::open(name.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) {
        return problem("cannot be opened for writing");
    }
    std::optional<std::string> result;
    if (!write_all(descriptor, text)) {
        result = problem("cannot be written");
    }
    if (::close(descriptor) != 0 && !result) {
        result = problem("cannot be written");
    }
    return result;
}

/// Fills the open file, flushes and closes it.
std::optional<std::string> fill(int descriptor, std::string_view text, mode_t rights) {
    std::optional<std::string> result;
    struct stat written {};
    if (!write_all(descriptor, text) || ::fchmod(descriptor, rights) != 0 ||
        ::fsync(descriptor) != 0 || ::fstat(descriptor, &written) != 0) {
        result = problem("cannot be written");
    } else if (written.st_size != static_cast<off_t>(text.size())) {
        result = "cannot be written: not all bytes arrived";
    }
    if (::close(descriptor) != 0 && !result) {
        result = problem("cannot be written");
    }
    return result;
}

/// Makes the name lasting; a folder that cannot be flushed does no harm.
void flush_folder(const std::string& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

std::optional<std::string> write_beside(const std::string& name, std::string_view text,
                                        const struct stat* replaced) {
    std::string folder = std::filesystem::path(name).parent_path().string();
    folder = folder.empty() ? "." : folder;
    std::string beside = folder + "/.nmk-XXXXXX";
    const SignalsWait signals_wait;
    const int descriptor = ::mkostemp(beside.data(), O_CLOEXEC);
    if (descriptor < 0) {
        return problem("no file can be made in its folder");
    }
    std::optional<std::string> result = fill(descriptor, text, take_over(descriptor, replaced));
    if (!result && ::rename(beside.c_str(), name.c_str()) != 0) {
        result = problem("cannot be put in place");
    }
    if (result) {
        ::unlink(beside.c_str());
    } else {
        flush_folder(folder);
    }
    return result;
}

}  // namespace

std::optional<std::string> write_whole_file(const std::string& file_name, std::string_view text) {
    const std::string name = file_behind(file_name);
    struct stat facts {};
    const bool exists = ::stat(name.c_str(), &facts) == 0;
    if (exists && S_ISDIR(facts.st_mode)) {
        return "is a directory; expected the name of a file";
    }
    if (exists && !S_ISREG(facts.st_mode)) {
        return write_to_device(name, text);
    }
    if (exists && ::access(name.c_str(), W_OK) != 0) {
        return problem("cannot be written");
    }
    return write_beside(name, text, exists ? &facts : nullptr);
}

}  // namespace nmk_files

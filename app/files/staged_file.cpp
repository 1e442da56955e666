// staged_file: a file that is complete before it gets its name, and can be taken back.

#include "files/staged_file.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <utility>

namespace nmk_files {

namespace {

std::string problem(const char* what) { return std::string(what) + ": " + std::strerror(errno); }

/// Writes all bytes; false, with errno set, if that fails.
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

/// The target of a symlink if it exists; otherwise the name itself.
std::string target_of(const std::string& file_name) {
    const std::unique_ptr<char, decltype(&std::free)> found(::realpath(file_name.c_str(), nullptr),
                                                            &std::free);
    return found ? std::string(found.get()) : file_name;
}

/// Gives the new file the owner of the one it replaces, if the process may, and returns the mode
/// for it: that of the replaced file, or the one that the process gives new files.
mode_t take_over(int descriptor, const struct stat* replaced) {
    if (replaced != nullptr) {
        const bool same_owner = ::fchown(descriptor, replaced->st_uid, replaced->st_gid) == 0;
        return replaced->st_mode & (same_owner ? 07777U : 0777U);
    }
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666U & ~mask;
}

/// Returns the problem, or "".
std::string write_to_device(const std::string& name, std::string_view text) {
    const int descriptor = ::open(name.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) {
        return problem("cannot be opened for writing");
    }
    std::string result;
    if (!write_all(descriptor, text)) {
        result = problem("cannot be written");
    }
    if (::close(descriptor) != 0 && result.empty()) {
        result = problem("cannot be written");
    }
    return result;
}

/// Fills the open file, flushes and closes it; returns the problem, or "".
std::string fill(int descriptor, std::string_view text, mode_t mode) {
    std::string result;
    struct stat written {};
    if (!write_all(descriptor, text) || ::fchmod(descriptor, mode) != 0 ||
        ::fsync(descriptor) != 0 || ::fstat(descriptor, &written) != 0) {
        result = problem("cannot be written");
    } else if (written.st_size != static_cast<off_t>(text.size())) {
        result = "cannot be written: the file is shorter than its text";
    }
    if (::close(descriptor) != 0 && result.empty()) {
        result = problem("cannot be written");
    }
    return result;
}

std::string directory_of(const std::string& name) {
    const std::string directory = std::filesystem::path(name).parent_path().string();
    return directory.empty() ? "." : directory;
}

/// Flushes the names in a directory to the disk; an error is ignored, since not every file system
/// can.
void flush_directory(const std::string& directory) {
    const int descriptor = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

}  // namespace

SignalBlock::SignalBlock() {
    sigset_t ending;
    sigemptyset(&ending);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGALRM, SIGUSR1, SIGUSR2}) {
        sigaddset(&ending, number);
    }
    pthread_sigmask(SIG_BLOCK, &ending, &m_before);
}

SignalBlock::~SignalBlock() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

nmk_text::Result<StagedFile> StagedFile::stage(const std::string& file_name,
                                               std::string_view text) {
    const auto failed = [&](std::string message) {
        return nmk_text::Error{file_name, 0, std::move(message)};
    };
    StagedFile file;
    file.m_file_name = file_name;
    file.m_target = target_of(file_name);
    file.m_text = text;
    struct stat facts {};
    const bool is_symlink = ::lstat(file.m_target.c_str(), &facts) == 0 && S_ISLNK(facts.st_mode);
    file.m_replaces_file = ::stat(file.m_target.c_str(), &facts) == 0;
    if (is_symlink && !file.m_replaces_file) {
        return failed(std::string("is a symlink whose target cannot be found (") +
                      std::strerror(errno) + "); expected an existing file or a new name");
    }
    if (file.m_replaces_file && S_ISDIR(facts.st_mode)) {
        return failed("is a directory; expected the name of a file");
    }
    file.m_is_device = file.m_replaces_file && !S_ISREG(facts.st_mode);
    if (file.m_is_device) {
        return file;
    }
    if (file.m_replaces_file && ::access(file.m_target.c_str(), W_OK) != 0) {
        return failed(problem("cannot be written"));
    }
    std::string temporary = directory_of(file.m_target) + "/.nmk-XXXXXX";
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0) {
        return failed(problem("no file can be created in its directory"));
    }
    file.m_temporary = temporary;
    const mode_t mode = take_over(descriptor, file.m_replaces_file ? &facts : nullptr);
    if (std::string message = fill(descriptor, text, mode); !message.empty()) {
        return failed(std::move(message));
    }
    return file;
}

StagedFile::StagedFile(StagedFile&& other) noexcept
    : m_file_name(std::move(other.m_file_name)),
      m_target(std::move(other.m_target)),
      m_temporary(std::exchange(other.m_temporary, {})),
      m_replaced(std::exchange(other.m_replaced, {})),
      m_text(other.m_text),
      m_is_device(other.m_is_device),
      m_replaces_file(other.m_replaces_file),
      m_is_in_place(std::exchange(other.m_is_in_place, false)) {}

StagedFile::~StagedFile() {
    for (const std::string* name : {&m_temporary, &m_replaced}) {
        if (!name->empty()) {
            ::unlink(name->c_str());
        }
    }
}

/// Gives the file that will be replaced a second name. On a file system without hard links the file
/// is renamed, and its own name is free for a moment.
bool StagedFile::keep_replaced() {
    std::string name = m_temporary + ".old";
    if (::link(m_target.c_str(), name.c_str()) == 0 ||
        ::rename(m_target.c_str(), name.c_str()) == 0) {
        m_replaced = std::move(name);
        return true;
    }
    return errno == ENOENT;  // removed meanwhile: nothing to keep
}

nmk_text::Result<void> StagedFile::put_in_place() {
    if (m_is_device) {
        std::string message = write_to_device(m_target, m_text);
        return message.empty() ? nmk_text::Result<void>()
                               : nmk_text::Error{m_file_name, 0, std::move(message)};
    }
    if ((m_replaces_file && !keep_replaced()) ||
        ::rename(m_temporary.c_str(), m_target.c_str()) != 0) {
        nmk_text::Error error{m_file_name, 0, problem("cannot be renamed from its temporary file")};
        take_back();
        return error;
    }
    m_temporary.clear();
    m_is_in_place = true;
    flush_directory(directory_of(m_target));
    return {};
}

void StagedFile::take_back() {
    if (!m_replaced.empty()) {
        if (::rename(m_replaced.c_str(), m_target.c_str()) == 0) {
            ::unlink(m_replaced.c_str());  // rename keeps both names if they are names of one file
        }
        m_replaced.clear();  // a file that cannot be restored keeps its second name
    } else if (m_is_in_place) {
        ::unlink(m_target.c_str());
    }
    m_is_in_place = false;
}

}  // namespace nmk_files

// staged_file: a file that is complete before it gets its name, and can be taken back.

#include "files/staged_file.h"

#include <fcntl.h>
#include <filesystem/random_number.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include "files/write_bytes.h"

namespace nmk_files {

namespace {

std::string problem(const char* what) { return std::string(what) + ": " + std::strerror(errno); }

/// The target of a symlink if it exists; otherwise the name itself.
std::string target_of(const std::string& file_name) {
    const std::unique_ptr<char, decltype(&std::free)> found(::realpath(file_name.c_str(), nullptr),
                                                            &std::free);
    return found ? std::string(found.get()) : file_name;
}

constexpr mode_t new_file_mode = 0666;  // less the umask
constexpr mode_t private_mode = 0600;   // until the mode of the replaced file is set

/// Gives the new file the owner of the one it replaces, if the process may, and its mode. Returns
/// an errno, or 0.
int take_over(nmk_filesystem::SafeFile& file, const struct stat& replaced) {
    const bool same_owner = file.set_owner(replaced.st_uid, replaced.st_gid) == 0;
    return file.set_mode(replaced.st_mode & (same_owner ? 07777U : 0777U));
}

/// Returns the problem, or "".
std::string write_to_device(const std::string& name, std::string_view text) {
    const int descriptor = ::open(name.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) {
        return problem("cannot be opened for writing");
    }
    std::string result;
    if (!write_bytes(descriptor, text)) {
        result = problem("cannot be written");
    }
    if (::close(descriptor) != 0 && result.empty()) {
        result = problem("cannot be written");
    }
    return result;
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
    file.m_temporary = std::make_unique<nmk_filesystem::SafeFile>();
    nmk_filesystem::SafeFile& temporary = *file.m_temporary;
    errno = temporary.create(file.m_target, file.m_replaces_file ? private_mode : new_file_mode);
    if (errno != 0) {
        return failed(problem("no file can be created in its directory"));
    }
    errno = file.m_replaces_file ? take_over(temporary, facts) : 0;
    if (errno == 0) {
        errno = temporary.write(text);
    }
    if (errno == 0) {
        errno = temporary.flush();
    }
    if (errno != 0) {
        return failed(problem("cannot be written"));
    }
    return file;
}

StagedFile::StagedFile(StagedFile&& other) noexcept
    : m_file_name(std::move(other.m_file_name)),
      m_target(std::move(other.m_target)),
      m_temporary(std::move(other.m_temporary)),
      m_replaced(std::exchange(other.m_replaced, {})),
      m_text(other.m_text),
      m_is_device(other.m_is_device),
      m_replaces_file(other.m_replaces_file),
      m_is_in_place(std::exchange(other.m_is_in_place, false)) {}

StagedFile::~StagedFile() {
    if (!m_replaced.empty()) {
        ::unlink(m_replaced.c_str());
    }
}

/// Gives the file that will be replaced a second name. On a file system without hard links the file
/// is renamed, and its own name is free for a moment.
bool StagedFile::keep_replaced() {
    std::uint64_t random = 0;
    if (!nmk_filesystem::random_number(random)) {
        return false;
    }
    std::string name = m_target + ".nmk-" + std::to_string(random);
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
    int error_number = m_replaces_file && !keep_replaced() ? errno : 0;
    if (error_number == 0) {
        error_number = m_temporary->commit(nmk_filesystem::SafeFile::Existing::replaced);
    }
    if (error_number != 0) {
        errno = error_number;
        nmk_text::Error error{m_file_name, 0, problem("cannot be renamed from its temporary file")};
        take_back();
        return error;
    }
    m_is_in_place = true;
    m_temporary->flush_directory();
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

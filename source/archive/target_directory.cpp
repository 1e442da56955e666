#include "target_directory.h"

#include <fcntl.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace nmk_archive {

namespace {

constexpr mode_t mode_of_files = 0666;  // less the umask

}  // namespace

bool stays_below(std::string_view name) {
    if (name.starts_with('/') || name.find('\\') != name.npos) return false;
    if (name.size() > 1 && name[1] == ':') return false;
    for (std::size_t begin = 0; begin <= name.size();) {
        const std::size_t end = std::min(name.find('/', begin), name.size());
        if (name.substr(begin, end - begin) == "..") return false;
        begin = end + 1;
    }
    return true;
}

int TargetDirectory::open_for(const utString& target) {
    if (target.is_empty() || target.view().ends_with('/') || target.view().ends_with('\\')) {
        return EISDIR;
    }
    const nmkFileDir file(target, nullptr);
    nmkFileDir parent = file;
    if (parent.up_one() != 0 && parent.exist() == 0) parent.mkdir();
    const std::string_view path = file.get().view();
    m_file_name = path.substr(path.rfind('/') + 1);
    const char* const top = path.starts_with('/') ? "/" : ".";
    const std::string directory = parent.get().is_null() ? top : parent.str();
    return m_directory.is_open() && directory == m_name ? 0 : open(directory);
}

int TargetDirectory::open(const std::string& directory) {
    m_directory.reset(::open(directory.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    m_name = directory;
    if (!m_directory.is_open()) return errno;
    nmk_filesystem::remove_leftovers(m_directory.number());
    return 0;
}

int ExtractedFile::create(const TargetDirectory& directory) {
    struct stat existing;
    const char* const name = directory.file_name().c_str();
    if (::fstatat(directory.descriptor(), name, &existing, AT_SYMLINK_NOFOLLOW) == 0 &&
        !S_ISLNK(existing.st_mode)) {
        if (S_ISDIR(existing.st_mode)) return EISDIR;
        if (!S_ISREG(existing.st_mode)) return EINVAL;
        if (::faccessat(directory.descriptor(), name, W_OK, AT_EACCESS) != 0) return errno;
    }
    return m_file.create_in(directory.descriptor(), directory.file_name(), mode_of_files);
}

std::streamsize ExtractedFile::xsputn(const char* bytes, std::streamsize count) {
    if (m_failure == 0) m_failure = m_file.write({bytes, static_cast<std::size_t>(count)});
    return m_failure == 0 ? count : 0;
}

ExtractedFile::int_type ExtractedFile::overflow(int_type character) {
    const char byte = traits_type::to_char_type(character);
    return xsputn(&byte, 1) == 1 ? character : traits_type::eof();
}

int ExtractedFile::commit() {
    // The archive still has the data, so nobody waits for the disk.
    m_file.skip_flush();
    if (m_failure == 0) m_failure = m_file.commit(nmk_filesystem::SafeFile::Existing::replaced);
    return m_failure;
}

}  // namespace nmk_archive

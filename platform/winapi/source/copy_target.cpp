#include "copy_target.h"

#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

#include <cerrno>
#include <cinttypes>
#include <utility>

#include "random_number.h"

namespace {

// Tries to find a free name beside; each has 64 bits of its own.
constexpr int tries = 10;

std::string name_beside(const std::string& name, std::uint64_t random) {
    char part[48];
    std::snprintf(part, sizeof part, ".nmk_copy_%016" PRIx64, random);
    const auto slash = name.rfind('/');
    return (slash == name.npos ? "" : name.substr(0, slash + 1)) + part;
}

}  // namespace

namespace winapi {

CopyTarget::~CopyTarget() {
    if (m_stands) {
        discard();
    }
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

int CopyTarget::make(const std::string& name, mode_t rights) {
    // Neither an existing file nor a link, dead or not, is taken.
    m_descriptor =
        ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, rights);
    if (m_descriptor < 0) {
        return errno;
    }
    m_stands = true;
    m_written = name;
    m_name = name;
    return 0;
}

int CopyTarget::make_beside(const std::string& name, const struct stat& replaced, mode_t rights) {
    int error_number = EEXIST;
    for (int i = 0; i < tries && error_number == EEXIST; ++i) {
        std::uint64_t random;
        error_number = random_number(random) ? make(name_beside(name, random), rights) : errno;
    }
    if (error_number != 0) {
        return error_number;
    }
    m_name = name;
    // Where that is not allowed it is the process's own file, as a new one would be.
    [[maybe_unused]] const int kept = ::fchown(m_descriptor, replaced.st_uid, replaced.st_gid);
    return 0;
}

int CopyTarget::keep() {
    int error_number = close();
    if (error_number == 0 && m_written != m_name &&
        ::rename(m_written.c_str(), m_name.c_str()) != 0) {
        error_number = errno;
    }
    if (error_number != 0) {
        discard();
    }
    m_stands = false;
    return error_number;
}

// Some disks tell only here that the bytes did not fit.
int CopyTarget::close() {
    const int descriptor = std::exchange(m_descriptor, -1);
    return ::close(descriptor) == 0 || errno == EINTR ? 0 : errno;
}

// Removes the file, unless another process has put its own under that name meanwhile.
void CopyTarget::discard() {
    struct stat ours, there;
    const bool known = m_descriptor >= 0 && ::fstat(m_descriptor, &ours) == 0;
    const bool another = known && ::lstat(m_written.c_str(), &there) == 0 &&
                         (ours.st_ino != there.st_ino || ours.st_dev != there.st_dev);
    if (!another) {
        ::unlink(m_written.c_str());
    }
    m_stands = false;
}

}  // namespace winapi

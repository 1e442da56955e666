#include <filesystem/descriptor.h>

#include <cerrno>

namespace nmk_filesystem {

void Descriptor::reset(int number) {
    if (m_number >= 0) {
        const int error_number = errno;
        ::close(m_number);
        errno = error_number;
    }
    m_number = number;
}

}  // namespace nmk_filesystem

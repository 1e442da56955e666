#include <dirent.h>
#include <fcntl.h>
#include <filesystem/descriptor.h>
#include <filesystem/directory_listing.h>
#include <filesystem/faults.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

namespace nmk_filesystem {

namespace {

EntryKind kind_of(unsigned char type) {
    switch (type) {
        case DT_UNKNOWN:
            return EntryKind::unknown;
        case DT_REG:
            return EntryKind::file;
        case DT_DIR:
            return EntryKind::directory;
        case DT_LNK:
            return EntryKind::symlink;
        default:
            return EntryKind::other;
    }
}

bool is_dots(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

}  // namespace

int DirectoryListing::read(int directory, Filter filter) {
    if (const int fault = injected_fault("list directory", "."); fault != 0) return fail(fault);
    return read_stream(::openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC), filter);
}

int DirectoryListing::read(const char* directory) {
    if (const int fault = injected_fault("list directory", directory); fault != 0) {
        return fail(fault);
    }
    return read_stream(::open(directory, O_RDONLY | O_DIRECTORY | O_CLOEXEC), nullptr);
}

int DirectoryListing::fail(int error_number) {
    clear();
    return error_number;
}

int DirectoryListing::read_stream(int descriptor, Filter filter) {
    clear();
    if (descriptor < 0) return errno;
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::fdopendir(descriptor), &::closedir);
    if (!stream) {
        const Descriptor closed(descriptor);
        return errno;
    }
    errno = 0;
    while (const dirent* entry = ::readdir(stream.get())) {
        const bool is_wanted = filter == nullptr || filter(entry->d_name);
        if (!is_wanted || is_dots(entry->d_name)) continue;
        m_bytes += static_cast<char>(entry->d_type);
        m_starts.push_back(m_bytes.size());
        m_bytes.append(entry->d_name, std::strlen(entry->d_name) + 1);
    }
    const int error_number = errno;
    std::sort(m_starts.begin(), m_starts.end(), [this](std::size_t a, std::size_t b) {
        return std::strcmp(m_bytes.c_str() + a, m_bytes.c_str() + b) < 0;
    });
    return error_number;
}

DirectoryListing::Entry DirectoryListing::operator[](std::size_t index) const {
    const char* const name = m_bytes.c_str() + m_starts[index];
    return {name, kind_of(static_cast<unsigned char>(name[-1]))};
}

}  // namespace nmk_filesystem

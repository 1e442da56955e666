#include "ByteDevice.h"

#include <fcntl.h>
#include <mfc/CFile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace nmk_nmknmt {

namespace {

constexpr mode_t mode_of_new_files = 0666;  // less what the process's mask takes away

// Calls again where a signal came in between.
template <class Call>
auto uninterrupted(const Call& call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

class RegularFile : public ByteDevice {
  public:
    explicit RegularFile(int descriptor) noexcept : m_descriptor(descriptor) {}
    RegularFile(const RegularFile&) = delete;
    RegularFile& operator=(const RegularFile&) = delete;
    ~RegularFile() override { close_descriptor(); }

    std::size_t read(std::int64_t position, char* bytes, std::size_t count) override {
        std::size_t done = 0;
        while (done < count) {
            const ssize_t got = uninterrupted([&] {
                return ::pread(m_descriptor, bytes + done, count - done,
                               position + static_cast<std::int64_t>(done));
            });
            if (got <= 0) break;
            done += static_cast<std::size_t>(got);
        }
        return done;
    }

    bool write(std::int64_t position, const char* bytes, std::size_t count) override {
        std::size_t done = 0;
        while (done < count) {
            const ssize_t put = uninterrupted([&] {
                return ::pwrite(m_descriptor, bytes + done, count - done,
                                position + static_cast<std::int64_t>(done));
            });
            if (put <= 0) return false;
            done += static_cast<std::size_t>(put);
        }
        return true;
    }

    std::int64_t length() override {
        struct stat state {};
        return ::fstat(m_descriptor, &state) == 0 ? state.st_size : 0;
    }

    bool close() override { return close_descriptor(); }

  private:
    // A close that a signal interrupts has closed the descriptor all the same.
    bool close_descriptor() noexcept {
        const int descriptor = std::exchange(m_descriptor, -1);
        return descriptor < 0 || ::close(descriptor) == 0 || errno == EINTR;
    }

    int m_descriptor;
};

class FrameworkFile : public ByteDevice {
  public:
    explicit FrameworkFile(coPrf<CFile> file) noexcept : m_file(std::move(file)) {}

    std::size_t read(std::int64_t position, char* bytes, std::size_t count) override {
        std::size_t got = 0;
        try_it([&] {
            m_file->Seek(position, CFile::begin);
            got = m_file->Read(bytes, count);
        });
        return got;
    }

    bool write(std::int64_t position, const char* bytes, std::size_t count) override {
        return try_it([&] {
            m_file->Seek(position, CFile::begin);
            m_file->Write(bytes, count);
        });
    }

    std::int64_t length() override {
        std::int64_t bytes = 0;
        try_it([&] { bytes = static_cast<std::int64_t>(m_file->GetLength()); });
        return bytes;
    }

    // The file itself is closed by those who share it.
    bool close() override {
        return try_it([&] { m_file->Flush(); });
    }

  private:
    template <class Work>
    static bool try_it(const Work& work) {
        try {
            work();
            return true;
        } catch (const CFileException&) {
            return false;
        }
    }

    coPrf<CFile> m_file;
};

int open_descriptor(const char* name, bool for_writing) {
    // Not blocking: opening a pipe would otherwise wait for its other end.
    const int access = for_writing ? O_RDWR | O_CREAT : O_RDONLY;
    return uninterrupted([&] {
        return ::open(name, access | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode_of_new_files);
    });
}

}  // namespace

std::unique_ptr<ByteDevice> open_regular_file(const char* name, bool for_writing) {
    if (name == nullptr) return nullptr;
    const int descriptor = open_descriptor(name, for_writing);
    if (descriptor < 0) return nullptr;
    auto file = std::make_unique<RegularFile>(descriptor);
    struct stat state {};
    if (::fstat(descriptor, &state) != 0 || !S_ISREG(state.st_mode)) return nullptr;
    // Emptied only once it is known to be a regular file.
    if (for_writing && ::ftruncate(descriptor, 0) != 0) return nullptr;
    return file;
}

std::unique_ptr<ByteDevice> device_of(const coPrf<CFile>& file) {
    return file ? std::make_unique<FrameworkFile>(file) : nullptr;
}

}  // namespace nmk_nmknmt

#include <nmknmt/nmkNMTFileMFC.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "ByteDevice.h"

namespace {

// Bytes that are read or written at once.
constexpr std::size_t piece_capacity = 65536;

// size * count, or 0 where that is past the largest size.
std::size_t bytes_of(std::size_t size, std::size_t count) {
    std::size_t bytes = 0;
    return __builtin_mul_overflow(size, count, &bytes) ? 0 : bytes;
}

}  // namespace

nmkNMTFile::~nmkNMTFile() = default;

void nmkNMTFile::set_error(int code, nmkNMTErr error) {
    if (m_error != nmkNMTErrNone) return;
    m_error = error;
    m_code = code;
}

nmkNMTFileMFC::nmkNMTFileMFC(const utString& filename, apNMKMode mode)
    : m_device(nmk_nmknmt::open_regular_file(filename.c_str(), mode == apNMKModeWrite)) {}

nmkNMTFileMFC::nmkNMTFileMFC(CFilecoPrf file) : m_device(nmk_nmknmt::device_of(file)) {}

nmkNMTFileMFC::~nmkNMTFileMFC() { close(); }

int nmkNMTFileMFC::seek(std::int64_t position, int origin) {
    std::int64_t from = 0;
    if (origin == apNMKSeekCurrent) from = m_piece_start + static_cast<std::int64_t>(m_at);
    if (origin == apNMKSeekEnd) from = length();
    std::int64_t target = 0;
    if (origin < apNMKSeekBegin || origin > apNMKSeekEnd ||
        __builtin_add_overflow(from, position, &target) || target < 0 ||
        target > INT64_MAX - static_cast<std::int64_t>(piece_capacity)) {
        return 1;
    }
    const std::int64_t in_piece = target - m_piece_start;
    if (in_piece >= 0 && in_piece <= static_cast<std::int64_t>(m_piece_size)) {
        m_at = static_cast<std::size_t>(in_piece);
        return 0;
    }
    const bool is_written = flush();
    drop_piece(target);
    return is_written ? 0 : 1;
}

std::size_t nmkNMTFileMFC::write(const void* buffer, std::size_t size, std::size_t count) {
    if (!is_open()) return 0;
    const char* const bytes = static_cast<const char*>(buffer);
    const std::size_t total = bytes_of(size, count);
    std::size_t done = 0;
    m_piece.resize(piece_capacity);
    while (done < total) {
        if (m_at == piece_capacity) {
            const std::int64_t position = m_piece_start + static_cast<std::int64_t>(m_at);
            const bool is_written = flush();
            drop_piece(position);
            if (!is_written) return done;
        }
        const std::size_t part = std::min(total - done, piece_capacity - m_at);
        std::memcpy(m_piece.data() + m_at, bytes + done, part);
        m_at += part;
        m_piece_size = std::max(m_piece_size, m_at);
        m_is_dirty = true;
        done += part;
    }
    return done;
}

char* nmkNMTFileMFC::gets(char* buffer, int size) {
    if (size < 2) return nullptr;
    const std::size_t room = static_cast<std::size_t>(size) - 1;
    std::size_t got = 0;
    while (got < room && (m_at < m_piece_size || fill())) {
        const std::size_t part = std::min(room - got, m_piece_size - m_at);
        const char* const from = m_piece.data() + m_at;
        const void* const newline = std::memchr(from, '\n', part);
        const std::size_t taken =
            newline != nullptr
                ? static_cast<std::size_t>(static_cast<const char*>(newline) - from) + 1
                : part;
        got += take(buffer + got, taken);
        if (newline != nullptr) break;
    }
    buffer[got] = '\0';
    return got > 0 ? buffer : nullptr;
}

std::size_t nmkNMTFileMFC::read(void* buffer, std::size_t size, std::size_t count) {
    const std::size_t total = bytes_of(size, count);
    char* const bytes = static_cast<char*>(buffer);
    std::size_t got = 0;
    while (got < total && (m_at < m_piece_size || fill())) got += take(bytes + got, total - got);
    return got;
}

std::int64_t nmkNMTFileMFC::length() {
    if (!is_open()) return 0;
    const std::int64_t gathered = m_piece_start + static_cast<std::int64_t>(m_piece_size);
    return m_is_dirty ? std::max(m_device->length(), gathered) : m_device->length();
}

int nmkNMTFileMFC::close() {
    if (!is_open()) return 0;
    flush();
    if (!m_device->close()) m_has_failed = true;
    m_device.reset();
    drop_piece(0);
    if (m_has_failed) set_error(0, nmkNMTErrWrite);
    return m_has_failed ? 1 : 0;
}

// Writes the piece where that is needed. What cannot be written is lost, and remembered.
bool nmkNMTFileMFC::flush() {
    if (!m_is_dirty) return true;
    m_is_dirty = false;
    const bool is_written = m_device->write(m_piece_start, m_piece.data(), m_piece_size);
    if (!is_written) m_has_failed = true;
    return is_written;
}

// Reads the piece that begins at the position; false at the end of the file.
bool nmkNMTFileMFC::fill() {
    if (!is_open()) return false;
    const std::int64_t position = m_piece_start + static_cast<std::int64_t>(m_at);
    flush();
    drop_piece(position);
    m_piece.resize(piece_capacity);
    m_piece_size = m_device->read(position, m_piece.data(), piece_capacity);
    return m_piece_size > 0;
}

std::size_t nmkNMTFileMFC::take(char* to, std::size_t count) {
    const std::size_t taken = std::min(count, m_piece_size - m_at);
    std::memcpy(to, m_piece.data() + m_at, taken);
    m_at += taken;
    return taken;
}

// The position is at the beginning of an empty piece.
void nmkNMTFileMFC::drop_piece(std::int64_t position) {
    m_piece_start = position;
    m_piece_size = 0;
    m_at = 0;
    m_is_dirty = false;
}

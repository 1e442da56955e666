#include "deflate_stream.h"

#include <cerrno>

namespace nmk_compress {

namespace {

constexpr int raw_window = -MAX_WBITS;  // negative: without the header and check sum of zlib
constexpr int memory_level = 8;         // zlib's default
constexpr std::size_t block_size = 1 << 15;

}  // namespace

DeflateStream::~DeflateStream() {
    if (m_is_made) ::deflateEnd(&m_stream);
}

int DeflateStream::start(int level) {
    if (m_is_made && level == m_level) return ::deflateReset(&m_stream) == Z_OK ? 0 : EINVAL;
    if (m_is_made) ::deflateEnd(&m_stream);
    m_is_made = ::deflateInit2(&m_stream, level, Z_DEFLATED, raw_window, memory_level,
                               Z_DEFAULT_STRATEGY) == Z_OK;
    m_level = level;
    m_packed.resize(block_size);
    return m_is_made ? 0 : ENOMEM;
}

void DeflateStream::put(std::string_view bytes, bool is_last, const Sink& sink) {
    m_stream.next_in = reinterpret_cast<z_const Bytef*>(const_cast<char*>(bytes.data()));
    m_stream.avail_in = static_cast<uInt>(bytes.size());
    do {
        m_stream.next_out = m_packed.data();
        m_stream.avail_out = static_cast<uInt>(m_packed.size());
        ::deflate(&m_stream, is_last ? Z_FINISH : Z_NO_FLUSH);
        sink(
            {reinterpret_cast<const char*>(m_packed.data()), m_packed.size() - m_stream.avail_out});
    } while (m_stream.avail_out == 0);
}

}  // namespace nmk_compress

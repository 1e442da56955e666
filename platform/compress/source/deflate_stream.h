// deflate_stream.h: packs bytes for entry after entry with one state of zlib.
#pragma once

#include <zlib.h>

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace nmk_compress {

class DeflateStream {
  public:
    /// Takes packed bytes.
    using Sink = std::function<void(std::string_view)>;

    DeflateStream() = default;
    DeflateStream(const DeflateStream&) = delete;
    DeflateStream& operator=(const DeflateStream&) = delete;
    ~DeflateStream();

    /// Starts the data of an entry, at a level of 0 to 9, or -1. 0, or ENOMEM.
    int start(int level);

    /// Packs the bytes; with `is_last` nothing follows them.
    void put(std::string_view bytes, bool is_last, const Sink& sink);

  private:
    z_stream m_stream = {};
    bool m_is_made = false;
    int m_level = 0;
    std::vector<unsigned char> m_packed;
};

}  // namespace nmk_compress

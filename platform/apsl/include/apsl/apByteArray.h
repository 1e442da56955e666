// apByteArray.h: an array of bytes, without a terminator and without an encoding.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

class apByteArray {
  public:
    /// No bytes.
    apByteArray() = default;

    /// A copy of `size` bytes; a size of 0 or less gives none, and `bytes` is not read.
    apByteArray(const void* bytes, int size)
        : apByteArray(size > 0 ? std::string_view(static_cast<const char*>(bytes),
                                                  static_cast<std::size_t>(size))
                               : std::string_view()) {}

    /// A copy of the bytes of a text.
    explicit apByteArray(std::string_view bytes) : m_bytes(bytes.begin(), bytes.end()) {}

    /// Number of bytes.
    int size() const noexcept { return static_cast<int>(m_bytes.size()); }
    bool is_empty() const noexcept { return m_bytes.empty(); }

    /// The first of size() adjacent bytes; may be null when there are none.
    const std::uint8_t* data() const noexcept { return m_bytes.data(); }
    std::uint8_t* data() noexcept { return m_bytes.data(); }

    /// `index` must be at least 0 and below size().
    std::uint8_t operator[](int index) const noexcept {
        return m_bytes[static_cast<std::size_t>(index)];
    }

    /// The same bytes as a text. Valid until the array changes.
    std::string_view view() const noexcept {
        return {reinterpret_cast<const char*>(m_bytes.data()), m_bytes.size()};
    }

    const std::uint8_t* begin() const noexcept { return data(); }
    const std::uint8_t* end() const noexcept { return data() + size(); }

    friend bool operator==(const apByteArray&, const apByteArray&) noexcept = default;

  private:
    std::vector<std::uint8_t> m_bytes;
};

// psArchiveFileHeader: what an archive file says about itself.
#pragma once

#include <utils/utString.h>

#include <utility>
#include <vector>

/// The order of bytes in the streams of a file. CArchive has one, so that is what a file can have.
enum psByteOrderState : int { psByteOrderUnknown = 0, psByteOrderBig = 1, psByteOrderLittle = 2 };

class psArchiveFileHeader {
  public:
    /// No texts, little-endian.
    psArchiveFileHeader() = default;

    /// The name of what is stored, its version, and the order of bytes.
    psArchiveFileHeader(const utString& name, const utString& version, psByteOrderState byte_order)
        : m_texts{name, version}, m_byte_order(byte_order) {}

    /// Three texts, as files of geometry have them, and the number of the order of bytes.
    psArchiveFileHeader(const utString& origin, const utString& type, const utString& title,
                        int byte_order)
        : m_texts{origin, type, title}, m_byte_order(static_cast<psByteOrderState>(byte_order)) {}

    /// Any texts; what is read from a file.
    psArchiveFileHeader(std::vector<utString> texts, psByteOrderState byte_order)
        : m_texts(std::move(texts)), m_byte_order(byte_order) {}

    const std::vector<utString>& texts() const noexcept { return m_texts; }
    psByteOrderState byte_order() const noexcept { return m_byte_order; }

    friend bool operator==(const psArchiveFileHeader&, const psArchiveFileHeader&) = default;

  private:
    std::vector<utString> m_texts;
    psByteOrderState m_byte_order = psByteOrderLittle;
};

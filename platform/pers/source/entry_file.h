// entry_file.h: an entry of a zip as the file of a CArchive.
#pragma once

#include <compress/cmUnZip.h>
#include <compress/cmZip.h>
#include <mfc/CFile.h>

#include <string>

namespace nmk_pers {

/// The open entry of a zip that is written.
class OutputEntry : public CFile {
  public:
    explicit OutputEntry(cmZip& zip) : m_zip(zip) {}

    /// Throws a CFileException with the errno where that fails.
    void Write(const void* bytes, std::size_t count) override;
    std::uint64_t GetPosition() const override { return m_position; }
    std::uint64_t GetLength() const override { return m_position; }

  private:
    cmZip& m_zip;
    std::uint64_t m_position = 0;
};

/// The open entry of a zip that is read. It can be put back by what was read last, as an archive
/// does with the rest of its buffer.
class InputEntry : public CFile {
  public:
    explicit InputEntry(cmUnZip& zip) : m_zip(zip) {}

    /// Throws a CFileException where the entry is damaged.
    std::size_t Read(void* bytes, std::size_t count) override;
    std::uint64_t Seek(std::int64_t offset, SeekPosition from) override;
    std::uint64_t GetPosition() const override { return m_position; }

  private:
    std::size_t read_entry(char* bytes, std::size_t count);
    void keep_last(const char* bytes, std::size_t count);

    cmUnZip& m_zip;
    std::string m_last;      // what was read last
    std::size_t m_back = 0;  // so much of its end is to be read again
    std::uint64_t m_position = 0;
};

}  // namespace nmk_pers

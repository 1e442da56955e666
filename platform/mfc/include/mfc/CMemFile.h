// CMemFile: a file in memory, either one that grows as it is written or bytes of the caller's that
// can only be read.
#pragma once

#include <mfc/CFile.h>

#include <span>
#include <vector>

#pragma GCC visibility push(default)

class CMemFile : public CFile {
  public:
    /// Empty; grows as it is written.
    CMemFile() = default;

    /// Reads the caller's bytes where they are; they outlive this. Writing throws accessDenied.
    explicit CMemFile(std::span<const unsigned char> bytes)
        : m_borrowed(bytes), m_is_owner(false) {}

    CRuntimeClass* GetRuntimeClass() const override;
    static CRuntimeClass* GetThisClass();
    static CRuntimeClass* _GetBaseClass();

    /// What the file holds; until it is next written.
    std::span<const unsigned char> bytes() const noexcept {
        return m_is_owner ? std::span<const unsigned char>(m_owned) : m_borrowed;
    }

    std::size_t Read(void* to, std::size_t count) override;

    /// Writing behind the end fills the gap with zeros.
    void Write(const void* from, std::size_t count) override;
    std::uint64_t Seek(std::int64_t offset, SeekPosition from) override;
    std::uint64_t GetPosition() const override;
    std::uint64_t GetLength() const override;

    /// Nothing to do: what was written is kept and can be read again after Seek.
    void Close() override;
    void Abort() noexcept override;

  private:
    std::span<const unsigned char> m_borrowed;
    std::vector<unsigned char> m_owned;
    std::size_t m_position = 0;
    bool m_is_owner = true;
};

#pragma GCC visibility pop

// CFile: a file of bytes with a position, read and written without a buffer.
//
// Failures throw a CFileException by value. Not for two threads at once.
#pragma once

#include <mfc/CException.h>

#include <cstddef>
#include <cstdint>

#pragma GCC visibility push(default)

class CFile : public CObject {
  public:
    /// How a file is opened: one of the first three, and any of the others added.
    enum OpenFlags : unsigned int {
        modeRead = 0,
        modeWrite = 1,
        modeReadWrite = 2,
        modeCreate = 0x1000,     // makes the file where it is missing, and empties it
        modeNoTruncate = 0x2000  // with modeCreate: keeps what the file holds
    };
    enum SeekPosition { begin = 0, current = 1, end = 2 };

    /// Not open.
    CFile() noexcept = default;

    /// Opens `name`; throws where that fails.
    CFile(const char* name, unsigned int flags);
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    /// Closes the file; a failure of that goes unnoticed, so call Close first after writing.
    ~CFile() override;

    CRuntimeClass* GetRuntimeClass() const override;
    static CRuntimeClass* GetThisClass();
    static CRuntimeClass* _GetBaseClass();

    /// Opens `name`, and closes the file that was open. Returns false where that fails, with the
    /// reason in `error` when that is not null.
    bool Open(const char* name, unsigned int flags, CFileException* error = nullptr);

    /// Reads up to `count` bytes and returns how many there were; fewer only at the end.
    virtual std::size_t Read(void* bytes, std::size_t count);

    /// Writes all `count` bytes, or throws.
    virtual void Write(const void* bytes, std::size_t count);

    /// Moves the position and returns it, in bytes from the beginning. The position may lie behind
    /// the end; one before the beginning throws badSeek.
    virtual std::uint64_t Seek(std::int64_t offset, SeekPosition from);

    virtual std::uint64_t GetPosition() const;
    virtual std::uint64_t GetLength() const;

    /// Hands over what is buffered; here nothing ever is.
    virtual void Flush();

    /// Closes the file and reports a failure of that. A file that is not open is left as it is.
    virtual void Close();

    /// Closes the file, whatever happens.
    virtual void Abort() noexcept;

  private:
    int m_descriptor = -1;
};

#pragma GCC visibility pop

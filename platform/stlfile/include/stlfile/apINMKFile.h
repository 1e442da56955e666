// apINMKFile: a file of bytes with a position, as readers and writers of models see it.
//
// Implementations read and write in large pieces, so that small calls cost no system call.
#pragma once

#include <cstddef>
#include <cstdint>

#pragma GCC visibility push(default)

/// What a position counts from.
enum apNMKSeek : int { apNMKSeekBegin = 0, apNMKSeekCurrent = 1, apNMKSeekEnd = 2 };

class apINMKFile {
  public:
    virtual ~apINMKFile();

    /// Moves the position, which may lie behind the end. Returns 0, or non-zero where the new
    /// position would lie before the beginning, `origin` is none of apNMKSeek, or bytes that were
    /// gathered could not be written.
    virtual int seek(std::int64_t position, int origin) = 0;

    /// Writes size * count bytes and returns how many were written. A file that gathers bytes may
    /// report a failure later, at the latest when it is closed.
    virtual std::size_t write(const void* buffer, std::size_t size, std::size_t count) = 0;

    /// Reads a line: at most `size` - 1 bytes, up to and with a newline, and a NUL behind them. A
    /// longer line continues in the next call. Returns `buffer`, or null at the end of the file,
    /// where nothing can be read, and for a `size` below 2.
    virtual char* gets(char* buffer, int size) = 0;

    /// Reads up to size * count bytes and returns how many there were; fewer only at the end of the
    /// file, or where it cannot be read any further.
    virtual std::size_t read(void* buffer, std::size_t size, std::size_t count) = 0;

    /// The number of bytes in the file, 0 where that is unknown.
    virtual std::int64_t length() = 0;

  protected:
    apINMKFile() = default;
    apINMKFile(const apINMKFile&) = default;
    apINMKFile& operator=(const apINMKFile&) = default;
};

#pragma GCC visibility pop

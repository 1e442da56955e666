// nmkNMTFileMFC: a file on the disk, or one that a CFile offers.
//
// Reads and writes go through one piece of 64 KiB, so a write that fails may be reported by a later
// call, and by close() at the latest. Only regular files are opened, through symlinks too:
// directories, pipes and devices are refused, without waiting for them. A file that is not open
// reads as empty and takes nothing.
#pragma once

#include <mfc/CFile.h>
#include <ncamcontainer/coPrf.h>
#include <nmknmt/nmkNMTFile.h>
#include <utils/utString.h>

#include <memory>
#include <vector>

#pragma GCC visibility push(default)

class CFile;
using CFilecoPrf = coPrf<CFile>;

namespace nmk_nmknmt {
class ByteDevice;
}

class nmkNMTFileMFC : public nmkNMTFile {
  public:
    /// Opens the file of that name; see is_open.
    nmkNMTFileMFC(const utString& filename, apNMKMode mode);

    /// The bytes of `file` from its beginning, wherever its position is; null is not open.
    explicit nmkNMTFileMFC(CFilecoPrf file);

    /// Closes the file; a failure of that goes unnoticed, so call close first after writing.
    ~nmkNMTFileMFC() override;

    bool is_open() const noexcept { return m_device != nullptr; }

    int seek(std::int64_t position, int origin) override;
    std::size_t write(const void* buffer, std::size_t size, std::size_t count) override;
    char* gets(char* buffer, int size) override;
    std::size_t read(void* buffer, std::size_t size, std::size_t count) override;
    std::int64_t length() override;

    /// Writes what is gathered and closes the file. Returns 0, or 1 where bytes could not be
    /// written, here or before; records nmkNMTErrWrite then. A file that is not open returns 0.
    int close();

  private:
    bool flush();
    bool fill();
    std::size_t take(char* to, std::size_t count);
    void drop_piece(std::int64_t position);

    std::unique_ptr<nmk_nmknmt::ByteDevice> m_device;  // null where it is not open
    std::vector<char> m_piece;                         // bytes of the file from m_piece_start on
    std::size_t m_piece_size = 0;                      // how many of them are in use
    std::size_t m_at = 0;                              // the position, counted in the piece
    std::int64_t m_piece_start = 0;
    bool m_is_dirty = false;  // the piece has to be written
    bool m_has_failed = false;
};

#pragma GCC visibility pop

// cmZip: writes a zip file, entry by entry.
//
//     cmZip zip;
//     zip.open("parts.zip");
//     zip.open_new_file_in_zip("notes.txt", cmZipMethodDeflate, -1, date, utString());
//     zip.write_in_file_in_zip("text", 4);
//     zip.close_file_in_zip();
//     zip.close();
//
// The data is deflated while it arrives. Beside some buffers, 400 KB in all, only the directory of
// the zip is held: 46 bytes and the name for each entry. Sizes, offsets and the number of entries
// may need 64 bits; the records for that (zip64) are written where they are needed only. A name may
// be used again, which gives two entries.
//
// The file appears under its name, complete, when `close` returns 0: it is written beside and
// renamed. Until then, and after any failure, the name has what it had before.
//
// Operations return 0, or the errno of the failure: EINVAL for a call out of order or a bad
// argument, else the disk's own. A failure to write is final; all later calls, `close` too, return
// it. An object is for one thread at a time.
#pragma once

#include <compress/cmZipMethod.h>
#include <utils/utString.h>

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>

#pragma GCC visibility push(default)

namespace nmk_compress {
class ZipWriter;
}

class cmZip {
  public:
    /// Called with the bytes of each block that was written; false stops the operation with
    /// ECANCELED, which is final.
    using Watch = std::function<bool(std::int64_t bytes)>;

    cmZip();
    cmZip(const cmZip&) = delete;
    cmZip& operator=(const cmZip&) = delete;
    /// Removes what was written unless `close` has finished it.
    ~cmZip();

    void set_watch(Watch watch);

    /// Starts a zip file of this name. An existing file is replaced at the end and hands on its
    /// mode; a symlink to a file means that file. EISDIR for a directory, EINVAL for anything else
    /// that is not a file, ENOENT where the directory is missing.
    int open(const char* name);

    /// Whether `name` is the file that is being written, or the one that it will replace.
    bool is_own_file(const char* name) const;

    /// Writes the directory of the zip and gives the file its name. An open entry is closed before.
    int close();

    /// Starts an entry; one that is open is closed before.
    ///
    ///   name     1 to 65535 bytes, kept as they are; "/" separates directories
    ///   level    of deflate, 0 to 9 or -1 for its default
    ///   date     the 6 numbers of ut_date.h, kept to 2 seconds from 1980 to 2107; null: 1980
    ///   comment  up to 65535 bytes
    int open_new_file_in_zip(const utString& name, cmZipMethod method, int level, int* const date,
                             const utString& comment);

    /// Appends bytes to the open entry.
    int write_in_file_in_zip(const char* bytes, int count);

    /// Appends all that the stream has left, in blocks of `block_size` bytes. EIO when it cannot be
    /// read; the entry is then left out of the zip.
    int zip_current_file(std::istream& stream, int block_size);

    /// Completes the open entry.
    int close_file_in_zip();

  private:
    std::unique_ptr<nmk_compress::ZipWriter> m_writer;  // null while no file is open
    Watch m_watch;
};

#pragma GCC visibility pop

// zip_writer.h: puts entries, and the directory behind them, into a zip file.
//
// The packed data of a small entry is kept until its sizes are known, and is then written behind a
// header that has them. That of a larger one follows a header with room for the sizes, which is
// written again at the end.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "archive_output.h"
#include "deflate_stream.h"
#include "zip_records.h"

namespace nmk_compress {

class ZipWriter {
  public:
    int open(const char* name) { return m_output.open(name); }
    bool is_own_file(const char* name) const { return m_output.is_own_file(name); }

    /// The first failure to write.
    int failure() const { return m_output.failure(); }
    void set_failure(int error_number) { m_output.set_failure(error_number); }

    bool has_entry() const { return m_has_entry; }

    /// Starts an entry: its name, comment, method and date are set. The level is used for deflate.
    int start_entry(ZipEntry entry, int level);

    void append(std::string_view bytes);

    /// Completes the entry.
    void end_entry();

    /// Leaves the entry out of the directory; its bytes stay in the file, unused.
    void drop_entry() { m_has_entry = false; }

    /// Writes the directory and gives the file its name; returns the first failure.
    int finish();

  private:
    void put_packed(std::string_view bytes);
    void start_data();

    ArchiveOutput m_output;
    DeflateStream m_deflate;
    ZipEntry m_entry;
    bool m_has_entry = false;
    bool m_has_header = false;  // that of the entry is in the file
    std::string m_kept;         // packed bytes of an entry whose header is not yet in the file
    std::string m_directory;
    std::uint64_t m_count = 0;
};

}  // namespace nmk_compress

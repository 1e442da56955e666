// archive_output.h: the file that a zip is written to, with a buffer.
//
// It is written beside its target and takes its name at the end. The first failure is kept; from
// then on nothing is written.
#pragma once

#include <filesystem/safe_file.h>
#include <sys/stat.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace nmk_compress {

class ArchiveOutput {
  public:
    /// See cmZip::open.
    int open(const char* name);

    /// Whether `name` is this file, or the one that it will replace.
    bool is_own_file(const char* name) const;

    /// Bytes so far.
    std::uint64_t position() const { return m_position; }

    /// The first failure, an errno; 0 while there is none.
    int failure() const { return m_failure; }
    void set_failure(int error_number);

    void append(std::string_view bytes);

    /// Writes bytes again, all of which are there.
    void rewrite(std::uint64_t offset, std::string_view bytes);

    /// Gives the file its name; returns the failure.
    int commit();

  private:
    int resolve(const char* name);
    void flush();

    std::string m_target;
    bool m_replaces = false;
    struct stat m_replaced = {};
    nmk_filesystem::SafeFile m_file;
    std::string m_buffer;
    std::uint64_t m_position = 0;
    int m_failure = 0;
};

}  // namespace nmk_compress

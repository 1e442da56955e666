// target_directory.h: where files are extracted to.
#pragma once

#include <filesystem/descriptor.h>
#include <filesystem/safe_file.h>
#include <utils/utString.h>

#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace nmk_archive {

/// Whether a name in an archive, put behind a directory, names something below it on every system:
/// it has no component "..", no drive, no backslash and no slash at its beginning.
bool stays_below(std::string_view name);

/// The directory of the last file that was extracted, kept open for the next.
class TargetDirectory {
  public:
    /// Opens the directory of a file, and makes it where it is missing. 0, or errno.
    int open_for(const utString& target);

    int descriptor() const { return m_directory.number(); }

    /// The name of that file in it.
    const std::string& file_name() const { return m_file_name; }

  private:
    int open(const std::string& directory);

    std::string m_name;
    std::string m_file_name;
    nmk_filesystem::Descriptor m_directory;
};

/// A file that is written as a stream and appears when it is whole.
class ExtractedFile : private std::streambuf {
  public:
    ExtractedFile() : m_stream(this) {}

    /// Creates the file; EISDIR for a directory, EINVAL for a device, EACCES for a file that may
    /// not be written.
    int create(const TargetDirectory& directory);

    std::ostream& stream() { return m_stream; }

    /// The errno of the first write that failed; 0 if none has.
    int failure() const { return m_failure; }

    /// Gives the file its name; returns 0, or the first failure.
    int commit();

  private:
    std::streamsize xsputn(const char* bytes, std::streamsize count) override;
    int_type overflow(int_type character) override;

    nmk_filesystem::SafeFile m_file;
    int m_failure = 0;
    std::ostream m_stream;
};

}  // namespace nmk_archive

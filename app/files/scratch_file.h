// scratch_file.h: a file for bytes that a library can only read from a file, or write to one.
#pragma once

#include <string>
#include <string_view>

#include "files/staged_file.h"
#include "text/result.h"

namespace nmk_files {

/// A file in the directory for temporary files, which other users cannot read.
/// It is removed with the object; signals that would end the process are blocked until then.
class ScratchFile {
  public:
    /// Creates the file with these bytes; throws an Error where it cannot be written.
    explicit ScratchFile(std::string_view bytes = {});
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile();

    const std::string& name() const { return m_name; }

    /// All its bytes.
    nmk_text::Result<std::string> bytes() const;

  private:
    SignalBlock m_signals;
    std::string m_name;
};

}  // namespace nmk_files

// scratch_file: a file for bytes that a library can only read from a file, or write to one.

#include "files/scratch_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "files/read_file_bytes.h"
#include "files/temporary_directory.h"
#include "files/write_bytes.h"

namespace nmk_files {

ScratchFile::ScratchFile(std::string_view bytes) {
    m_name = temporary_directory() / "nmk-XXXXXX";
    const int descriptor = ::mkstemp(m_name.data());
    const bool is_written = descriptor >= 0 && write_bytes(descriptor, bytes);
    const int error = errno;
    if (descriptor >= 0) ::close(descriptor);
    if (is_written) return;
    if (descriptor >= 0) ::unlink(m_name.c_str());
    throw nmk_text::Error{
        m_name, 0, "a temporary file cannot be written: " + std::string(std::strerror(error))};
}

ScratchFile::~ScratchFile() { ::unlink(m_name.c_str()); }

nmk_text::Result<std::string> ScratchFile::bytes() const { return read_file_bytes(m_name); }

}  // namespace nmk_files

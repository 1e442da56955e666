// spooled_input.h: standard input as a file that can be read at any place.
#pragma once

#include <filesystem/descriptor.h>

#include <cstdint>
#include <functional>
#include <string>

#include "text/result.h"

namespace nmk_files {

/// The bytes of standard input in a file without a name, in the directory for temporary files: it
/// goes with the process, however that ends. The bytes are not held in memory, and their number is
/// limited by the disk only.
class SpooledInput {
  public:
    /// Called with the number of bytes so far, also while none arrive; false stops.
    using Watch = std::function<bool(std::int64_t bytes)>;

    /// Reads standard input to its end, or until `watch` stops it. An Error where standard input
    /// cannot be read, and where the file cannot be written.
    static nmk_text::Result<SpooledInput> read(const Watch& watch);

    /// False where the watch stopped the reading.
    bool is_whole() const { return m_is_whole; }

    /// The name by which this process opens the file, while the object lives.
    std::string name() const;

  private:
    nmk_filesystem::Descriptor m_file;
    bool m_is_whole = false;
};

}  // namespace nmk_files

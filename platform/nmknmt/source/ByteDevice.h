// ByteDevice: where the bytes of a file object are.
#pragma once

#include <ncamcontainer/coPrf.h>

#include <cstddef>
#include <cstdint>
#include <memory>

class CFile;

namespace nmk_nmknmt {

class ByteDevice {
  public:
    virtual ~ByteDevice() = default;

    /// Reads up to `count` bytes at `position`; fewer only at the end or where reading fails.
    virtual std::size_t read(std::int64_t position, char* bytes, std::size_t count) = 0;

    /// Writes all bytes, or returns false.
    virtual bool write(std::int64_t position, const char* bytes, std::size_t count) = 0;

    /// 0 where it is unknown.
    virtual std::int64_t length() = 0;

    /// False where bytes have been lost.
    virtual bool close() = 0;
};

/// The regular file of that name; null where it cannot be opened or is something else.
std::unique_ptr<ByteDevice> open_regular_file(const char* name, bool for_writing);

/// What a CFile offers; null for null.
std::unique_ptr<ByteDevice> device_of(const coPrf<CFile>& file);

}  // namespace nmk_nmknmt

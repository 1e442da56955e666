// topology_stream_fuzzer: any bytes loaded as a stream of a part of a boundary.
//
// What loads without an exception is valid, and is stored, loaded and stored once more: both times
// the bytes are the same.

#include <topology/top_persistence.h>

#include <cstdint>
#include <cstdlib>

#include "stored_handles.h"

namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using stored_handles::Bytes;
    topTopologyPtr part;
    try {
        part = stored_handles::loaded<topTopologyPtr>(Bytes(data, data + size),
                                                      size % 2 == 0 ? 4096 : 5);
    } catch (const CArchiveException&) {
        return 0;
    }
    require(!part || part->is_valid());
    const Bytes bytes = stored_handles::stored(part);
    require(stored_handles::stored(stored_handles::loaded<topTopologyPtr>(bytes)) == bytes);
    return 0;
}

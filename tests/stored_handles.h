// stored_handles.h: curves and surfaces as the bytes of a stream, for the tests and the fuzz
// target.
#pragma once

#include <ngk/ngk_persistence.h>

#include <vector>

#include "stream_objects.h"

namespace stored_handles {

using Bytes = std::vector<unsigned char>;

/// The bytes of a stream of one handle.
template <class Handle>
Bytes stored(const Handle& handle) {
    return stored_bytes([&](CArchive& archive) { archive << handle; });
}

/// The handle of such a stream.
template <class Handle>
Handle loaded(const Bytes& bytes, int buffer_size = 4096) {
    Handle handle;
    load_bytes(
        bytes, [&](CArchive& archive) { archive >> handle; }, buffer_size);
    return handle;
}

}  // namespace stored_handles

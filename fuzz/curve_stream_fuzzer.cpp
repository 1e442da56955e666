// curve_stream_fuzzer: any bytes loaded as a stream of a curve in space, one in the plane, and a
// surface.
//
// What loads without an exception is valid, and is stored, loaded and stored once more: both times
// the bytes are the same. The curve can be measured.

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "stored_handles.h"

namespace {

using stored_handles::Bytes;

void require(bool condition) {
    if (!condition) std::abort();
}

template <class Handle>
void check(const Handle& handle) {
    require(!handle || handle->is_valid());
    const Bytes bytes = stored_handles::stored(handle);
    require(stored_handles::stored(stored_handles::loaded<Handle>(bytes)) == bytes);
}

void measure(const ngkCurvePtr3& curve) {
    if (!curve || curve->segment_count() > 100) return;
    giPoint3 point;
    const bool is_found = curve->evaluate(0.5, point) != 0;
    require(is_found == point.is_set());
    require(curve->closest_point(giPoint3(1, 2, 3)).is_set() == (curve->segment_count() > 0));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes bytes(data, data + size);
    ngkCurvePtr3 curve;
    ngkCurvePtr2 in_the_plane;
    ngkSurfPtr surface;
    try {
        load_bytes(
            bytes, [&](CArchive& archive) { archive >> curve >> in_the_plane >> surface; },
            size % 2 == 0 ? 4096 : 5);
    } catch (const CArchiveException&) {
    }
    check(curve);
    check(in_the_plane);
    check(surface);
    measure(curve);
    return 0;
}

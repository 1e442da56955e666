// curve_stream_fuzzer: any bytes loaded as a stream of a curve in space, one in the plane, and a
// surface.
//
// What loads without an exception is valid, and is stored, loaded and stored once more: both times
// the bytes are the same. The curve in space can be evaluated.

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

void evaluate(const ngkCurvePtr3& curve) {
    if (!curve) return;
    for (const double fraction : {0.0, 0.3, 1.0}) {
        giPoint3 point;
        require((curve->evaluate(fraction, point) != 0) == point.is_set());
    }
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
    evaluate(curve);
    return 0;
}

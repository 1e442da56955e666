// dxf_fuzzer: any bytes as a DXF drawing. Curves that are read have to be valid, in range at their
// ends, and measurable.

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "formats/dxf/dxf_reader.h"

namespace {

constexpr std::size_t max_measured = 20;  // curves; more would only slow the fuzzer down

void measure(const ngkCurve3& curve) {
    giPoint3 point;
    if (!curve.is_valid() || !curve.evaluate(0.0, point) || !curve.evaluate(1.0, point)) {
        std::abort();
    }
    if (!std::isfinite(curve.length(1e-6)) || curve.bounding_box().is_empty()) std::abort();
    if (curve.closest_point(point).distance >
        1e-3 * (1.0 + std::abs(point.x) + std::abs(point.y) + std::abs(point.z))) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    nmk_dxf::looks_like_dxf(text);
    const auto drawing = nmk_dxf::read_dxf("fuzz.dxf", text, 25.4);
    if (!drawing) return 0;
    std::size_t measured = 0;
    for (const nmk_dxf::DxfCurve& each : drawing->curves) {
        if (measured++ == max_measured) break;
        measure(*each.curve);
    }
    return 0;
}

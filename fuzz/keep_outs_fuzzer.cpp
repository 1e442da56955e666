// keep_outs_fuzzer: any bytes as a table of keep-outs. Keep-outs that are read have to be ones that
// can be travelled around, no way may cross them, and there is one within each area.

#include <nmktoolbox/ordering/nmkTravelWays.h>

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <vector>

#include "formats/keep_outs/keep_out_reader.h"

namespace {

constexpr std::size_t max_searched = 12;  // keep-outs; more would only slow the fuzzer down

void search(const nmkTravelWays& ways, const giPoint3& from, const giPoint3& to) {
    const std::optional<std::vector<giPoint3>> bends = ways.bends(from, to);
    const std::optional<int> area = ways.area_at(from);
    if (area && ways.area_at(to) && bends.has_value() != (area == ways.area_at(to))) {
        std::abort();
    }
    if (!bends) {
        return;
    }
    giPoint3 last = from;
    for (const giPoint3& bend : *bends) {
        if (ways.keep_out_between(last, bend)) {
            std::abort();
        }
        last = bend;
    }
    if (ways.keep_out_between(last, to)) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto read = nmk_keep_outs::read_keep_outs("fuzz.csv", text);
    const auto* keep_outs = read ? &*read : nullptr;
    if (keep_outs == nullptr) {
        return 0;
    }
    nmkTravelProblem problem;
    for (const nmk_keep_outs::KeepOut& keep_out : *keep_outs) {
        problem.keep_outs.push_back(keep_out.shape);
    }
    const nmkTravelWays ways(problem);
    if (!ways.error().empty()) {
        std::abort();
    }
    if (keep_outs->size() > max_searched) {
        return 0;
    }
    for (const giPoint3& to : {giPoint3(100.0, 0.0, 0.0), giPoint3(7.0, -30.0, 5.0)}) {
        search(ways, {-1.0, 0.5, 0.0}, to);
    }
    return 0;
}

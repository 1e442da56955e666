// map_fuzzer: any bytes as a map: read, and searched from corner to corner if it is small.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "commands/route/find_route.h"
#include "formats/octile/map_reader.h"

namespace {

constexpr std::size_t max_searched = 500;  // cells; more would only slow the fuzzer down

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto read = nmk_octile::read_octile_map("fuzz.map", text);
    const auto* plane = read ? &*read : nullptr;
    if (plane == nullptr || plane->cell_count() > max_searched) {
        return 0;
    }
    if (plane->cell_count() > size) {
        std::abort();  // a cell without its letter
    }
    nmk_route::RouteRequest request;
    request.start = plane->at({0, 0});
    request.goal = plane->at({plane->columns() - 1, plane->rows() - 1});
    if (nmk_route::check_request(*plane, request).empty()) {
        const nmk_route::FoundRoute route = nmk_route::find_route(*plane, request, nullptr);
        if (route.closed.size() > plane->cell_count() - plane->blocked_count()) {
            std::abort();
        }
    }
    return 0;
}

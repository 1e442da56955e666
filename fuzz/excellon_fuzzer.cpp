// excellon_fuzzer: any bytes as a drill program: read, written backward, read again.
//
// A program that is read must be writable in another order or refused with an error, and the
// written program must hold the same number of cuts.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "formats/excellon/excellon_reader.h"
#include "formats/excellon/excellon_writer.h"

namespace {

nmk_job::JobOrder backward_order(const nmk_job::MachiningJob& job) {
    nmk_job::JobOrder order = nmk_job::order_by_tool(job);
    std::reverse(order.begin(), order.end());
    for (nmk_job::JobCut& cut : order) {
        cut.reversed = job.items[cut.item].end.has_value();
    }
    return order;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    const auto read = nmk_excellon::read_excellon("fuzz.drl", std::move(text), std::nullopt);
    if (const auto* job = read ? &*read : nullptr) {
        const auto written = nmk_excellon::write_excellon(*job, backward_order(*job));
        if (const auto* program = written ? &*written : nullptr) {
            const auto again = nmk_excellon::read_excellon("again.drl", *program, job->units);
            const auto* same = again ? &*again : nullptr;
            if (same == nullptr || same->items.size() != job->items.size()) {
                std::abort();
            }
        }
    }
    return 0;
}

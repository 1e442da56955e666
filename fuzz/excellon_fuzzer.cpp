// excellon_fuzzer: any bytes as a drill program: read, turned around, written, read again.
//
// What is read must be writable in another order or refused with a word, and the written program
// must hold the same cuts in that order.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "formats/excellon/excellon_reader.h"
#include "formats/excellon/excellon_writer.h"

namespace {

void turn_around(nmk_job::MachiningJob& job) {
    std::reverse(job.tools.begin(), job.tools.end());
    for (nmk_job::JobTool& tool : job.tools) {
        std::reverse(tool.items.begin(), tool.items.end());
        for (nmk_job::JobItem& item : tool.items) {
            item.reversed = item.end.has_value();
        }
    }
}

std::size_t count_of(const nmk_job::MachiningJob& job) {
    std::size_t count = 0;
    for (const nmk_job::JobTool& tool : job.tools) {
        count += tool.items.size();
    }
    return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    auto read = nmk_excellon::read_excellon("fuzz.drl", std::move(text), std::nullopt);
    if (auto* job = read ? &*read : nullptr) {
        turn_around(*job);
        const auto written = nmk_excellon::write_excellon(*job);
        if (const auto* program = written ? &*written : nullptr) {
            const auto again = nmk_excellon::read_excellon("again.drl", *program, job->units);
            const auto* same = again ? &*again : nullptr;
            if (same == nullptr || count_of(*same) != count_of(*job)) {
                std::abort();
            }
        }
    }
    return 0;
}

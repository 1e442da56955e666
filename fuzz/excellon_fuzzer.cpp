// excellon_fuzzer: any bytes as a drill program: read, turned around, written, read again.
//
// What is read must be writable in another order or refused with a word, and the written program
// must hold the same cuts in that order.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "formats/excellon/excellon_reader.h"
#include "formats/excellon/excellon_writer.h"

using namespace nmk_app;

namespace {

void turn_around(MachiningJob& job) {
    std::reverse(job.tools.begin(), job.tools.end());
    for (JobTool& tool : job.tools) {
        std::reverse(tool.items.begin(), tool.items.end());
        for (JobItem& item : tool.items) {
            item.reversed = item.end.has_value();
        }
    }
}

std::size_t count_of(const MachiningJob& job) {
    std::size_t count = 0;
    for (const JobTool& tool : job.tools) {
        count += tool.items.size();
    }
    return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    auto read = read_excellon("fuzz.drl", std::move(text), std::nullopt);
    if (auto* job = std::get_if<MachiningJob>(&read)) {
        turn_around(*job);
        const auto written = write_excellon(*job);
        if (const auto* program = std::get_if<std::string>(&written)) {
            const auto again = read_excellon("again.drl", *program, job->units);
            const auto* same = std::get_if<MachiningJob>(&again);
            if (same == nullptr || count_of(*same) != count_of(*job)) {
                std::abort();
            }
        }
    }
    return 0;
}

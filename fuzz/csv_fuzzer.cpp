// csv_fuzzer: any bytes as a table: read, written as a table with its lines reversed, read again.

#include <cstdint>
#include <cstdlib>

#include "formats/csv/csv_reader.h"
#include "formats/csv/csv_writer.h"
#include "formats/json/json_writer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    const auto read = nmk_csv::read_csv("fuzz.csv", std::move(text), std::nullopt);
    const auto* job = read ? &*read : nullptr;
    if (job == nullptr || job->items.empty()) {
        return 0;
    }
    nmk_job::JobOrder order = nmk_job::order_of_file(*job);
    for (nmk_job::JobCut& cut : order) {
        cut.reversed = job->items[cut.item].end.has_value();
    }
    nmk_json::write_json(*job, order);
    const auto again =
        nmk_csv::read_csv("again.csv", nmk_csv::write_csv(*job, order), std::nullopt);
    const auto* same = again ? &*again : nullptr;
    if (same == nullptr || same->items.size() != job->items.size()) {
        std::abort();
    }
    return 0;
}

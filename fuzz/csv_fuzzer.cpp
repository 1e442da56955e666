// csv_fuzzer: any bytes as a table: read, written as it was read, read again.

#include <cstdint>
#include <cstdlib>

#include "formats/csv/csv_reader.h"
#include "formats/csv/csv_writer.h"
#include "formats/json/json_writer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    auto read = nmk_csv::read_csv("fuzz.csv", std::move(text), std::nullopt);
    auto* job = read ? &*read : nullptr;
    if (job == nullptr || job->tools.empty()) {
        return 0;
    }
    for (nmk_job::JobItem& item : job->tools[0].items) {
        item.reversed = item.end.has_value();
    }
    nmk_json::write_json(*job);
    const auto again = nmk_csv::read_csv("again.csv", nmk_csv::write_csv(*job), std::nullopt);
    const auto* same = again ? &*again : nullptr;
    if (same == nullptr || same->tools.empty() ||
        same->tools[0].items.size() != job->tools[0].items.size()) {
        std::abort();
    }
    return 0;
}

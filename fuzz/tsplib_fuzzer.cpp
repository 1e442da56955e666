// tsplib_fuzzer: any bytes as a TSPLIB instance, and as a file of unknown format.

#include <cstdint>
#include <cstdlib>

#include "formats/job_files/read_job.h"
#include "formats/tsplib/tsplib_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    for (const auto& read : {nmk_tsplib::read_tsplib("fuzz.tsp", text, std::nullopt),
                             nmk_job_files::read_job_text("fuzz", text, std::nullopt)}) {
        if (!read && read.error().message.empty()) {
            std::abort();
        }
    }
    return 0;
}

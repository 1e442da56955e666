// tsplib_fuzzer: any bytes as a TSPLIB instance, and as a file whose format has to be told.

#include <cstdint>

#include "formats/job_files/read_job.h"
#include "formats/tsplib/tsplib_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    nmk_tsplib::read_tsplib("fuzz.tsp", text, std::nullopt);
    nmk_job_files::read_job_text("fuzz", text, std::nullopt);
    return 0;
}

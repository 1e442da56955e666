// ttr_fuzzer: any bytes as the binary format .ttr: read in every way, bounded and written.
//
// Every index of what is delivered is in its block, and no triangle comes from fewer bytes than one
// takes.

#include <cstddef>

#include "model_reading.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    model_reading::read_model("model.ttr", {reinterpret_cast<const char*>(data), size}, 36);
    return 0;
}

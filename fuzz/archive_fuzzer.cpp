// archive_fuzzer: any bytes as an archive of electrodes: opened, verified, listed and extracted.
//
// Nothing is written outside the target directory, and neither links nor half files are left.

#include <cstddef>
#include <cstdint>

#include "archive_reading.h"
#include "run_directory.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    archive_reading::read_archive(nmk_fuzz::run_directory(),
                                  {reinterpret_cast<const char*>(data), size});
    return 0;
}

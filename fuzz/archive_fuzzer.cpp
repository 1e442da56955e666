// archive_fuzzer: any bytes as an archive of electrodes: opened, verified, listed and extracted.
//
// Nothing is written outside the target directory, and neither links nor half files are left.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

#include "archive_reading.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string directory = [] {
        std::string name = (std::filesystem::temp_directory_path() / "nmk_fuzz_XXXXXX").string();
        archive_reading::require(::mkdtemp(name.data()) != nullptr);
        return name;
    }();
    archive_reading::read_archive(directory, {reinterpret_cast<const char*>(data), size});
    return 0;
}

// model_format_fuzzer: any bytes as a triangle model of a format that is not stated: recognised by
// their content, and then read as such.

#include <cstddef>

#include "commands/model/model_format.h"
#include "model_reading.h"

namespace {

using nmk_model::FormatChoice;
using nmk_model::ModelFormat;

std::size_t bytes_of_a_triangle(ModelFormat format) {
    switch (format) {
        case ModelFormat::binary_stl:
        case ModelFormat::text_stl:
            return 30;
        case ModelFormat::flue:
            return 6;
        case ModelFormat::nmt:
            return 12;
        case ModelFormat::ttr:
            return 36;
    }
    return 1;
}

/// STL as its reader has it: a file that is shorter than its count is a text or cut.
bool is_stl_of_its_reader(ModelFormat format, std::string_view bytes) {
    std::uint32_t count = 0;
    if (bytes.size() >= 84) std::memcpy(&count, bytes.data() + 80, sizeof count);
    const bool is_binary =
        TriangleFileSTL::is_binary(static_cast<std::int64_t>(bytes.size()), count);
    return format == ModelFormat::binary_stl || (format == ModelFormat::text_stl && !is_binary);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    model_samples::MemoryFile file(bytes);
    const auto stl = nmk_model::format_of(FormatChoice::stl, "model", file);
    model_reading::require(stl && is_stl_of_its_reader(*stl, bytes));
    const auto format = nmk_model::format_of(FormatChoice::automatic, "model", file);
    if (!format) return 0;
    model_reading::require(!nmk_model::format_name(*format).empty());
    model_reading::read_model(nmk_model::reader_name(*format), bytes, bytes_of_a_triangle(*format));
    return 0;
}

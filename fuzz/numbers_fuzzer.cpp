// numbers_fuzzer: any double written in every way and read back; any text read as a number.

#include <nmktoolbox/files/nmkformat_double.h>
#include <nmktoolbox/files/nmktrim_trailing_zeros.h>
#include <nmktoolbox/solver/nmkNumberFormatter.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "files/plain_format_double.h"

namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

bool reads_back(const utString& text, double value) {
    double read = 0.0;
    int position = 0;
    return text.parse(read, position) == 1 && position == text.length() &&
           std::bit_cast<std::uint64_t>(read) == std::bit_cast<std::uint64_t>(value);
}

void check_number(double value, int digits, int places) {
    require(nmkformat_double_exact(value).view() == plain_format_double_exact(value));
    utString text;
    text << value;
    require(reads_back(text, value));
    require(nmkformat_double(value, places).view() == plain_format_double(value, places));
    const utString field = nmkNumberFormatter(digits, -places).format(value);
    require(!field.is_empty());
    utString trimmed = field;
    nmktrim_trailing_zeros(trimmed);
    require(trimmed.length() <= field.length());
}

void check_reading(const utString& text) {
    double value = 0.0;
    int whole = 0;
    for (int position = 0; position < text.length();) {
        const int before = position;
        if (text.parse(value, position) == 0) {
            require(position == before);
            ++position;
        }
        int again = before;
        require(text.parse(whole, again) == 0 ? again == before : again > before);
        require(position > before && position <= text.length());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 10) return 0;
    double value = 0.0;
    std::memcpy(&value, data, sizeof value);
    if (std::isfinite(value)) check_number(value, data[8] % 18, data[9] % 18);
    check_reading(utString(std::string_view(reinterpret_cast<const char*>(data), size)));
    return 0;
}

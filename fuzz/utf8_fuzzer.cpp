// utf8_fuzzer: any bytes as UTF-8 and as code units, beside the plain way; and as code page 1252.

#include <apsl/apCodePage.h>
#include <apsl/apUtf8Length.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/plain_utf8.h"

namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

void check_bytes(std::string_view bytes) {
    int status = -1;
    int plain_status = -1;
    const std::wstring wide = ap_decode(ap_code_page_utf8, bytes, status);
    require(wide == plain_utf8::decode(bytes, plain_status) && status == plain_status);

    int back_status = -1;
    const std::string back = ap_encode(ap_code_page_utf8, wide, back_status);
    require(back_status == 1);
    require((back == bytes) == (status == 1));
    require(ap_decode(ap_code_page_utf8, back, status) == wide && status == 1);
}

void check_first_length(std::string_view bytes) {
    if (bytes.empty()) return;
    bool is_character = false;
    bool complete = false;
    require(ap_utf8_length(bytes, is_character) == plain_utf8::first_length(bytes, complete));
    require(is_character == complete);
}

void check_units(std::string_view bytes) {
    std::wstring wide;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const unsigned high = static_cast<unsigned char>(bytes[i]);
        const unsigned low = static_cast<unsigned char>(bytes[i + 1]);
        wide += static_cast<wchar_t>(high * 256 + low);
    }
    int status = -1;
    int back_status = -1;
    const std::string narrow = ap_encode(ap_code_page_utf8, wide, status);
    const std::wstring back = ap_decode(ap_code_page_utf8, narrow, back_status);
    require(back_status == 1 && back.size() == wide.size());
    require((back == wide) == (status == 1));
    require(ap_encode(ap_code_page_western, wide, status).size() <= wide.size());
}

void check_western(std::string_view bytes) {
    int status = -1;
    const std::wstring wide = ap_decode(ap_code_page_western, bytes, status);
    require(status == 1 && wide.size() == bytes.size());
    require(ap_encode(ap_code_page_western, wide, status) == bytes && status == 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    check_bytes(bytes);
    check_first_length(bytes);
    check_units(bytes);
    check_western(bytes);
    return 0;
}

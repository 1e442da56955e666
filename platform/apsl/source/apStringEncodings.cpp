#include <apsl/apCodePage.h>
#include <apsl/apStringEncodingChooser.h>
#include <apsl/apStringEncodings.h>

namespace {

apString decode_from(unsigned code_page, const utString& text, int& status) {
    status = 1;
    return text.is_null() ? apString() : apString(ap_decode(code_page, text.view(), status));
}

utString encode_to(unsigned code_page, const apString& text, int& status) {
    status = 1;
    return text.is_valid() ? utString(ap_encode(code_page, text.view(), status)) : utString();
}

}  // namespace

apIStringEncoding::~apIStringEncoding() = default;

apString apStringCRTEncoding::decode(const utString& text, int& status) const {
    return decode_from(ap_thread_code_page(), text, status);
}

utString apStringCRTEncoding::encode(const apString& text, int& status) const {
    return encode_to(ap_thread_code_page(), text, status);
}

apString apStringUTF8Encoding::decode(const utString& text, int& status) const {
    return decode_from(ap_code_page_utf8, text, status);
}

utString apStringUTF8Encoding::encode(const apString& text, int& status) const {
    return encode_to(ap_code_page_utf8, text, status);
}

apString apString1252Encoding::decode(const utString& text, int& status) const {
    return decode_from(ap_code_page_western, text, status);
}

utString apString1252Encoding::encode(const apString& text, int& status) const {
    return encode_to(ap_code_page_western, text, status);
}

const apIStringEncoding* apStringEncodingChooser::ut_encoding() const noexcept {
    // Never released: texts are still converted while the process ends.
    // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): no text can be converted without it
    static const apIStringEncoding* const crt = new apStringCRTEncoding;
    return crt;
}

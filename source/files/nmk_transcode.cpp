#include <nmktoolbox/files/nmk_transcode.h>

#include <apsl/apStringEncodingChooser.h>

#include <utility>

const apIStringEncoding* g_transcode_encoding = nullptr;

apString nmk_transcode(const apIStringEncoding& encoding, utString text, int& status) {
    return text.is_null() ? apString(L"") : encoding.decode(text, status);
}

apString nmk_transcode(utString text, int& status) {
    return nmk_transcode(*nmk_transcode_encoding(), std::move(text), status);
}

utString nmk_transcode(const apIStringEncoding& encoding, apString text, int& status) {
    return text.is_valid() ? encoding.encode(text, status) : utString("");
}

utString nmk_transcode(apString text, int& status) {
    return nmk_transcode(*nmk_transcode_encoding(), std::move(text), status);
}

const apIStringEncoding* nmk_set_transcode_encoding(const apIStringEncoding* encoding) {
    return std::exchange(g_transcode_encoding, encoding);
}

const apIStringEncoding* nmk_transcode_encoding() {
    return g_transcode_encoding != nullptr ? g_transcode_encoding
                                           : apStringEncodingChooser().ut_encoding();
}

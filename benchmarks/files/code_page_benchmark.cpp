// code_page_benchmark: a megabyte of UTF-8 to wide text and back, beside ICU called directly.
//
// Both make new texts: ours a std::wstring and a std::string; ICU's u_strFromUTF8 and u_strToUTF8
// fill a std::u16string and a std::string that are made as large as they may have to be and then
// cut. What is wide takes four bytes with us and two with ICU. The lines "into ready buffers" show
// ICU without the making, which no caller of ours can have.

#include <apsl/apCodePage.h>
#include <unicode/ustring.h>

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "stopwatch.h"

namespace {

const auto text_size = static_cast<std::size_t>(stopwatch::size(1000000, 20000));  // bytes
const int rounds = stopwatch::rounds(60);
constexpr double target = 1.3;

struct IcuBuffers {
    std::u16string wide;
    std::string narrow;

    void make_room(std::size_t size) {
        wide.resize(size);
        narrow.resize(3 * size);
    }
};

int32_t signed_size(std::size_t size) { return static_cast<int32_t>(size); }

/// Returns the bytes written back into `buffers`, which have room for a text of that size.
std::size_t there_and_back_by_icu(std::string_view text, IcuBuffers& buffers) {
    UErrorCode error = U_ZERO_ERROR;
    int32_t units = 0;
    int32_t bytes = 0;
    u_strFromUTF8(buffers.wide.data(), signed_size(buffers.wide.size()), &units, text.data(),
                  signed_size(text.size()), &error);
    u_strToUTF8(buffers.narrow.data(), signed_size(buffers.narrow.size()), &bytes,
                buffers.wide.data(), units, &error);
    return U_SUCCESS(error) ? static_cast<std::size_t>(bytes) : 0;
}

std::string made_anew_by_icu(std::string_view text) {
    UErrorCode error = U_ZERO_ERROR;
    std::u16string wide(text.size(), u'\0');
    int32_t units = 0;
    u_strFromUTF8(wide.data(), signed_size(wide.size()), &units, text.data(),
                  signed_size(text.size()), &error);
    wide.resize(static_cast<std::size_t>(units));
    std::string narrow(3 * wide.size(), '\0');
    int32_t bytes = 0;
    u_strToUTF8(narrow.data(), signed_size(narrow.size()), &bytes, wide.data(), units, &error);
    narrow.resize(static_cast<std::size_t>(bytes));
    return narrow;
}

std::string made_by_us(std::string_view text) {
    int status = 0;
    return ap_encode(ap_code_page_utf8, ap_decode(ap_code_page_utf8, text, status), status);
}

/// Whole copies of `sample` up to a megabyte.
std::string repeated(std::string_view sample) {
    std::string text;
    while (text.size() + sample.size() <= text_size) text += sample;
    return text;
}

bool measure(const std::string& name, std::string_view sample) {
    const std::string text = repeated(sample);
    IcuBuffers ready;
    ready.make_room(text.size());
    double ours = 1e9;
    double anew = 1e9;
    double into_ready = 1e9;
    std::string our_text;
    std::string icu_text;
    std::size_t icu_size = 0;
    for (int round = 0; round < rounds; ++round) {
        ours = std::min(ours, stopwatch::seconds([&] { our_text = made_by_us(text); }));
        anew = std::min(anew, stopwatch::seconds([&] { icu_text = made_anew_by_icu(text); }));
        into_ready = std::min(
            into_ready, stopwatch::seconds([&] { icu_size = there_and_back_by_icu(text, ready); }));
    }
    const bool same = our_text == text && icu_text == text && icu_size == text.size();
    const bool reached = stopwatch::report(name.c_str(), ours, anew, target, same);
    stopwatch::print((name + "_into_ready_buffers").c_str(), ours, into_ready);
    return reached;
}

}  // namespace

int main() {
    bool reached = measure("utf8_1MB_ascii", "The quick brown fox jumps over the lazy dog; 0123. ");
    reached &=
        measure("utf8_1MB_cyrillic",
                "\xD0\xA1\xD1\x8A\xD0\xB5\xD1\x88\xD1\x8C \xD0\xB5\xD1\x89\xD1\x91 "
                "\xD1\x8D\xD1\x82\xD0\xB8\xD1\x85 \xD0\xB1\xD1\x83\xD0\xBB\xD0\xBE\xD0\xBA ");
    reached &= measure("utf8_1MB_cjk",
                       "\xE4\xB8\xAD\xE6\x96\x87\xE5\xAD\x97\xE7\xAC\xA6\xE5\xAD\x97\xE4\xBD\x93"
                       "\xE3\x81\xB2\xE3\x82\x89\xE3\x81\x8C\xE3\x81\xAA\xE3\x80\x82");
    reached &= measure("utf8_1MB_emoji",
                       "\xF0\x9F\x98\x80\xF0\x9F\x9A\x80\xF0\x9F\x8E\x89\xF0\x9F\x90\x8D"
                       "\xF0\x9F\x8C\x8D");
    return reached ? 0 : 1;
}

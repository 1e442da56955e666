// The single-byte Western code page, byte by byte.

#include <apsl/apCodePage.h>

#include <map>
#include <string>

#include <gtest/gtest.h>

namespace {

/// The characters of the bytes 0x80 to 0x9F, as the code page's published table has them; the five
/// that it leaves unassigned are the control characters of the same number.
constexpr char32_t published_80_to_9f[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t published(unsigned byte) {
    return byte >= 0x80 && byte <= 0x9F ? published_80_to_9f[byte - 0x80] : byte;
}

}  // namespace

TEST(western_code_page, every_byte_is_the_character_of_the_published_table_and_comes_back) {
    for (unsigned value = 0; value < 256; ++value) {
        const char byte = static_cast<char>(value);
        int status = -1;
        const std::wstring wide = ap_decode(ap_code_page_western, {&byte, 1}, status);
        EXPECT_EQ(status, 1);
        EXPECT_EQ(wide, std::wstring(1, static_cast<wchar_t>(published(value)))) << value;
        EXPECT_EQ(ap_encode(ap_code_page_western, wide, status), std::string(1, byte)) << value;
        EXPECT_EQ(status, 1);
    }
}

TEST(western_code_page, every_other_unit_becomes_a_question_mark) {
    std::map<char32_t, char> bytes;
    for (unsigned value = 0; value < 256; ++value) {
        bytes[published(value)] = static_cast<char>(value);
    }
    for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
        const auto known = bytes.find(unit);
        const wchar_t wide = static_cast<wchar_t>(unit);
        int status = -1;
        const std::string answer = ap_encode(ap_code_page_western, {&wide, 1}, status);
        ASSERT_EQ(answer, std::string(1, known != bytes.end() ? known->second : '?'))
            << static_cast<unsigned>(unit);
        ASSERT_EQ(status, known != bytes.end() ? 1 : 0) << static_cast<unsigned>(unit);
    }
}

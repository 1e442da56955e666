// Counted texts.
#include <apsl/apCodePage.h>
#include <gtest/gtest.h>
#include <mfc/CArchive.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "archive_failure.h"
#include "scoped_code_page.h"
#include "stream_objects.h"

namespace {

using Bytes = std::vector<unsigned char>;

std::string read_narrow(const Bytes& bytes) {
    std::string text;
    load_bytes(bytes, [&](CArchive& archive) { archive >> text; });
    return text;
}

std::wstring read_wide(const Bytes& bytes) {
    std::wstring text;
    load_bytes(bytes, [&](CArchive& archive) { archive >> text; });
    return text;
}

// Records the most bytes that are asked of it at once.
class RecordingFile : public CMemFile {
  public:
    using CMemFile::CMemFile;
    std::size_t Read(void* bytes, std::size_t count) override {
        most_asked = std::max(most_asked, count);
        return CMemFile::Read(bytes, count);
    }

    std::size_t most_asked = 0;
};

struct LengthCase {
    const char* name;
    std::size_t length;
    Bytes in_front;
};

std::ostream& operator<<(std::ostream& stream, const LengthCase& one) { return stream << one.name; }

class CArchive_text_length : public testing::TestWithParam<LengthCase> {};

}  // namespace

TEST_P(CArchive_text_length, stands_in_front_of_a_narrow_text) {
    const LengthCase& one = GetParam();
    const std::string text(one.length, 'x');
    const Bytes bytes = stored_bytes([&](CArchive& archive) { archive << text; });
    ASSERT_EQ(bytes.size(), one.in_front.size() + one.length);
    EXPECT_TRUE(std::equal(one.in_front.begin(), one.in_front.end(), bytes.begin()));
    EXPECT_EQ(read_narrow(bytes), text);
}

TEST_P(CArchive_text_length, follows_the_mark_of_a_wide_text) {
    const LengthCase& one = GetParam();
    const std::wstring text(one.length, L'\x20AC');
    Bytes in_front = {0xFF, 0xFE, 0xFF};
    in_front.insert(in_front.end(), one.in_front.begin(), one.in_front.end());
    const Bytes bytes = stored_bytes([&](CArchive& archive) { archive << text; });
    ASSERT_EQ(bytes.size(), in_front.size() + 2 * one.length);
    EXPECT_TRUE(std::equal(in_front.begin(), in_front.end(), bytes.begin()));
    EXPECT_EQ(read_wide(bytes), text);
}

INSTANTIATE_TEST_SUITE_P(
    cases, CArchive_text_length,
    testing::Values(
        LengthCase{"an_empty_text", 0, {0}}, LengthCase{"one_character", 1, {1}},
        LengthCase{"the_longest_in_1_byte", 254, {254}},
        LengthCase{"the_shortest_in_2_bytes", 255, {0xFF, 0xFF, 0}},
        LengthCase{"the_longest_in_2_bytes", 65533, {0xFF, 0xFD, 0xFF}},
        LengthCase{"the_length_of_the_mark", 65534, {0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0, 0}},
        LengthCase{"the_length_of_the_escape", 65535, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0}},
        LengthCase{"more_than_2_bytes_hold", 65536, {0xFF, 0xFF, 0xFF, 0, 0, 1, 0}}),
    [](const auto& one) { return std::string(one.param.name); });

TEST(CArchive_text, is_stored_as_documented) {
    EXPECT_EQ(stored_bytes([](CArchive& archive) { archive << "1.10"; }),
              (Bytes{0x04, 0x31, 0x2E, 0x31, 0x30}));
    EXPECT_EQ(stored_bytes([](CArchive& archive) { archive << L"Hi"; }),
              (Bytes{0xFF, 0xFE, 0xFF, 0x02, 0x48, 0x00, 0x69, 0x00}));
}

TEST(CArchive_text, keeps_nuls_inside) {
    const std::string narrow("a\0b", 3);
    const std::wstring wide(L"a\0b", 3);
    EXPECT_EQ(read_narrow(stored_bytes([&](CArchive& archive) { archive << narrow; })), narrow);
    EXPECT_EQ(read_wide(stored_bytes([&](CArchive& archive) { archive << wide; })), wide);
}

TEST(CArchive_text, of_either_kind_reads_as_either_by_the_code_page) {
    const Bytes wide = stored_bytes([](CArchive& archive) { archive << L"\x20AC 5"; });
    const Bytes narrow = stored_bytes([](CArchive& archive) { archive << "\xE2\x82\xAC 5"; });
    EXPECT_EQ(read_narrow(wide), "\xE2\x82\xAC 5");
    EXPECT_EQ(read_wide(narrow), L"\x20AC 5");
    const ScopedCodePage western(ap_code_page_western);
    EXPECT_EQ(read_narrow(wide), "\x80 5");
}

TEST(CArchive_text, a_surrogate_on_its_own_survives_as_wide_text) {
    const std::wstring text = {static_cast<wchar_t>(0xD800), L'x', static_cast<wchar_t>(0xDC00)};
    EXPECT_EQ(read_wide(stored_bytes([&](CArchive& archive) { archive << text; })), text);
}

TEST(CArchive_text, a_character_above_FFFF_in_one_wchar_t_is_stored_as_two_units) {
    const std::wstring text = {static_cast<wchar_t>(0x1F600)};
    EXPECT_EQ(stored_bytes([&](CArchive& archive) { archive << text; }),
              (Bytes{0xFF, 0xFE, 0xFF, 0x02, 0x3D, 0xD8, 0x00, 0xDE}));
}

TEST(CArchive_text, a_length_in_more_bytes_than_it_needs_is_accepted) {
    EXPECT_EQ(read_narrow({0xFF, 2, 0, 'h', 'i'}), "hi");
    EXPECT_EQ(read_narrow({0xFF, 0xFF, 0xFF, 2, 0, 0, 0, 'h', 'i'}), "hi");
}

TEST(CArchive_text, a_second_mark_throws_badIndex) {
    EXPECT_EQ(cause_of([] {
                  read_wide({0xFF, 0xFE, 0xFF, 0xFF, 0xFE, 0xFF, 1, 'a', 0});
              }),
              CArchiveException::badIndex);
}

TEST(CArchive_text, a_length_in_8_bytes_throws_badIndex) {
    const Bytes forged = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 1, 0, 0, 0, 0, 0, 0, 0, 'a'};
    EXPECT_EQ(cause_of([&] { read_narrow(forged); }), CArchiveException::badIndex);
}

TEST(CArchive_text, a_forged_length_takes_no_memory_and_throws_endOfFile) {
    const Bytes narrow = {0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 'a'};
    const Bytes wide = {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 'a', 0};
    for (const Bytes& forged : {narrow, wide}) {
        RecordingFile file(forged);
        CArchive archive(&file, CArchive::load);
        std::string text;
        EXPECT_EQ(cause_of([&] { archive >> text; }), CArchiveException::endOfFile);
        // What is asked of the file is what room was made for.
        EXPECT_LE(file.most_asked, 64U * 1024U);
    }
}

TEST(CArchive_text, that_is_cut_throws_endOfFile_and_leaves_the_variable_alone) {
    for (const Bytes& whole : {stored_bytes([](CArchive& archive) { archive << "some text"; }),
                               stored_bytes([](CArchive& archive) { archive << L"some text"; })}) {
        for (std::size_t size = 0; size < whole.size(); ++size) {
            const Bytes prefix(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            std::string narrow = "before";
            std::wstring wide = L"before";
            const auto read = [&](auto& text) {
                load_bytes(prefix, [&](CArchive& archive) { archive >> text; });
            };
            EXPECT_EQ(cause_of([&] { read(narrow); }), CArchiveException::endOfFile) << size;
            EXPECT_EQ(cause_of([&] { read(wide); }), CArchiveException::endOfFile) << size;
            EXPECT_EQ(narrow, "before");
            EXPECT_EQ(wide, L"before");
        }
    }
}

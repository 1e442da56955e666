// UTF-8 in full: every short sequence of bytes, every character, and many threads at once.

#include <apsl/apCodePage.h>
#include <apsl/apUtf8Length.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "platform/plain_utf8.h"

namespace {

/// Decodes from a buffer of exactly the size of the text, so that a byte read past it is seen.
std::wstring decode_exactly_sized(std::string_view bytes, int& status) {
    const auto buffer = std::make_unique<char[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), buffer.get());
    return ap_decode(ap_code_page_utf8, {buffer.get(), bytes.size()}, status);
}

/// The same for the length of what the text, which is not empty, begins with.
bool first_length_is_as_plain(std::string_view bytes) {
    const auto buffer = std::make_unique<char[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), buffer.get());
    bool is_character = false;
    bool complete = false;
    const std::size_t length = ap_utf8_length({buffer.get(), bytes.size()}, is_character);
    return length == plain_utf8::first_length(bytes, complete) && is_character == complete;
}

void expect_as_plain(std::string_view bytes) {
    EXPECT_TRUE(bytes.empty() || first_length_is_as_plain(bytes));
    int plain_status = -1;
    int status = -1;
    const std::wstring expected = plain_utf8::decode(bytes, plain_status);
    const std::wstring wide = decode_exactly_sized(bytes, status);
    if (wide == expected && status == plain_status) return;
    std::string shown;
    for (const char byte : bytes.substr(0, 16)) {
        shown += " " + std::to_string(static_cast<unsigned char>(byte));
    }
    ADD_FAILURE() << "bytes" << shown << ": status " << status << ", plain " << plain_status;
}

char byte(unsigned value) { return static_cast<char>(value); }

/// The bytes at which the table of well-formed sequences changes, and their neighbours.
const std::string& telling_bytes() {
    static const std::string bytes(
        "\x00\x41\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xE1\xEC\xED\xEE\xEF\xF0\xF1\xF3"
        "\xF4\xF5\xFF",
        25);
    return bytes;
}

/// Every character but the surrogates, as wide text and as bytes by the plain way.
struct AllCharacters {
    std::wstring wide;
    std::string bytes;
};

AllCharacters all_characters(char32_t from, char32_t to) {
    AllCharacters all;
    for (char32_t character = from; character < to; ++character) {
        if (character >= 0xD800 && character <= 0xDFFF) continue;
        plain_utf8::append_units(all.wide, character);
        all.bytes += plain_utf8::contents_of(character);
    }
    return all;
}

}  // namespace

TEST(apCodePage_exhaustive, every_one_and_two_bytes_at_the_end_of_a_text) {
    for (unsigned first = 0; first < 256; ++first) {
        expect_as_plain(std::string{byte(first)});
        for (unsigned second = 0; second < 256; ++second) {
            expect_as_plain(std::string{byte(first), byte(second)});
        }
    }
}

TEST(apCodePage_exhaustive, every_three_bytes_before_an_ascii_character) {
    // What begins with ASCII is that and two bytes, which the test above has.
    std::string text;
    for (unsigned first = 0x80; first < 256; ++first) {
        for (unsigned second = 0; second < 256; ++second) {
            text.clear();
            for (unsigned third = 0; third < 256; ++third) {
                text += {byte(first), byte(second), byte(third), 'A'};
            }
            expect_as_plain(text);
        }
    }
}

TEST(apCodePage_exhaustive, telling_bytes_in_threes_and_fours_at_the_end_of_a_text) {
    std::string text;
    for (const char first : telling_bytes()) {
        for (const char second : telling_bytes()) {
            for (const char third : telling_bytes()) {
                expect_as_plain(std::string{first, second, third});
                for (const char fourth : telling_bytes()) {
                    text.assign({first, second, third, fourth});
                    expect_as_plain(text);
                }
            }
        }
    }
}

TEST(apCodePage_exhaustive, every_character_goes_there_and_back) {
    constexpr char32_t step = 97;  // so that characters are at changing positions
    for (char32_t from = 0; from <= 0x10FFFF; from += step) {
        const AllCharacters all = all_characters(from, std::min<char32_t>(from + step, 0x110000));
        int status = -1;
        ASSERT_EQ(ap_encode(ap_code_page_utf8, all.wide, status), all.bytes)
            << static_cast<unsigned>(from);
        ASSERT_EQ(status, 1);
        status = -1;
        ASSERT_EQ(ap_decode(ap_code_page_utf8, all.bytes, status), all.wide)
            << static_cast<unsigned>(from);
        ASSERT_EQ(status, 1);
    }
}

TEST(apCodePage_exhaustive, long_texts_are_the_same_wherever_a_block_ends) {
    const AllCharacters all = all_characters(0x7F0, 0x820);
    const std::string emoji = "\xF0\x9F\x98\x80";
    for (std::size_t ascii = 0; ascii < 40; ++ascii) {
        std::string bytes(4090 - ascii, 'a');
        for (int i = 0; i < 60; ++i) bytes += emoji + all.bytes + "\xE2\x82" + "b";
        int plain_status = -1;
        int status = -1;
        const std::wstring wide = ap_decode(ap_code_page_utf8, bytes, status);
        ASSERT_EQ(wide, plain_utf8::decode(bytes, plain_status));
        ASSERT_EQ(status, 0);
        const std::string again = ap_encode(ap_code_page_utf8, wide, status);
        ASSERT_EQ(plain_utf8::decode(again, plain_status), wide);
        ASSERT_EQ(status, 1);
        ASSERT_EQ(plain_status, 1);
    }
}

TEST(apCodePage_exhaustive, every_prefix_of_a_long_text_in_a_buffer_of_its_size) {
    std::string bytes(1000, 'a');
    for (int i = 0; i < 20; ++i) bytes += "\xC3\xA9 \xE4\xB8\xAD\xF0\x9F\x98\x80\xED\xA0\x80z";
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        expect_as_plain(std::string_view(bytes).substr(0, size));
    }
    int status = -1;
    const std::wstring wide = ap_decode(ap_code_page_utf8, bytes, status);
    for (std::size_t size = 0; size <= wide.size(); ++size) {
        const auto buffer = std::make_unique<wchar_t[]>(size);
        std::copy_n(wide.begin(), size, buffer.get());
        const std::string narrow = ap_encode(ap_code_page_utf8, {buffer.get(), size}, status);
        const bool cut_in_a_pair = size > 0 && (wide[size - 1] & 0xFC00) == 0xD800;
        ASSERT_EQ(status, cut_in_a_pair ? 0 : 1) << size;
        std::wstring expected = wide.substr(0, size);
        if (cut_in_a_pair) expected.back() = static_cast<wchar_t>(0xFFFD);
        ASSERT_EQ(plain_utf8::decode(narrow, status), expected) << size;
    }
}

TEST(apCodePage_exhaustive, every_unit_on_its_own_is_a_character_or_a_replacement) {
    for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
        const wchar_t wide = static_cast<wchar_t>(unit);
        const bool lone = unit >= 0xD800 && unit <= 0xDFFF;
        int status = -1;
        ASSERT_EQ(ap_encode(ap_code_page_utf8, {&wide, 1}, status),
                  plain_utf8::contents_of(lone ? 0xFFFD : unit))
            << static_cast<unsigned>(unit);
        ASSERT_EQ(status, lone ? 0 : 1) << static_cast<unsigned>(unit);
    }
}

TEST(apCodePage_exhaustive, several_threads_convert_at_once) {
    const AllCharacters all = all_characters(0, 0x3000);
    std::string western;
    for (unsigned value = 0; value < 256; ++value) western += byte(value);
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 50; ++round) {
                int status = 0;
                ap_set_thread_code_page(ap_code_page_utf8);
                if (ap_decode(ap_thread_code_page(), all.bytes, status) != all.wide) ++wrong;
                if (ap_encode(ap_code_page_utf8, all.wide, status) != all.bytes) ++wrong;
                const std::wstring wide = ap_decode(ap_code_page_western, western, status);
                if (ap_encode(ap_code_page_western, wide, status) != western) ++wrong;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong.load(), 0);
}

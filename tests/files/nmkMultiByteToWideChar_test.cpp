#include <nmktoolbox/files/nmkMultiByteToWideChar.h>
#include <nmktoolbox/files/nmkWideCharToMultiByte.h>

#include "files/text_samples.h"

#include <gtest/gtest.h>

#include <memory>

struct nmkMultiByteToWideCharPortable {
    static std::wstring convert(const utString& text) {
        return nmkMultiByteToWideChar::portable_impl(text);
    }
    static std::size_t length(const utString& text) {
        return nmkMultiByteToWideChar::portable_length(text);
    }
};

struct nmkWideCharToMultiBytePortable {
    static utString convert(const wchar_t* text) {
        return nmkWideCharToMultiByte::portable_impl(text);
    }
};

namespace {

struct Widened {
    const char* name;
    std::string bytes;
    std::wstring wide;
};

const Widened widened_cases[] = {
    {"empty", "", L""},
    {"one_character", "x", L"x"},
    {"two_bytes", "\xC3\xA4", L"\u00E4"},
    {"three_bytes", "\xE2\x82\xAC", L"\u20AC"},
    {"four_bytes_are_two_units", "\xF0\x9F\x98\x80", {wchar_t(0xD83D), wchar_t(0xDE00)}},
    {"nul_inside", std::string("a\0b", 3), std::wstring(L"a\0b", 3)},
    {"stray_trail_byte", "a\x80z", L"a\uFFFDz"},
    {"cut_character", "a\xE2\x82", L"a\uFFFD"},
    {"cut_character_before_another", "\xF0\x9F\x98 x", L"\uFFFD x"},
    {"overlong_form", "\xC0\x80", L"\uFFFD\uFFFD"},
    {"encoded_surrogate", "\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},
};

}  // namespace

TEST(nmkMultiByteToWideChar, gives_one_unit_for_each_character_or_ill_formed_part) {
    for (const Widened& each : widened_cases) {
        EXPECT_EQ(nmkMultiByteToWideChar::convert(utString(each.bytes)), each.wide) << each.name;
        EXPECT_EQ(nmkMultiByteToWideChar::length(utString(each.bytes)), each.wide.size())
            << each.name;
    }
}

TEST(nmkMultiByteToWideChar, takes_the_null_string_for_an_empty_text) {
    EXPECT_EQ(nmkMultiByteToWideChar::length(utString()), 0U);
    EXPECT_EQ(nmkMultiByteToWideChar::convert(utString()), L"");
}

TEST(nmkMultiByteToWideChar, reads_the_code_page_that_the_host_chose) {
    const ScopedCodePage western(ap_code_page_western);
    EXPECT_EQ(nmkMultiByteToWideChar::convert("\xE4\x80"), L"\u00E4\u20AC");
}

TEST(nmkMultiByteToWideChar, has_a_portable_form_of_its_own) {
    EXPECT_EQ(nmkMultiByteToWideCharPortable::convert("plain"), L"plain");
    EXPECT_EQ(nmkMultiByteToWideCharPortable::length("plain"), 5U);
    EXPECT_EQ(nmkMultiByteToWideCharPortable::length(utString()), 0U);
    EXPECT_EQ(nmkMultiByteToWideCharPortable::length("\xFF\xFE"), 0U) << "no ASCII: fails";
    EXPECT_EQ(nmkMultiByteToWideCharPortable::convert("\xFF\xFE"), L"");
}

TEST(nmkWideCharToMultiByte, undoes_the_conversion_of_well_formed_text) {
    for (const Widened& each : widened_cases) {
        if (each.wide.find(wchar_t(0xFFFD)) == each.wide.npos &&
            each.wide.find(L'\0') == each.wide.npos) {
            EXPECT_EQ(nmkWideCharToMultiByte::convert(each.wide.c_str()).view(), each.bytes)
                << each.name;
        }
    }
}

TEST(nmkWideCharToMultiByte, substitutes_a_surrogate_without_its_other_half) {
    const wchar_t leading[] = {L'a', wchar_t(0xD83D), L'b', 0};
    const wchar_t trailing[] = {wchar_t(0xDE00), 0};
    EXPECT_EQ(nmkWideCharToMultiByte::convert(leading).view(),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(nmkWideCharToMultiByte::convert(trailing).view(), replacement);
}

TEST(nmkWideCharToMultiByte, gives_the_null_string_for_a_null_pointer) {
    EXPECT_TRUE(nmkWideCharToMultiByte::convert(nullptr).is_null());
    EXPECT_FALSE(nmkWideCharToMultiByte::convert(L"").is_null());
}

TEST(nmkWideCharToMultiByte, substitutes_what_the_code_page_lacks) {
    const ScopedCodePage western(ap_code_page_western);
    EXPECT_EQ(nmkWideCharToMultiByte::convert(L"\u20AC\u65E5").view(), "\x80?");
}

TEST(nmkWideCharToMultiByte, reads_a_buffer_of_exactly_its_size) {
    const std::wstring whole = nmkMultiByteToWideChar::convert(utString(everything()));
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const auto exact = std::make_unique<wchar_t[]>(size + 1);
        std::copy_n(whole.data(), size, exact.get());
        const utString narrow = nmkWideCharToMultiByte::convert(exact.get());
        EXPECT_LE(narrow.view().size(), 4 * size) << size;
    }
}

TEST(nmkWideCharToMultiByte, has_a_portable_form_of_its_own) {
    EXPECT_EQ(nmkWideCharToMultiBytePortable::convert(L"plain").view(), "plain");
    EXPECT_TRUE(nmkWideCharToMultiBytePortable::convert(nullptr).is_null());
    const wchar_t surrogate[] = {wchar_t(0xD83D), 0};
    EXPECT_TRUE(nmkWideCharToMultiBytePortable::convert(surrogate).is_null());
}

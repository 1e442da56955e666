#include <nmktoolbox/files/nmkWideConverter.h>

#include "files/text_samples.h"

#include <gtest/gtest.h>

#include <cwchar>

TEST(nmkWideConverter, starts_with_room_for_256_and_keeps_it_for_255_characters) {
    nmkWideConverter converter;
    EXPECT_EQ(converter.capacity(), 256);
    converter.convert(utString(std::string(255, 'x')));
    EXPECT_EQ(converter.capacity(), 256);
}

TEST(nmkWideConverter, expands_for_exactly_256_characters) {
    nmkWideConverter converter;
    const wchar_t* wide = converter.convert(utString(std::string(256, 'x')));
    EXPECT_EQ(converter.capacity(), 512);
    EXPECT_EQ(std::wcslen(wide), 256U);
}

TEST(nmkWideConverter, counts_code_units_and_not_bytes) {
    nmkWideConverter converter;
    std::string text;
    for (int i = 0; i < 127; ++i) {
        text += smiley;
    }
    converter.convert(utString(text));
    EXPECT_EQ(converter.capacity(), 256);
    converter.convert(utString(text + std::string(smiley)));
    EXPECT_EQ(converter.capacity(), 512);
}

TEST(nmkWideConverter, doubles_until_the_text_fits_and_never_shrinks) {
    nmkWideConverter converter;
    converter.convert(utString(std::string(5000, 'x')));
    EXPECT_EQ(converter.capacity(), 8192);
    EXPECT_EQ(std::wstring(converter.convert("short")), L"short");
    EXPECT_EQ(converter.capacity(), 8192);
}

TEST(nmkWideConverter, gives_an_empty_text_for_the_null_string) {
    nmkWideConverter converter;
    converter.convert("something");
    EXPECT_EQ(std::wstring(converter.convert(utString())), L"");
    EXPECT_EQ(std::wstring(converter.convert("")), L"");
}

TEST(nmkWideConverter, keeps_a_nul_inside) {
    nmkWideConverter converter;
    const wchar_t* wide = converter.convert(utString(std::string("a\0b", 3)));
    EXPECT_EQ(std::wstring(wide, 4), std::wstring(L"a\0b\0", 4));
}

#include <nmktoolbox/files/nmk_transcode.h>

#include "files/text_samples.h"

#include <apsl/apStringEncodings.h>

#include <gtest/gtest.h>

TEST(nmk_transcode, goes_both_ways_by_the_encoding_given) {
    const apString1252Encoding western;
    int status = -1;
    const apString wide = nmk_transcode(western, utString("\xE4\x80"), status);
    EXPECT_EQ(wide.view(), L"\u00E4\u20AC");
    EXPECT_NE(status, 0);
    status = -1;
    EXPECT_EQ(nmk_transcode(western, wide, status).view(), "\xE4\x80");
    EXPECT_NE(status, 0);
}

TEST(nmk_transcode, tells_that_something_was_substituted) {
    const apStringUTF8Encoding utf8;
    int status = -1;
    EXPECT_EQ(nmk_transcode(utf8, utString("\xFF"), status).view(), L"\uFFFD");
    EXPECT_EQ(status, 0);
    status = -1;
    EXPECT_EQ(nmk_transcode(apString1252Encoding(), apString(L"\u65E5"), status).view(), "?");
    EXPECT_EQ(status, 0);
}

TEST(nmk_transcode, gives_empty_text_for_none_and_leaves_the_status) {
    const apStringUTF8Encoding utf8;
    int status = 77;
    EXPECT_TRUE(nmk_transcode(utf8, utString(), status).is_valid());
    EXPECT_EQ(nmk_transcode(utf8, utString(), status).length(), 0);
    EXPECT_EQ(nmk_transcode(utString(), status).length(), 0);
    EXPECT_EQ(nmk_transcode(utf8, apString(), status), utString(""));
    EXPECT_EQ(nmk_transcode(apString(), status), utString(""));
    EXPECT_EQ(status, 77);
}

TEST(nmk_transcode, uses_the_encoding_of_narrow_text_while_none_is_set) {
    EXPECT_EQ(g_transcode_encoding, nullptr);
    ASSERT_NE(nmk_transcode_encoding(), nullptr);
    int status = 0;
    EXPECT_EQ(nmk_transcode(utString(euro), status).view(), L"\u20AC");
    EXPECT_EQ(nmk_transcode(apString(L"\u20AC"), status).view(), euro);
}

TEST(nmk_transcode, answers_the_encoding_set_before) {
    const apString1252Encoding western;
    EXPECT_EQ(nmk_set_transcode_encoding(&western), nullptr);
    EXPECT_EQ(nmk_transcode_encoding(), &western);
    EXPECT_EQ(g_transcode_encoding, &western);
    int status = 0;
    EXPECT_EQ(nmk_transcode(utString("\x80"), status).view(), L"\u20AC");
    EXPECT_EQ(nmk_set_transcode_encoding(nullptr), &western);
    EXPECT_NE(nmk_transcode_encoding(), &western);
}

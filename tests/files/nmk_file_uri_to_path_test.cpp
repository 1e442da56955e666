#include <nmktoolbox/files/nmk_file_uri_to_path.h>

#include <gtest/gtest.h>

namespace {

struct Uri {
    const char* uri;
    const char* path;  // null for the null string
};

const Uri uri_cases[] = {
    {"file:/C:/dir", "C:/dir"},
    {"file:///C:/dir", "C:/dir"},
    {"file://server/share", "\\\\server/share"},
    {"file:////server/share", "\\\\server/share"},
    {"file://///server", nullptr},
    {"file:///////x", nullptr},
    {"file:x", nullptr},
    {"file:", nullptr},
    {"file:///", nullptr},
    {"file", nullptr},
    {"", nullptr},
    {"x", nullptr},
    {"http://x", nullptr},
    {"FILE:///x", nullptr},
    {" file:///x", nullptr},
    {"file:///a%20b/c\\d", "a%20b/c\\d"},
    {"file:///\xFF\xC3\xA4\xF0\x9F\x98\x80", "\xFF\xC3\xA4\xF0\x9F\x98\x80"},
};

}  // namespace

TEST(nmk_file_uri_to_path, goes_by_the_number_of_slashes) {
    for (const Uri& each : uri_cases) {
        EXPECT_EQ(nmk_file_uri_to_path(each.uri), utString(each.path)) << each.uri;
    }
}

TEST(nmk_file_uri_to_path, keeps_the_null_string_null) {
    EXPECT_TRUE(nmk_file_uri_to_path(utString()).is_null());
}

TEST(nmk_file_uri_to_path, keeps_a_nul_inside) {
    EXPECT_EQ(nmk_file_uri_to_path(utString(std::string("file:/a\0b", 9))).view(),
              std::string("a\0b", 3));
}

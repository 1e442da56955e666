#include <nmktoolbox/files/nmkFilenameExt.h>

#include "files/text_samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace {

struct Named {
    const char* name;
    const char* before;
    const char* after;
};

const Named named_cases[] = {
    {"no_extension", "part", "part.nmt"},
    {"an_extension_stays", "part.tri", "part.tri"},
    {"a_dot_at_the_end_asks_for_none", "part.", "part"},
    {"only_one_dot_is_dropped", "part..", "part."},
    {"one_dot_alone_is_an_extension", ".", "."},
    {"two_dots", "..", "."},
    {"a_dot_in_a_directory_is_none", "v1.2/part", "v1.2/part.nmt"},
    {"a_dot_in_a_directory_of_the_other_system_is_none", "v1.2\\part", "v1.2\\part.nmt"},
    {"a_dot_after_a_directory_is_one", "v1.2/part.tri", "v1.2/part.tri"},
    {"a_dot_first_in_the_name", "dir/.profile", "dir/.profile"},
    {"a_directory_alone", "v1.2/", "v1.2/.nmt"},
    {"empty", "", ".nmt"},
    {"one_character", "p", "p.nmt"},
};

}  // namespace

TEST(nmkFilenameExt, adds_the_extension_to_names_that_have_none) {
    for (const Named& each : named_cases) {
        EXPECT_EQ(nmkMakeFilenameExt(each.before, "nmt").view(), each.after) << each.name;
    }
}

TEST(nmkFilenameExt, leaves_a_null_name_null) {
    EXPECT_TRUE(nmkMakeFilenameExt(nullptr, "nmt").is_null());
    EXPECT_EQ(nmkMakeFilenameExt("part", nullptr).view(), "part.");
}

TEST(nmkFilenameExt, keeps_the_bytes_of_any_name) {
    EXPECT_EQ(nmkMakeFilenameExt("\xFF\xE2\x82", "nmt").view(), "\xFF\xE2\x82.nmt");
}

TEST(nmkFilenameExt, is_there_when_the_name_ends_in_its_letters) {
    EXPECT_EQ(nmkCheckFilenameExt("part.nmt", "nmt"), 1);
    EXPECT_EQ(nmkCheckFilenameExt("part.NmT", "nMt"), 1);
    EXPECT_EQ(nmkCheckFilenameExt("part.tri", "nmt"), 0);
    EXPECT_EQ(nmkCheckFilenameExt("part.nmt.bak", "nmt"), 0);
}

TEST(nmkFilenameExt, needs_no_dot) {
    EXPECT_EQ(nmkCheckFilenameExt("nmt", "nmt"), 1);
    EXPECT_EQ(nmkCheckFilenameExt("partnmt", "nmt"), 1);
    EXPECT_EQ(nmkCheckFilenameExt("part", ""), 1);
    EXPECT_EQ(nmkCheckFilenameExt("", ""), 1);
}

TEST(nmkFilenameExt, is_not_there_for_null_and_for_short_names) {
    EXPECT_EQ(nmkCheckFilenameExt(nullptr, "nmt"), 0);
    EXPECT_EQ(nmkCheckFilenameExt("part", nullptr), 0);
    EXPECT_EQ(nmkCheckFilenameExt("mt", "nmt"), 0);
    EXPECT_EQ(nmkCheckFilenameExt("", "nmt"), 0);
}

TEST(nmkFilenameExt, reads_buffers_of_exactly_their_size) {
    const std::string whole = "v1.2/part\xE2\x82\xAC.name.nmt";
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const auto exact = std::make_unique<char[]>(size + 1);
        std::copy_n(whole.data(), size, exact.get());
        const bool ends = whole.substr(0, size).ends_with("mt");
        EXPECT_EQ(nmkCheckFilenameExt(exact.get(), "MT"), ends ? 1 : 0) << size;
        EXPECT_EQ(nmkCheckFilenameExt("t", exact.get()), size == 0 ? 1 : 0) << size;
        const utString made = nmkMakeFilenameExt(exact.get(), exact.get());
        EXPECT_TRUE(made.view().starts_with(whole.substr(0, size == 0 ? 0 : size - 1))) << size;
    }
}

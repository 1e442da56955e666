#include <gtest/gtest.h>
#include <utils/utAssert.h>
#include <utils/utTypeID.h>

#include <string>

namespace {

std::string last_message;

void remember(const char* message, const char*, int, const char*) { last_message = message; }

}  // namespace

TEST(utAssert, passes_failures_to_the_installed_handler) {
    const utAssertHandler before = ut_set_assert_handler(remember);
    UT_ASSERT(1 + 1 == 2, "holds");
    EXPECT_EQ(last_message, "");
    UT_ASSERT(1 + 1 == 3, "does not hold");
    EXPECT_EQ(last_message, "does not hold");
    EXPECT_EQ(ut_set_assert_handler(before), &remember);
}

TEST(utAssert, null_installs_the_default_handler) {
    ut_set_assert_handler(remember);
    EXPECT_EQ(ut_set_assert_handler(nullptr), &remember);
    testing::internal::CaptureStderr();
    ut_assert_failed("message", "file.cpp", 12, "function");
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
}

TEST(utAssert, continues_after_writing_to_standard_error_by_default) {
    testing::internal::CaptureStderr();
    ut_assert_failed("message", "file.cpp", 12, "function");
    ut_assert_failed(nullptr, nullptr, 0, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "file.cpp:12: assertion failed in function: message\n"
              ":0: assertion failed in : \n");
}

TEST(utTypeID, compares_bases_by_address) {
    static const utTypeID base("base");
    static const utTypeID derived("derived", &base);
    static const utTypeID namesake("base");
    EXPECT_TRUE(derived.is_kind_of(base));
    EXPECT_TRUE(derived.is_kind_of(derived));
    EXPECT_FALSE(base.is_kind_of(derived));
    EXPECT_FALSE(derived.is_kind_of(namesake));
    EXPECT_FALSE(base == namesake);
    EXPECT_STREQ(derived.name(), "derived");
    EXPECT_EQ(derived.base(), &base);
    EXPECT_EQ(base.base(), nullptr);
}

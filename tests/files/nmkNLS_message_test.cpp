#include <nmktoolbox/files/nmkNLS_message.h>

#include <gtest/gtest.h>

namespace {

const char* translate(const char* text, void* data) {
    ++*static_cast<int*>(data);
    return text == nullptr ? "nothing" : "translated";
}

class nmkNLS_message : public testing::Test {
  protected:
    ~nmkNLS_message() override { nmkNLS_message_set_callback(nullptr, nullptr); }
    int calls = 0;
};

}  // namespace

TEST_F(nmkNLS_message, gives_the_text_back_while_nothing_is_set) {
    const char* text = "text";
    EXPECT_EQ(nmkNLS_get_translated_message(text), text);
}

TEST_F(nmkNLS_message, asks_the_callback_with_its_data) {
    nmkNLS_message_set_callback(translate, &calls);
    EXPECT_STREQ(nmkNLS_get_translated_message("text"), "translated");
    EXPECT_STREQ(nmkNLS_get_translated_message(nullptr), "nothing");
    EXPECT_EQ(calls, 2);
}

TEST_F(nmkNLS_message, is_disabled_by_a_null_data_pointer) {
    nmkNLS_message_set_callback(translate, nullptr);
    EXPECT_STREQ(nmkNLS_get_translated_message("text"), "text");
}

TEST_F(nmkNLS_message, is_disabled_by_a_null_callback) {
    nmkNLS_message_set_callback(nullptr, &calls);
    EXPECT_STREQ(nmkNLS_get_translated_message("text"), "text");
    EXPECT_EQ(calls, 0);
}

#include <gtest/gtest.h>
#include <nmktoolbox/runtime/nmkCtrlBreakTask.h>
#include <nmktoolbox/runtime/nmkDialogIndir.h>

#include <memory>
#include <string>

namespace {

int shown_number = 0;
std::string shown_text;
bool is_text_missing = false;

int show(int number, const char* text) {
    shown_number = number;
    is_text_missing = text == nullptr;
    shown_text = text != nullptr ? text : "";
    return 42;
}

class nmkCtrlBreakTaskTest : public testing::Test {
  protected:
    nmkCtrlBreakTaskTest() { nmkDialogIndir::SetFunction(nmkDIProgressDialog(), show); }
    ~nmkCtrlBreakTaskTest() override {
        nmkDialogIndir::SetFunction(nmkDIProgressDialog(), nullptr);
    }
};

using nmkCtrlBreakTask_do_it = nmkCtrlBreakTaskTest;

}  // namespace

TEST_F(nmkCtrlBreakTask_do_it, shows_the_dialog_and_returns_its_result) {
    const std::unique_ptr<thrTask> task = std::make_unique<nmkCtrlBreakTask>(-7, "milling");
    EXPECT_EQ(task->do_it(), 42);
    EXPECT_EQ(shown_number, -7);
    EXPECT_EQ(shown_text, "milling");
}

TEST_F(nmkCtrlBreakTask_do_it, shows_a_copy_of_the_text) {
    char text[] = "milling";
    nmkCtrlBreakTask task(1, text);
    text[0] = 'X';
    task.do_it();
    EXPECT_EQ(shown_text, "milling");
}

TEST_F(nmkCtrlBreakTask_do_it, passes_a_missing_text_on_as_missing) {
    nmkCtrlBreakTask(1, nullptr).do_it();
    EXPECT_TRUE(is_text_missing);
}

TEST_F(nmkCtrlBreakTask_do_it, returns_0_where_the_host_has_no_dialog) {
    nmkDialogIndir::SetFunction(nmkDIProgressDialog(), nullptr);
    EXPECT_EQ(nmkCtrlBreakTask(1, "milling").do_it(), 0);
}

#include <nmktoolbox/runtime/nmkCtrlBreakTask.h>
#include <nmktoolbox/runtime/nmkDialogIndir.h>

nmkCtrlBreakTask::nmkCtrlBreakTask(int number, const char* text) : m_text(text), m_number(number) {}

nmkCtrlBreakTask::~nmkCtrlBreakTask() = default;

int nmkCtrlBreakTask::do_it() { return nmkDialogIndir::progress_dialog(m_number, m_text.c_str()); }

#include <nmktoolbox/runtime/nmkDialogIndir.h>

namespace {

int (*break_function)() = nullptr;
int (*break_and_cancel_function)() = nullptr;
void (*post_function)(const char*) = nullptr;
void (*unpost_function)() = nullptr;
int (*progress_function)(int, const char*) = nullptr;

}  // namespace

nmkDialogIndir::nmkDialogIndir() : m_reserved{} {}

void nmkDialogIndir::SetFunction(nmkDIDialogBreak, int (*function)()) { break_function = function; }

void nmkDialogIndir::SetFunction(nmkDIDialogBreakCancel, int (*function)()) {
    break_and_cancel_function = function;
}

void nmkDialogIndir::SetFunction(nmkDIPostitNotePost, void (*function)(const char* text)) {
    post_function = function;
}

void nmkDialogIndir::SetFunction(nmkDIPostitNoteUnpost, void (*function)()) {
    unpost_function = function;
}

void nmkDialogIndir::SetFunction(nmkDIProgressDialog,
                                 int (*function)(int number, const char* text)) {
    progress_function = function;
}

int nmkDialogIndir::dialog_break() { return break_function != nullptr ? break_function() : 0; }

int nmkDialogIndir::dialog_break_and_cancel() {
    return break_and_cancel_function != nullptr ? break_and_cancel_function() : 0;
}

int nmkDialogIndir::progress_dialog(int number, const char* text) {
    return progress_function != nullptr ? progress_function(number, text) : 0;
}

void nmkDialogIndir::postitnote_post(const char* text) {
    if (post_function != nullptr) post_function(text);
}

void nmkDialogIndir::postitnote_unpost() {
    if (unpost_function != nullptr) unpost_function();
}

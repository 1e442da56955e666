// nmkDialogIndir: progress and break dialogs of the host, through functions that it sets.
//
// The functions are shared by the process and not locked: the host sets all that it provides before
// other threads use them.
#pragma once

#include <nmktoolbox/export.h>

/// Each of these only selects an overload of SetFunction; the values are not read.
enum nmkDIDialogBreak { nmk_di_dialog_break = 0 };
enum nmkDIDialogBreakCancel { nmk_di_dialog_break_cancel = 0 };
enum nmkDIPostitNotePost { nmk_di_postit_note_post = 0 };
enum nmkDIPostitNoteUnpost { nmk_di_postit_note_unpost = 0 };
enum nmkDIProgressDialog { nmk_di_progress_dialog = 0 };

class NMKTOOLBOX_EXPORT nmkDialogIndir {
  public:
    nmkDialogIndir();

    /// Sets the function of the operation of the same name; null removes it.
    static void SetFunction(nmkDIDialogBreak, int (*function)());
    static void SetFunction(nmkDIDialogBreakCancel, int (*function)());
    static void SetFunction(nmkDIPostitNotePost, void (*function)(const char* text));
    static void SetFunction(nmkDIPostitNoteUnpost, void (*function)());
    static void SetFunction(nmkDIProgressDialog, int (*function)(int number, const char* text));

    /// Each of these calls its function and returns the result; 0 when no function is set.
    static int dialog_break();
    static int dialog_break_and_cancel();
    static int progress_dialog(int number, const char* text);

    /// Each of these calls its function; nothing happens when no function is set.
    static void postitnote_post(const char* text);
    static void postitnote_unpost();

  private:
    // Deliberate: no operation reads these. They are part of the layout of the class that hosts
    // were compiled with.
    [[maybe_unused]] int m_reserved[5];
};

// nmkCtrlBreakTask: a task that shows the progress dialog of the host.
#pragma once

#include <nmktoolbox/export.h>
#include <thread/thrTask.h>
#include <utils/utString.h>

class NMKTOOLBOX_EXPORT nmkCtrlBreakTask : public thrTask {
  public:
    /// Arguments of nmkDialogIndir::progress_dialog, for later; the text is copied.
    nmkCtrlBreakTask(int number, const char* text);
    ~nmkCtrlBreakTask() override;

    /// Calls nmkDialogIndir::progress_dialog and returns its result.
    int do_it() override;

  private:
    utString m_text;
    int m_number;
};

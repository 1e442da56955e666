// nmkClipboardAbs: the host's clipboard, a service named "clipboard".
//
// A host that has no clipboard registers none, and callers continue without it.
#pragma once

#include <ncamcontainer/coPrf.h>
#include <nmktoolbox/export.h>
#include <utils/utService.h>

class CFile;
using CFilecoPrf = coPrf<CFile>;

class NMKTOOLBOX_EXPORT nmkClipboardAbs : public utService {
  public:
    ~nmkClipboardAbs() override;

    /// The clipboard's data in the format of that name, "nmt" for example; null when there is none.
    virtual CFilecoPrf get_data(const utString& format) = 0;

    /// Puts data of the format of that name on the clipboard; not called by this library.
    virtual int put_data(const utString& format, const CFilecoPrf& data) = 0;

    /// Non-zero when the clipboard has data in that format; not called by this library.
    virtual int has_data(const utString& format) = 0;
};

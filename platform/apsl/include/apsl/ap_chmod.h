// ap_chmod.h: the access bits of a file.
#pragma once

#include <utils/utExport.h>

/// Gives the file the access bits `mode` (0600 lets its owner read and write). Answers 0, or -1
/// where there is no such file, the name is null, or it may not be done.
UT_EXPORT int ap_chmod(const char* name, int mode) noexcept;

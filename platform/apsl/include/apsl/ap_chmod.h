// ap_chmod.h: the mode of a file.
#pragma once

#include <utils/utExport.h>

/// Sets the mode of a file (0600: its owner reads and writes it). A symlink is never followed, so
/// one put in the place of the file cannot pass the mode on to another file.
///
///   returns   0; or -1 with errno: ENOENT no such file, EINVAL a null name, EOPNOTSUPP a symlink,
///             EPERM not the owner
UT_EXPORT int ap_chmod(const char* name, int mode) noexcept;

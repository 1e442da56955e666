// nmkBaseNameExt: the name of a file in a path of either system.
//
// The name begins behind the last "/" or backslash. The path is read in `encoding`; null stands for
// the encoding that narrow text is in. Ill-formed parts come through as they are. Null for null.
#pragma once

#include <nmktoolbox/export.h>

#include <apsl/apIStringEncoding.h>
#include <utils/utString.h>

/// The name up to its last "."; all of it where there is none. A name that begins with its only dot
/// is empty.
NMKTOOLBOX_EXPORT utString nmkBaseName(const utString& path, const apIStringEncoding* encoding);

/// The whole name.
NMKTOOLBOX_EXPORT utString nmkBaseNameExt(const utString& path, const apIStringEncoding* encoding);

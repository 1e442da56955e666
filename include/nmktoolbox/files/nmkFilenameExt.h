// nmkFilenameExt: extensions of file names, in bytes.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// 1 if `name` ends in the letters of `ext`, A to Z taken for a to z; else 0. 0 if either is null.
/// Nothing asks for a dot: a name that ends in these letters has that extension.
NMKTOOLBOX_EXPORT int nmkCheckFilenameExt(const char* name, const char* ext);

/// The name with "." and `ext` at its end, unless it has an extension already or, by a "." at the
/// end of two bytes or more, asks for none; that dot is dropped.
///
/// A "." followed by a "/" or a backslash belongs to a directory. Null for a null `name`; a null
/// `ext` counts as the empty text.
NMKTOOLBOX_EXPORT utString nmkMakeFilenameExt(const char* name, const char* ext);

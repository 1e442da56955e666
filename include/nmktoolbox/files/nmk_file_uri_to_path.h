// nmk_file_uri_to_path: the path that a "file:" URI names.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// What follows the slashes behind "file:", neither decoded nor with its slashes changed: as it
/// is behind one or three of them, with two backslashes before it, as a network path, behind
/// two or four. Null for any other count, an empty rest, another scheme and the null string.
NMKTOOLBOX_EXPORT utString nmk_file_uri_to_path(utString uri);

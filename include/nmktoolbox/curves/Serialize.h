// Serialize.h: a text in an archive.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

class CArchive;

/// Writes or reads a text, by the direction of the archive, as its bytes and one nul, without a
/// length. A text with a nul inside is written up to that; the null string is written as the empty
/// text and so comes back as it. A text without its nul throws endOfFile and leaves `text` alone.
NMKTOOLBOX_EXPORT void Serialize(utString& text, CArchive& archive);

// nmkreadline: lines of a stream.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

#include <istream>

/// Reads up to, not including, the delimiter or the end of the stream; NUL bytes are kept.
///
///   skip_delimiter  1 takes the delimiter too, so that the next call reads the next line
///   returns         the stream: it has failed when there was no line left, so that
///                   `while (nmkreadline(...))` sees all lines, the last one with or without its
///                   delimiter, and the empty ones
NMKTOOLBOX_EXPORT std::istream& nmkreadline(std::istream& stream, utString& line, char delimiter,
                                            int skip_delimiter);

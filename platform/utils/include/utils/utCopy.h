// utCopy.h: the tag that asks for a copy where a copy is costly enough to be said aloud.
#pragma once

/// Picks the copying overload of a constructor or of `become`.
struct utCopy {};

// utCopy.h: the tag of copies that are explicit because they are costly.
#pragma once

/// Selects the copying overload of a constructor or of `become`.
struct utCopy {};

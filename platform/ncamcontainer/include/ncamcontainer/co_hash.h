// co_hash.h: the hash that the containers use for a range of bytes.
#pragma once

#include <utils/utExport.h>

/// Hash of the `size` bytes at `bytes`. A size of 0 or less hashes nothing, whatever `bytes` is.
///
/// The same bytes give the same hash in every process and on every processor of one byte order.
/// Method: XXH3, both halves of its 64 bits folded together.
UT_EXPORT unsigned int co_hash(const void* bytes, int size);

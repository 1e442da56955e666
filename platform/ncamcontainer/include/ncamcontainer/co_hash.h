// co_hash.h: the hash that the containers use for a range of bytes.
#pragma once

#include <utils/utExport.h>

/// Hash of the `size` bytes at `bytes`. With a size of 0 or less, `bytes` is not read and the
/// result is the hash of no bytes.
///
/// The same bytes give the same hash in every process and on every processor of one byte order.
/// Method: XXH3, the two halves of its 64 bits combined by exclusive-or.
UT_EXPORT unsigned int co_hash(const void* bytes, int size);

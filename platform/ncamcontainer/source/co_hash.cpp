#include <ncamcontainer/co_hash.h>

#include <cstddef>
#include <cstdint>

// Compiled in, not linked: keys are short, and a call would cost more than the hash.
#define XXH_INLINE_ALL
#include <xxhash.h>

unsigned int co_hash(const void* bytes, int size) {
    const char nothing = 0;
    const bool has_bytes = size > 0;
    const std::uint64_t hash =
        XXH3_64bits(has_bytes ? bytes : &nothing, has_bytes ? static_cast<std::size_t>(size) : 0U);
    return static_cast<unsigned int>(hash ^ (hash >> 32));
}

// gi_hash_point.h: the hash of a place.
//
// Method: the product of two 64-bit words, folded; Wang Yi, wyhash. Every bit of a coordinate
// reaches every bit of the hash, so that round coordinates, which share their low bits, spread.
#pragma once

#include <geometry/giPoint3.h>

#include <bit>
#include <cstdint>

/// The high and the low half of the product, exclusively or-ed.
inline std::uint64_t gi_fold_product(std::uint64_t a, std::uint64_t b) noexcept {
    __extension__ using Product = unsigned __int128;
    const Product product = static_cast<Product>(a) * b;
    return static_cast<std::uint64_t>(product >> 64) ^ static_cast<std::uint64_t>(product);
}

/// Equal points have equal hashes (0 and -0 too); another seed gives other hashes.
inline std::uint64_t gi_hash_point(const giPoint3& point, std::uint64_t seed) noexcept {
    // Adding 0 makes -0 to 0.
    const auto x = std::bit_cast<std::uint64_t>(point.x + 0.0);
    const auto y = std::bit_cast<std::uint64_t>(point.y + 0.0);
    const auto z = std::bit_cast<std::uint64_t>(point.z + 0.0);
    const std::uint64_t first =
        gi_fold_product(x ^ seed ^ 0x9E3779B97F4A7C15U, y ^ 0xD1B54A32D192ED03U);
    return gi_fold_product(first ^ z, seed ^ 0x8BB84B93962EACC9U);
}

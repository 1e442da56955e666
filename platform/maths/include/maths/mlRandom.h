// mlRandom.h: a small generator of pseudo-random numbers, the same on every machine.
//
// A linear congruential generator modulo 2^32 that returns bits 16 to 30 of its word. It is fast
// and repeatable and nothing more: its low bits are weak, and it must never guard a secret.
#pragma once

#include <cstdint>

/// One word of state. A copy continues the same sequence independently.
class mlRandom {
  public:
    static constexpr std::uint32_t multiplier = 214013U;
    static constexpr std::uint32_t increment = 2531011U;

    /// The largest number that is drawn.
    static constexpr int max_drawn = 32767;

    /// `seed` becomes the first word; a negative one is taken modulo 2^32.
    explicit mlRandom(std::int32_t seed) noexcept : word(static_cast<std::uint32_t>(seed)) {}

    /// Steps the word once and returns 15 bits of it, 0 to max_drawn.
    int draw() noexcept {
        word = word * multiplier + increment;
        return drawn_from(word);
    }

    /// The number that is drawn when a step has led to `word`.
    static constexpr int drawn_from(std::uint32_t word) noexcept {
        return static_cast<int>((word >> 16) & std::uint32_t{max_drawn});
    }

    std::uint32_t word;  // public, so that a caller may seed it again or step it in place
};

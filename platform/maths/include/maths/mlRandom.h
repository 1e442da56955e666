// mlRandom.h: a small generator of pseudo-random numbers, the same on every machine.
//
// A linear congruential generator modulo 2^32 that hands out bits 16 to 30 of its word. It is fast
// and repeatable and nothing more: its low bits are weak, and it must never guard a secret.
#pragma once

#include <cstdint>

/// One word of state; a copy goes on from the same place on its own.
class mlRandom {
  public:
    /// `seed` becomes the first word; a negative one is taken modulo 2^32.
    explicit mlRandom(std::int32_t seed) noexcept : word(static_cast<std::uint32_t>(seed)) {}

    /// Steps the word once and answers 15 bits of it, 0 to 32767.
    int draw() noexcept {
        word = word * multiplier + increment;
        return static_cast<int>((word >> 16) & 0x7FFFU);
    }

    std::uint32_t word;  // open, so that a caller may seed it again or step it in place

  private:
    static constexpr std::uint32_t multiplier = 214013U;
    static constexpr std::uint32_t increment = 2531011U;
};

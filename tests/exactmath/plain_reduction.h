// plain_reduction: angles of any size brought within an eighth of a turn, digit by digit.
//
// Pi by Machin's formula, and the angle doubled and reduced for each of its binary digits, in fixed
// point numbers of 1280 bits: enough for the largest doubles.
#pragma once

#include <array>
#include <cmath>
#include <compare>
#include <cstdint>

#include "exactmath/binary128.h"
#include "exactmath/plain_sine.h"

namespace plain_reduction {

/// Word 0 is the integer part, word i has the weight 2^(-32 i).
struct Fixed {
    std::array<std::uint32_t, 41> words{};

    auto operator<=>(const Fixed&) const = default;

    static Fixed of(std::uint32_t integer) {
        Fixed x;
        x.words[0] = integer;
        return x;
    }
    Fixed& operator+=(const Fixed& other) {
        std::uint64_t carry = 0;
        for (std::size_t i = words.size(); i-- > 0;) {
            carry += std::uint64_t{words[i]} + other.words[i];
            words[i] = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
        return *this;
    }
    Fixed& operator-=(const Fixed& other) {
        std::uint64_t borrow = 0;
        for (std::size_t i = words.size(); i-- > 0;) {
            const std::uint64_t difference = std::uint64_t{words[i]} - other.words[i] - borrow;
            words[i] = static_cast<std::uint32_t>(difference);
            borrow = (difference >> 32) & 1;
        }
        return *this;
    }
    Fixed& operator/=(std::uint32_t divisor) {
        std::uint64_t rest = 0;
        for (std::uint32_t& word : words) {
            rest = (rest << 32) | word;
            word = static_cast<std::uint32_t>(rest / divisor);
            rest %= divisor;
        }
        return *this;
    }
    explicit operator Binary128() const {
        Binary128 sum = 0;
        Binary128 weight = 1;
        for (const std::uint32_t word : words) {
            sum += weight * word;
            weight /= 4294967296.0;
        }
        return sum;
    }
};

/// `factor` times the arctangent of 1 / n.
inline Fixed arctangent_of_reciprocal(std::uint32_t factor, std::uint32_t n) {
    Fixed power = Fixed::of(factor);
    power /= n;
    Fixed sum = power;
    for (std::uint32_t k = 3; power != Fixed{}; k += 2) {
        power /= n * n;
        Fixed term = power;
        term /= k;
        if (k % 4 == 3) {
            sum -= term;
        } else {
            sum += term;
        }
    }
    return sum;
}

inline const Fixed& half_pi() {
    static const Fixed by_machin = [] {
        Fixed sum = arctangent_of_reciprocal(8, 5);
        sum -= arctangent_of_reciprocal(2, 239);
        return sum;
    }();
    return by_machin;
}

/// A number from 0 to below 1.
inline Fixed fixed_fraction(double fraction) {
    Fixed x;
    for (std::size_t i = 1; fraction != 0.0; ++i) {
        fraction *= 4294967296.0;
        x.words[i] = static_cast<std::uint32_t>(fraction);
        fraction -= x.words[i];
    }
    return x;
}

/// A positive angle less its quarters of a turn, which are counted up to whole turns.
struct Reduction {
    Fixed rest;
    int quarters = 0;

    explicit Reduction(double angle) {
        int exponent = 0;
        const double mantissa = std::frexp(angle, &exponent);
        const auto digits = static_cast<std::uint64_t>(std::ldexp(mantissa, 53));
        for (int i = 0; i < exponent; ++i) {
            rest += rest;
            quarters *= 2;
            if (i < 53 && ((digits >> (52 - i)) & 1) != 0) rest += Fixed::of(1);
            take_quarters();
        }
        rest += fixed_fraction(angle - std::floor(angle));
        take_quarters();
    }

  private:
    void take_quarters() {
        for (; rest >= half_pi(); rest -= half_pi()) ++quarters;
        quarters %= 4;
    }
};

/// The sine of a positive angle that is turned on by `quarters_more`, rounded once.
inline double sine(double angle, int quarters_more) {
    const Reduction reduction(angle);
    Fixed rest_below_quarter = half_pi();
    rest_below_quarter -= reduction.rest;
    const int quarters = (reduction.quarters + quarters_more) % 4;
    // The smaller of the rest and what it lacks to a quarter: a small result keeps its digits.
    const bool is_small = reduction.rest < rest_below_quarter;
    const auto rest = static_cast<Binary128>(is_small ? reduction.rest : rest_below_quarter);
    const bool is_sine = (quarters % 2 == 0) == is_small;
    const Binary128 size = is_sine ? plain_sine::wide_sine(rest) : plain_sine::wide_cosine(rest);
    return static_cast<double>(quarters < 2 ? size : -size);
}

}  // namespace plain_reduction

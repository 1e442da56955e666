#include "angle_reduction.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace nmk_exact {
namespace {

constexpr DoubleDouble half_pi{0x1.921fb54442d18p+0, 0x1.1a62633145c07p-54};
constexpr int digits_of_double = 53;
constexpr int bits_in_word = 64;

// The binary digits of 2 / pi, behind a word of zeros for the digits before the point.
constexpr std::array<std::uint64_t, 21> two_over_pi = {
    0x0000000000000000, 0xa2f9836e4e441529, 0xfc2757d1f534ddc0, 0xdb6295993c439041,
    0xfe5163abdebbc561, 0xb7246e3a424dd2e0, 0x06492eea09d1921c, 0xfe1deb1cb129a73e,
    0xe88235f52ebb4484, 0xe99c7026b45f7e41, 0x3991d639835339f4, 0x9c845f8bbdf9283b,
    0x1ff897ffde05980f, 0xef2f118b5a0a6d1f, 0x6d367ecf27cb09b7, 0x4f463f669e5fea2d,
    0x7527bac7ebe5f17b, 0x3d0739f78a5292ea, 0x6bfb5fb11f8d5d08, 0x56033046fc7b6bab,
    0xf0cfbc209af4361d};

// A number of 256 bits, the highest word first.
using Bits256 = std::array<std::uint64_t, 4>;

// 256 digits of 2 / pi, the first of which has the weight 2^-first.
Bits256 digits_from(int first) {
    const int position = first - 1 + bits_in_word;
    const auto word = static_cast<std::size_t>(position / bits_in_word);
    const int shift = position % bits_in_word;
    Bits256 digits{};
    for (std::size_t i = 0; i < digits.size(); ++i) {
        digits[i] = two_over_pi[word + i] << shift;
        if (shift != 0) digits[i] |= two_over_pi[word + i + 1] >> (bits_in_word - shift);
    }
    return digits;
}

// The lower 256 bits of the product.
Bits256 product(const Bits256& digits, std::uint64_t factor) {
    __extension__ using Uint128 = unsigned __int128;
    Bits256 result{};
    std::uint64_t carry = 0;
    for (std::size_t i = digits.size(); i-- > 0;) {
        const Uint128 word = Uint128{digits[i]} * factor + carry;
        result[i] = static_cast<std::uint64_t>(word);
        carry = static_cast<std::uint64_t>(word >> bits_in_word);
    }
    return result;
}

Bits256 negative(const Bits256& x) {
    Bits256 result{};
    bool carry = true;
    for (std::size_t i = x.size(); i-- > 0;) {
        result[i] = ~x[i] + (carry ? 1 : 0);
        carry = carry && result[i] == 0;
    }
    return result;
}

Bits256 shifted_left(const Bits256& x, int places) {
    const auto words = static_cast<std::size_t>(places / bits_in_word);
    const int bits = places % bits_in_word;
    Bits256 result{};
    for (std::size_t i = 0; i + words < x.size(); ++i) {
        result[i] = x[i + words] << bits;
        if (bits != 0 && i + words + 1 < x.size())
            result[i] |= x[i + words + 1] >> (bits_in_word - bits);
    }
    return result;
}

int leading_zeros(const Bits256& x) {
    int zeros = 0;
    for (const std::uint64_t word : x) {
        zeros += std::countl_zero(word);
        if (word != 0) break;
    }
    return zeros;
}

// x / 2^256, from its leading 106 bits.
DoubleDouble fraction(const Bits256& x) {
    const int zeros = leading_zeros(x);
    const Bits256 digits = shifted_left(x, zeros);
    const auto high = static_cast<double>(digits[0] >> 11);
    const auto low = static_cast<double>(((digits[0] & 0x7FF) << 42) | (digits[1] >> 22));
    return quick_sum(std::ldexp(high, -digits_of_double - zeros),
                     std::ldexp(low, -2 * digits_of_double - zeros));
}

}  // namespace

ReducedAngle reduced_angle(double angle) {
    int exponent = 0;
    const double mantissa = std::frexp(std::fabs(angle), &exponent);
    const auto digits = static_cast<std::uint64_t>(std::ldexp(mantissa, digits_of_double));
    // Digits of 2 / pi before the first one here give whole turns. The result has two bits before
    // the point.
    const Bits256 quarters = product(digits_from(exponent - digits_of_double - 1), digits);
    const Bits256 beyond = shifted_left(quarters, 2);
    const bool is_above_half = (beyond[0] >> 63) != 0;
    const DoubleDouble part = is_above_half ? -fraction(negative(beyond)) : fraction(beyond);
    const int whole = static_cast<int>(quarters[0] >> 62) + (is_above_half ? 1 : 0);
    const int signed_whole = angle < 0.0 ? 4 - whole : whole;
    const DoubleDouble rest = part * half_pi;
    return {signed_whole & 3, angle < 0.0 ? -rest : rest};
}

}  // namespace nmk_exact

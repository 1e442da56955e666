// flat_arithmetic_test.cpp: draws and remainders of the flat loops beside plain arithmetic.

#include <gtest/gtest.h>

#include "ordering/flat_arithmetic.h"

namespace {

using nmk_ordering::DrawRemainder;
using nmk_ordering::GeneratorLeap;

TEST(flat_arithmetic, takes_the_remainder_of_every_draw) {
    for (int divisor :
         {1, 2, 3, 7, 10, 97, 100, 127, 1000, 10000, 16384, 32767, 32768, 40000, 1000000}) {
        const DrawRemainder remainder(divisor);
        for (int draw = 0; draw <= 32767; ++draw) {
            ASSERT_EQ(remainder.of(draw), draw % divisor) << divisor;
        }
    }
}

TEST(flat_arithmetic, takes_the_remainder_by_every_divisor) {
    for (int divisor = 1; divisor <= 33000; ++divisor) {
        const DrawRemainder remainder(divisor);
        // The draws next to multiples are those that an inexact quotient would get wrong.
        for (int draw : {0, divisor - 1, divisor, 2 * divisor - 1, 32767 / divisor * divisor - 1,
                         32767 / divisor * divisor, 32767}) {
            if (draw < 0 || draw > 32767) continue;
            ASSERT_EQ(remainder.of(draw), draw % divisor) << divisor;
        }
    }
}

TEST(flat_arithmetic, leaps_as_far_as_single_steps_go) {
    mlRandom random(12345);
    for (int count = 0; count < 5; ++count) {
        mlRandom stepped = random;
        for (int k = 0; k < count; ++k) stepped.draw();
        EXPECT_EQ(GeneratorLeap(count).from(random.word), stepped.word);
    }
}

}  // namespace

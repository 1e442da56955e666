// The generator's words and draws, on which every ordering depends.

#include <maths/mlRandom.h>

#include <gtest/gtest.h>

TEST(mlRandom, draws_the_known_numbers_from_seed_1) {
    mlRandom random(1);
    for (const int expected : {41, 18467, 6334, 26500, 19169, 15724, 11478, 29358}) {
        EXPECT_EQ(random.draw(), expected);
    }
}

TEST(mlRandom, the_seed_is_the_first_word_and_a_negative_one_wraps) {
    EXPECT_EQ(mlRandom(7).word, 7U);
    EXPECT_EQ(mlRandom(-1).word, 0xFFFFFFFFU);
}

TEST(mlRandom, the_word_steps_modulo_two_to_the_32) {
    mlRandom random(-1);
    random.draw();
    EXPECT_EQ(random.word, 0xFFFFFFFFU * mlRandom::multiplier + mlRandom::increment);
    EXPECT_EQ(random.word, 2316998U);
}

TEST(mlRandom, draws_are_15_bits_wide) {
    mlRandom random(12345);
    int all_bits = 0;
    for (int step = 0; step < 10'000; ++step) {
        const int drawn = random.draw();
        ASSERT_GE(drawn, 0);
        ASSERT_LE(drawn, 32767);
        all_bits |= drawn;
    }
    EXPECT_EQ(all_bits, 32767);
}

TEST(mlRandom, a_copy_continues_the_same_sequence_independently) {
    mlRandom random(3);
    random.draw();
    mlRandom copy = random;
    const int drawn = random.draw();
    EXPECT_EQ(copy.draw(), drawn);
}

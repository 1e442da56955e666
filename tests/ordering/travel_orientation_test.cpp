// Tests of the exact side of a line.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>

#include "ordering/plain_keep_outs.h"
#include "ordering/travel_orientation.h"

namespace {

using nmk_ordering::exact_orientation;
using nmk_ordering::orientation;
using nmk_ordering::PlanePoint;

// Of coordinates that are whole numbers times 2 to the power -53 below 2 to the power 58.
int whole_orientation(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c) {
    const auto whole = [](double value) {
        return static_cast<plain::Wide>(static_cast<std::int64_t>(value * 0x1p53));
    };
    return plain::sign((whole(a.x) - whole(c.x)) * (whole(b.y) - whole(c.y)) -
                       (whole(a.y) - whole(c.y)) * (whole(b.x) - whole(c.x)));
}

double rounded_determinant(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c) {
    return (a.x - c.x) * (b.y - c.y) - (a.y - c.y) * (b.x - c.x);
}

// Points that are a few units of the last place beside a line, where a plain determinant errs.
TEST(travel_orientation, is_exact_beside_a_diagonal) {
    int errors_of_rounding = 0;
    for (int i = 0; i < 64; ++i) {
        for (int k = 0; k < 64; ++k) {
            const PlanePoint p{0.5 + i * 0x1p-53, 0.5 + k * 0x1p-53};
            const PlanePoint q{12.0, 12.0};
            const PlanePoint r{24.0, 24.0};
            const int expected = i < k ? 1 : i > k ? -1 : 0;
            ASSERT_EQ(orientation(q, r, p), expected) << i << " " << k;
            ASSERT_EQ(orientation(p, q, r), expected) << i << " " << k;
            const double rounded = rounded_determinant(p, q, r);
            errors_of_rounding += (rounded > 0.0) - (rounded < 0.0) != expected ? 1 : 0;
        }
    }
    EXPECT_GT(errors_of_rounding, 100);
}

TEST(travel_orientation, is_that_of_whole_numbers) {
    std::mt19937_64 words(7);
    const auto coordinate = [&] {
        const std::uint64_t word = words();
        const double few_bits = static_cast<double>(word % 16) / 16.0;
        return word % 3 == 0 ? few_bits : static_cast<double>(word >> 11) * 0x1p-53;
    };
    for (int i = 0; i < 20000; ++i) {
        const PlanePoint a{coordinate(), coordinate()};
        const PlanePoint b{coordinate(), coordinate()};
        // The middle of the two, rounded, or any point.
        const bool is_near = words() % 2 == 0;
        const PlanePoint c = is_near ? PlanePoint{(a.x + b.x) / 2.0, (a.y + b.y) / 2.0}
                                     : PlanePoint{coordinate(), coordinate()};
        const PlanePoint cut{std::floor(c.x * 0x1p53) * 0x1p-53,
                             std::floor(c.y * 0x1p53) * 0x1p-53};
        ASSERT_EQ(orientation(a, b, cut), whole_orientation(a, b, cut)) << i;
        ASSERT_EQ(exact_orientation(a, b, cut), whole_orientation(a, b, cut)) << i;
    }
}

TEST(travel_orientation, is_exact_for_very_small_coordinates_beside_large_ones) {
    const double tiny = nmk_ordering::least_coordinate;
    EXPECT_EQ(orientation({0.0, 0.0}, {1.0, 1.0}, {0.5, 0.5}), 0);
    EXPECT_EQ(orientation({0.0, 0.0}, {1.0, 0.0}, {0.5, tiny}), 1);
    EXPECT_EQ(orientation({0.0, tiny}, {1.0, tiny}, {0.5, 0.0}), -1);
    EXPECT_EQ(orientation({tiny, tiny}, {2 * tiny, 2 * tiny}, {1.0, 1.0}), 0);
    EXPECT_EQ(orientation({tiny, tiny}, {2 * tiny, 3 * tiny}, {1.0, 1.0}), -1);
    EXPECT_EQ(nmk_ordering::plane_point(tiny / 2.0, -tiny / 2.0), (PlanePoint{0.0, 0.0}));
}

}  // namespace

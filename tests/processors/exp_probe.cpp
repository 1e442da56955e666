// exp_probe: prints exp of the C library at many points, to the bit.
//
// Where the processor has fused multiply-adds, the C library rounds about one in 1,400 of them
// otherwise than without. ./check --no-fma shows with it that switching them off had an effect.
#include <cmath>
#include <cstdio>

int main() {
    constexpr int points = 140000;
    for (int i = 0; i < points; ++i) {
        const volatile double x = -20.0 + 40.0 * i / points;
        std::printf("%a\n", std::exp(x));
    }
}

// nmkformat_double_benchmark: exact numbers as text, beside the shortest form of the standard.

#include "stopwatch.h"

#include "files/plain_format_double.h"

#include <nmktoolbox/files/nmkformat_double.h>

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <random>
#include <vector>

namespace {

const auto count = static_cast<std::size_t>(stopwatch::size(200'000, 5'000));
constexpr int calls = 5;

using Numbers = std::vector<double>;

/// Any bits but those of infinities and NaN.
Numbers any_numbers() {
    std::mt19937_64 draw(20260806);
    Numbers numbers;
    while (numbers.size() < count) {
        const double number = std::bit_cast<double>(draw());
        if (std::isfinite(number)) {
            numbers.push_back(number);
        }
    }
    return numbers;
}

/// Coordinates: three places.
Numbers coordinates() {
    std::mt19937_64 draw(20260807);
    Numbers numbers(count);
    for (double& number : numbers) {
        number = static_cast<double>(static_cast<int>(draw() % 2'000'001) - 1'000'000) / 1000.0;
    }
    return numbers;
}

double shortest_seconds(const Numbers& numbers) {
    return stopwatch::least_seconds(calls, [&] {
        for (const double number : numbers) {
            std::array<char, 40> text;
            const char* end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
            const utString answer(std::string_view(text.data(), std::size_t(end - text.data())));
            volatile int length = answer.length();
            (void)length;
        }
    });
}

double exact_seconds(const Numbers& numbers) {
    return stopwatch::least_seconds(calls, [&] {
        for (const double number : numbers) {
            volatile int length = nmkformat_double_exact(number).length();
            (void)length;
        }
    });
}

bool same_texts(const Numbers& numbers) {
    for (const double number : numbers) {
        if (nmkformat_double_exact(number).view() != plain_format_double_exact(number)) {
            return false;
        }
    }
    return true;
}

bool report(const char* name, const Numbers& numbers) {
    return stopwatch::report(name, exact_seconds(numbers), shortest_seconds(numbers), 2.2,
                             same_texts(numbers));
}

}  // namespace

int main() {
    const bool any = report("nmkformat_double_exact, any bits", any_numbers());
    const bool handy = report("nmkformat_double_exact, coordinates", coordinates());
    return any && handy ? 0 : 1;
}

// axis_ticks: round numbers along an axis.

#include "draw/axis_ticks.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "draw/round_length.h"
#include "text/number_format.h"

namespace nmk_draw {

namespace {

constexpr int max_ticks = 40;
constexpr double large = 1e6;  // from here on, and below its inverse, numbers have an exponent
constexpr int max_decimals = 9;

/// The decimals of a round step: none for 20, one for 0.5.
int decimals_of(double step) {
    return std::clamp(static_cast<int>(-std::floor(std::log10(step) + 1e-9)), 0, max_decimals);
}

/// Short, and rounding errors do not show.
std::string tick_text(double value, double step, double largest) {
    if (largest <= large && step >= 1.0 / large) {
        return nmk_text::short_number(value, decimals_of(step));
    }
    std::array<char, 32> room{};
    const auto written =
        std::to_chars(room.data(), room.data() + room.size(), value, std::chars_format::general, 6);
    return {room.data(), written.ptr};
}

}  // namespace

std::vector<AxisTick> axis_ticks(const PlotRange& range, double about, double min_step) {
    const double step = std::max(round_length(range.span() / about * 1.6), min_step);
    const double first = std::ceil(range.low / step);
    const double largest = std::max(std::abs(range.low), std::abs(range.high));
    std::vector<AxisTick> ticks;
    for (int i = 0; i < max_ticks; ++i) {
        const double value = (first + i) * step;
        if (!(value <= range.high)) {
            break;
        }
        ticks.push_back({value, tick_text(value, step, largest)});
    }
    return ticks;
}

}  // namespace nmk_draw

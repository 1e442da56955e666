// axis_ticks.h: round numbers along an axis.
#pragma once

#include <string>
#include <vector>

namespace nmk_draw {

/// From the lowest value shown to the highest; not empty.
struct PlotRange {
    double low = 0.0;
    double high = 1.0;

    double span() const { return high - low; }
};

/// A round number and its text.
struct AxisTick {
    double value = 0.0;
    std::string words;
};

/// The text style of the numbers.
inline constexpr const char* axis_number_style = "font-size=\"14\" fill=\"#6b7785\"";

/// The round numbers in a range, ascending, about so many; at least `min_step` apart. Their texts
/// have as many decimals as are needed for them to differ.
std::vector<AxisTick> axis_ticks(const PlotRange& range, double about, double min_step = 0.0);

}  // namespace nmk_draw

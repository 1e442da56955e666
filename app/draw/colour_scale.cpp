// colour_scale: colour scales for an order, for visited cells and for tools, on white.

#include "draw/colour_scale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace nmk_draw {

namespace {

using Rgb = std::array<double, 3>;

// Each is dark enough for a thin line on white; the differences between them are about equal.
constexpr Rgb order_colours[] = {
    {38, 70, 190}, {0, 140, 160}, {46, 150, 70}, {226, 130, 10}, {196, 20, 70}};

// Light enough for a dark line on them; the last is still clearly lighter than a blocked cell.
constexpr Rgb closing_colours[] = {{253, 243, 205}, {190, 227, 205}, {98, 168, 208}};

constexpr const char* tool_colours[] = {"#cfe2f3", "#fde2b8", "#cdebc5", "#e3d3f1",
                                        "#f9cfd3", "#c9ecec", "#ece6a8", "#dcd9d6"};

/// The colour at this fraction of the scale.
std::string mixed_colour(std::span<const Rgb> colours, double fraction) {
    const std::size_t steps = colours.size() - 1;
    const double position = std::clamp(fraction, 0.0, 1.0) * static_cast<double>(steps);
    const std::size_t below = std::min(static_cast<std::size_t>(position), steps - 1);
    const double part = position - static_cast<double>(below);
    constexpr char digits[] = "0123456789abcdef";
    std::string colour = "#";
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const double from = colours[below][channel];
        const double to = colours[below + 1][channel];
        const auto value = static_cast<unsigned>(std::lround(from + (to - from) * part));
        colour += digits[value / 16];
        colour += digits[value % 16];
    }
    return colour;
}

}  // namespace

std::string order_colour(double fraction) { return mixed_colour(order_colours, fraction); }

std::string closing_colour(double fraction) { return mixed_colour(closing_colours, fraction); }

std::string tool_colour(std::size_t tool) { return tool_colours[tool % std::size(tool_colours)]; }

}  // namespace nmk_draw

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

// The first five as calm as can be; each of the others is as far from those before it as a light
// colour of limited chroma can be.
constexpr Rgb tool_colours[] = {{207, 226, 243}, {253, 226, 184}, {205, 235, 197}, {227, 211, 241},
                                {249, 207, 211}, {118, 174, 252}, {238, 142, 196}, {246, 150, 124},
                                {110, 246, 244}, {150, 182, 100}, {110, 214, 164}, {222, 174, 100},
                                {214, 174, 252}, {126, 182, 172}, {110, 214, 252}, {238, 230, 140},
                                {174, 174, 132}, {198, 246, 164}, {254, 158, 172}, {142, 174, 212}};

constexpr double dot_shade = 0.55;  // of the fill; a dot has no rim

std::string hex_colour(const Rgb& colour) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text = "#";
    for (const double channel : colour) {
        const auto value = static_cast<unsigned>(std::lround(channel));
        text += digits[value / 16];
        text += digits[value % 16];
    }
    return text;
}

/// The colour at this fraction of the scale.
std::string mixed_colour(std::span<const Rgb> colours, double fraction) {
    const std::size_t steps = colours.size() - 1;
    const double position = std::clamp(fraction, 0.0, 1.0) * static_cast<double>(steps);
    const std::size_t below = std::min(static_cast<std::size_t>(position), steps - 1);
    const double part = position - static_cast<double>(below);
    Rgb colour{};
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const double from = colours[below][channel];
        const double to = colours[below + 1][channel];
        colour[channel] = from + (to - from) * part;
    }
    return hex_colour(colour);
}

}  // namespace

std::string order_colour(double fraction) { return mixed_colour(order_colours, fraction); }

std::string closing_colour(double fraction) { return mixed_colour(closing_colours, fraction); }

std::string tool_colour(std::size_t tool) {
    return hex_colour(tool_colours[tool % std::size(tool_colours)]);
}

std::string tool_dot_colour(std::size_t tool) {
    Rgb colour = tool_colours[tool % std::size(tool_colours)];
    for (double& channel : colour) {
        channel *= dot_shade;
    }
    return hex_colour(colour);
}

}  // namespace nmk_draw

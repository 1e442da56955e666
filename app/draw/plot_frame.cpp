// plot_frame: the axes of a plot, with ticks at round numbers.

#include "draw/plot_frame.h"

#include <array>
#include <charconv>
#include <cmath>

#include "draw/round_length.h"

namespace nmk_draw {

namespace {

constexpr double ticks_in_x = 9.0;  // about
constexpr double ticks_in_y = 7.0;
constexpr const char* number_style = "font-size=\"14\" fill=\"#6b7785\"";

/// Calls `draw` for each round number in a range.
template <class Draw>
void each_tick(const PlotRange& range, double about, Draw draw) {
    const double step = round_length(range.span() / about * 1.6);
    const double first = std::ceil(range.low / step);
    for (int i = 0; i < 40; ++i) {
        const double value = (first + i) * step;
        if (!(value <= range.high)) {
            return;
        }
        draw(value);
    }
}

}  // namespace

std::string plot_number(double value) {
    std::array<char, 32> room{};
    const auto written =
        std::to_chars(room.data(), room.data() + room.size(), value, std::chars_format::general, 6);
    return {room.data(), written.ptr};
}

void draw_plot_frame(SvgDocument& svg, const PlotFrame& frame) {
    const double right = frame.corner.x + frame.width;
    const double bottom = frame.corner.y + frame.height;
    svg.rectangle(frame.corner, frame.width, frame.height, "fill=\"#fbfcfd\" stroke=\"#c5ccd4\"");
    const auto style = [](double value) {
        return value == 0.0 ? "stroke=\"#52606d\" stroke-width=\"1.5\"" : "stroke=\"#e3e7eb\"";
    };
    each_tick(frame.x, ticks_in_x, [&](double value) {
        const double x = frame.at(value, frame.y.low).x;
        svg.line({x, frame.corner.y}, {x, bottom}, style(value));
        svg.text({x, bottom + 20.0}, plot_number(value),
                 std::string(number_style) + " text-anchor=\"middle\"");
    });
    each_tick(frame.y, ticks_in_y, [&](double value) {
        const double y = frame.at(frame.x.low, value).y;
        svg.line({frame.corner.x, y}, {right, y}, style(value));
        svg.text({frame.corner.x - 9.0, y + 5.0}, plot_number(value),
                 std::string(number_style) + " text-anchor=\"end\"");
    });
}

}  // namespace nmk_draw

// plot_frame: the axes of a plot, with ticks at round numbers.

#include "draw/plot_frame.h"

#include <array>
#include <charconv>

namespace nmk_draw {

namespace {

constexpr double ticks_in_x = 9.0;  // about
constexpr double ticks_in_y = 7.0;

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
    for (const AxisTick& tick : axis_ticks(frame.x, ticks_in_x)) {
        const double x = frame.at(tick.value, frame.y.low).x;
        svg.line({x, frame.corner.y}, {x, bottom}, style(tick.value));
        svg.text({x, bottom + 20.0}, tick.words,
                 std::string(axis_number_style) + " text-anchor=\"middle\"");
    }
    for (const AxisTick& tick : axis_ticks(frame.y, ticks_in_y)) {
        const double y = frame.at(frame.x.low, tick.value).y;
        svg.line({frame.corner.x, y}, {right, y}, style(tick.value));
        svg.text({frame.corner.x - 9.0, y + 5.0}, tick.words,
                 std::string(axis_number_style) + " text-anchor=\"end\"");
    }
}

}  // namespace nmk_draw

// giColour: a colour of three components.
#pragma once

#include <cstdint>

struct giColour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const giColour&) const noexcept = default;
};

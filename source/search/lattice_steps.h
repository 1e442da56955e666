// lattice_steps.h: the steps that the library's own generators of the plane make.
#pragma once

#include <array>
#include <optional>
#include <span>

class nmkSearchNodeGenerator;

namespace nmk_search {

struct LatticeSteps {
    double x;
    double y;
    bool is_forward;  // in x only ahead

    /// The directions of the neighbours, in the order in which they are made.
    std::span<const int> columns() const {
        return is_forward ? std::span(every_direction).subspan(1, 1) : std::span(every_direction);
    }
    std::span<const int> rows() const { return every_direction; }

  private:
    static constexpr std::array every_direction{0, 1, -1};
};

/// Empty for a generator of a caller's own class.
std::optional<LatticeSteps> lattice_steps_of(const nmkSearchNodeGenerator& generator);

}  // namespace nmk_search

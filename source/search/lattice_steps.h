// lattice_steps.h: what the library's own generators of the plane step by.
#pragma once

#include <array>
#include <optional>
#include <span>

class nmkSearchNodeGenerator;

namespace nmk_search {

struct Lattice_steps {
    double x;
    double y;
    bool is_forward;  // in x only ahead

    /// The directions of the neighbours, in the order in which they are made.
    std::span<const int> columns() const {
        return is_forward ? std::span(every_way).subspan(1, 1) : std::span(every_way);
    }
    std::span<const int> rows() const { return every_way; }

  private:
    static constexpr std::array every_way{0, 1, -1};
};

/// Nothing when `generator` is of a caller's own class.
std::optional<Lattice_steps> lattice_steps_of(const nmkSearchNodeGenerator& generator);

}  // namespace nmk_search

// giXform2: an affine map of the plane, p -> L p + t.
#pragma once

#include <geometry/giPoint2.h>
#include <geometry/giVector2.h>

#include <array>

class giXform2 {
  public:
    /// Rows of the linear part L.
    using Matrix = std::array<std::array<double, 2>, 2>;

    /// The identity.
    giXform2() noexcept = default;
    giXform2(const Matrix& linear, const giVector2& translation) noexcept
        : m_linear(linear), m_translation(translation) {}

    const Matrix& linear() const noexcept { return m_linear; }
    const giVector2& translation() const noexcept { return m_translation; }

    bool operator==(const giXform2&) const noexcept = default;

  private:
    Matrix m_linear = {{{1.0, 0.0}, {0.0, 1.0}}};
    giVector2 m_translation;
};

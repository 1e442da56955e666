// Affine: an affine map of the plane or of space, as the kernel computes with it.
#pragma once

#include <ngk/ngkSpace.h>

#include <cstddef>

namespace nmk_ngk {

template <int Dimension>
struct Affine {
    std::array<Vec<Dimension>, static_cast<std::size_t>(Dimension)> rows;
    Vec<Dimension> translation;

    explicit Affine(const typename ngkSpace<Dimension>::Xform& xform) noexcept
        : translation(vec_of(xform.translation())) {
        for (std::size_t i = 0; i < rows.size(); ++i) rows[i].c = xform.linear()[i];
    }

    Vec<Dimension> vector(const Vec<Dimension>& v) const noexcept {
        Vec<Dimension> image;
        for (std::size_t i = 0; i < rows.size(); ++i) image.c[i] = rows[i].dot(v);
        return image;
    }
    Vec<Dimension> point(const Vec<Dimension>& p) const noexcept { return vector(p) + translation; }
    Jet<Dimension> jet(const Jet<Dimension>& j) const noexcept {
        return {point(j.point), vector(j.first), vector(j.second)};
    }

    /// No unit vector becomes longer than this (the Frobenius norm, at most 1.8 times the most).
    double norm() const noexcept {
        double sum = 0.0;
        for (const Vec<Dimension>& row : rows) sum += row.square();
        return std::sqrt(sum);
    }

    bool is_usable() const noexcept {
        return translation.is_usable() &&
               std::ranges::all_of(rows, [](const auto& row) { return row.is_usable(); });
    }
};

}  // namespace nmk_ngk

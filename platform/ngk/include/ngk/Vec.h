// Vec: coordinates of a point or vector of the plane or of space, for formulas that hold in both.
#pragma once

#include <geometry/giPoint2.h>
#include <geometry/giPoint3.h>
#include <geometry/giVector2.h>
#include <geometry/giVector3.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace nmk_ngk {

/// Coordinates beyond this make a curve, surface or point invalid: squares and products of what is
/// within it neither overflow nor lose the difference between a number and infinity.
inline constexpr double largest_coordinate = 1e100;

/// Not initialised by default: arrays of them are filled as far as they are used.
template <int Dimension>
struct Vec {
    std::array<double, static_cast<std::size_t>(Dimension)> c;

    double& operator[](int i) noexcept { return c[static_cast<std::size_t>(i)]; }
    double operator[](int i) const noexcept { return c[static_cast<std::size_t>(i)]; }

    Vec& operator+=(const Vec& other) noexcept {
        for (int i = 0; i < Dimension; ++i) (*this)[i] += other[i];
        return *this;
    }
    Vec& operator-=(const Vec& other) noexcept {
        for (int i = 0; i < Dimension; ++i) (*this)[i] -= other[i];
        return *this;
    }
    Vec& operator*=(double factor) noexcept {
        for (double& coordinate : c) coordinate *= factor;
        return *this;
    }
    friend Vec operator+(Vec a, const Vec& b) noexcept { return a += b; }
    friend Vec operator-(Vec a, const Vec& b) noexcept { return a -= b; }
    friend Vec operator*(Vec a, double factor) noexcept { return a *= factor; }
    bool operator==(const Vec&) const noexcept = default;

    double dot(const Vec& other) const noexcept {
        double sum = c[0] * other.c[0];
        for (int i = 1; i < Dimension; ++i) sum += (*this)[i] * other[i];
        return sum;
    }
    double square() const noexcept { return dot(*this); }
    double norm() const noexcept { return std::sqrt(square()); }

    /// False for NaN too.
    bool is_usable() const noexcept {
        return std::ranges::all_of(c, [](double x) { return std::abs(x) <= largest_coordinate; });
    }
};

/// a at 0, b at 1, both exactly.
template <int Dimension>
Vec<Dimension> between(const Vec<Dimension>& a, const Vec<Dimension>& b, double part) noexcept {
    return part == 1.0 ? b : a + (b - a) * part;
}

inline Vec<2> vec_of(const giPoint2& p) noexcept { return {{p.x, p.y}}; }
inline Vec<2> vec_of(const giVector2& v) noexcept { return {{v.x, v.y}}; }
inline Vec<3> vec_of(const giPoint3& p) noexcept { return {{p.x, p.y, p.z}}; }
inline Vec<3> vec_of(const giVector3& v) noexcept { return {{v.x, v.y, v.z}}; }
inline giPoint2 point_of(const Vec<2>& v) noexcept { return {v[0], v[1]}; }
inline giPoint3 point_of(const Vec<3>& v) noexcept { return {v[0], v[1], v[2]}; }
inline giVector2 vector_of(const Vec<2>& v) noexcept { return {v[0], v[1]}; }
inline giVector3 vector_of(const Vec<3>& v) noexcept { return {v[0], v[1], v[2]}; }

/// A point of a curve with the first and second derivative there.
template <int Dimension>
struct Jet {
    Vec<Dimension> point;
    Vec<Dimension> first;
    Vec<Dimension> second;
};

}  // namespace nmk_ngk

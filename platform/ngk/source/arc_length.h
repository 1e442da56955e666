// arc_length: the length of a piece, by Gauss quadrature of its speed over parts that are halved
// until a part and its halves agree.
#pragma once

#include "Piece.h"
#include "gauss_rule.h"
#include "max_parts.h"

namespace nmk_ngk {

// How many parts the pieces of a curve are divided into: each on its own, and beyond that all
// together. Smooth pieces take some dozen, a cusp or a crease some dozen more.
inline constexpr int length_parts_of_piece = 100;
inline constexpr int length_parts_of_curve = 500;

// At a cusp the speed has a corner, and the error of a part falls by four with each halving.
inline constexpr int max_length_halvings = 40;

// A part and its halves never agree better than this part of it: the sums are of many terms.
inline constexpr double least_part_error = 1e-14;

// What is asked for is not taken for less than this.
inline constexpr double least_length_error = 1e-15;

template <int Dimension>
double gauss_length(const Piece<Dimension>& piece, double low, double high) {
    const double centre = low + (high - low) / 2.0;
    const double half = (high - low) / 2.0;
    double sum = 0.0;
    for (const GaussPair& pair : gauss_rule) {
        const double offset = half * pair.node;
        sum += pair.weight *
               (piece.velocity(centre - offset).norm() + piece.velocity(centre + offset).norm());
    }
    return sum * half;
}

template <int Dimension>
double halved_length(const Piece<Dimension>& piece, double low, double high, double whole,
                     double tolerance, int halvings, PartsLeft& parts_left) {
    const double middle = low + (high - low) / 2.0;
    const double left = gauss_length(piece, low, middle);
    const double right = gauss_length(piece, middle, high);
    const double rounding = least_part_error * whole;
    const bool agrees = !(std::abs(left + right - whole) > std::max(tolerance, rounding));
    if (agrees || halvings == 0 || !parts_left.take()) return left + right;
    return halved_length(piece, low, middle, left, tolerance / 2.0, halvings - 1, parts_left) +
           halved_length(piece, middle, high, right, tolerance / 2.0, halvings - 1, parts_left);
}

/// The length to about this part of it; at most as exact as rounding leaves it.
template <int Dimension>
double arc_length(const Piece<Dimension>& piece, double relative_tolerance, PartsLeft& parts_left) {
    const auto [low, high] = piece.range();
    const double whole = gauss_length(piece, low, high);
    const double part =
        relative_tolerance > least_length_error ? relative_tolerance : least_length_error;
    parts_left.begin_piece();
    return halved_length(piece, low, high, whole, whole * part, max_length_halvings, parts_left);
}

}  // namespace nmk_ngk

#include "xform_kind.h"

#include <Eigen/Dense>
#include <cmath>

namespace {

// Limits of kind_of. Both apply to numbers without a unit.
constexpr double same_factor = 1e-9;       // relative difference of two singular values: uniform
constexpr double singular_factor = 1e-12;  // smallest singular value beside the largest: singular
constexpr double same_entry = 1e-9;        // entries of a matrix beside its largest: equal

using Matrix3 = Eigen::Matrix3d;

Matrix3 as_eigen(const giXform3::Matrix& rows) {
    Matrix3 matrix;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            matrix(row, column) =
                rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
        }
    }
    return matrix;
}

bool is_near(const Matrix3& matrix, const Matrix3& expected, double size) {
    return (matrix - expected).cwiseAbs().maxCoeff() <= same_entry * size;
}

giXform3Kind kind_of_uniform(const Matrix3& matrix, double factor, bool is_moving) {
    const bool keeps_lengths = std::abs(factor - 1.0) <= same_factor;
    const bool keeps_directions = is_near(matrix, factor * Matrix3::Identity(), factor);
    if (!keeps_lengths) return keeps_directions ? giXform3UniformScale : giXform3Similarity;
    if (keeps_directions) return is_moving ? giXform3Translation : giXform3Identity;
    return is_moving ? giXform3Rigid : giXform3Rotation;
}

// A reflection in a plane is its own inverse, so that its matrix is symmetric, and it moves points
// along the normal of that plane only.
bool is_mirror(const Matrix3& matrix, const Eigen::Vector3d& moved) {
    if (!is_near(matrix, matrix.transpose(), 1.0)) return false;
    return (matrix * moved + moved).norm() <= same_entry * moved.norm();
}

giXform3Kind kind_of_mirrored_uniform(const Matrix3& matrix, double factor,
                                      const Eigen::Vector3d& moved) {
    const bool keeps_lengths = std::abs(factor - 1.0) <= same_factor;
    if (is_near(matrix, -factor * Matrix3::Identity(), factor)) {
        return keeps_lengths ? giXform3PointReflection : giXform3NegativeScale;
    }
    if (!keeps_lengths) return giXform3MirrorSimilarity;
    return is_mirror(matrix, moved) ? giXform3Mirror : giXform3RotaryReflection;
}

}  // namespace

// The singular values of the matrix are its factors along three perpendicular directions.
giXform3Kind nmk_geometry::kind_of(const giXform3::Matrix& linear, const giVector3& translation) {
    const Matrix3 matrix = as_eigen(linear);
    const Eigen::Vector3d moved(translation.x, translation.y, translation.z);
    if (!matrix.allFinite()) return giXform3Singular;
    const Eigen::Vector3d factors = Eigen::JacobiSVD<Matrix3>(matrix).singularValues();
    const double largest = factors(0);
    if (largest == 0.0 || factors(2) <= singular_factor * largest) return giXform3Singular;
    // Of factors near 1, so that the product of small ones does not vanish.
    const bool changes_hand = (matrix / largest).determinant() < 0.0;
    if (largest - factors(2) <= same_factor * largest) {
        return changes_hand ? kind_of_mirrored_uniform(matrix, largest, moved)
                            : kind_of_uniform(matrix, largest, !moved.isZero(0.0));
    }
    const Matrix3 diagonal = matrix.diagonal().asDiagonal();
    const bool is_along_axes = is_near(matrix, diagonal, largest);
    if (changes_hand) return is_along_axes ? giXform3MirrorAxisScale : giXform3MirrorAffine;
    return is_along_axes ? giXform3AxisScale : giXform3Affine;
}

// polyline_walk.h: a walk along a polyline to places at given lengths, never back.
//
// A place within the tolerance of a vertex is that vertex, not a near neighbour of it.
#pragma once

#include <geometry/giPoint3.h>

#include <cmath>
#include <cstddef>
#include <memory>
#include <span>

namespace nmk_curves {

/// A place on segment `segment`: the part of it that lies before. 0 is exactly its first point, 1
/// exactly its second.
struct PolylinePlace {
    int segment = -1;
    double part = 0.0;

    bool is_set() const noexcept { return segment >= 0; }
};

/// What `values` has at a place: one value for each point of the polyline.
inline giPoint3 at_place(std::span<const giPoint3> points, const PolylinePlace& place) {
    const auto k = static_cast<std::size_t>(place.segment);
    if (place.part == 0.0) return points[k];
    if (place.part == 1.0) return points[k + 1];
    return points[k] + (points[k + 1] - points[k]) * place.part;
}
inline double at_place(std::span<const double> values, const PolylinePlace& place) {
    const auto k = static_cast<std::size_t>(place.segment);
    if (place.part == 0.0) return values[k];
    if (place.part == 1.0) return values[k + 1];
    return values[k] + (values[k + 1] - values[k]) * place.part;
}

class PolylineWalk {
  public:
    /// Borrows the points, of which there is at least one, and the lengths of all segments; without
    /// these it takes the roots that it needs.
    PolylineWalk(std::span<const giPoint3> points, double tolerance,
                 std::span<const double> lengths = {}) noexcept
        : m_points(points), m_lengths(lengths), m_tolerance(tolerance) {
        measure();
    }

    /// Goes to a segment (at most the number of the last point), whose start is that far along.
    void start_at(int segment, double walked) noexcept {
        m_segment = segment;
        m_walked = walked;
        measure();
    }

    int segment() const noexcept { return m_segment; }
    bool has_segment() const noexcept {
        return static_cast<std::size_t>(m_segment) + 1 < m_points.size();
    }

    /// Walks on to the segment on which that length lies; false where the segments have run out.
    bool walk_to(double target) noexcept {
        while (m_walked < target) {
            if (!has_segment()) return false;
            const double rest = target - m_walked - m_tolerance;
            // By squares: the segment that ends the walk costs no root here.
            if (rest < 0.0 || rest * rest <= m_square) return true;
            m_walked += length();
            ++m_segment;
            measure();
        }
        return true;
    }

    /// Where that length lies on the segment at which the walk is; unset where it is beyond it.
    PolylinePlace place(double target) noexcept {
        const double rest = target - m_walked;
        if (rest < m_tolerance) return {m_segment, 0.0};
        if (!has_segment()) return {};
        const double whole = length();
        if (std::abs(rest - whole) < m_tolerance) return {m_segment, 1.0};
        if (rest < whole) return {m_segment, rest / whole};
        return {};
    }

  private:
    void measure() noexcept {
        m_length = -1.0;
        if (!has_segment()) return;
        const giPoint3& start = m_points[static_cast<std::size_t>(m_segment)];
        const giPoint3& end = m_points[static_cast<std::size_t>(m_segment) + 1];
        const double dx = end.x - start.x;
        const double dy = end.y - start.y;
        const double dz = end.z - start.z;
        m_square = dx * dx + dy * dy + dz * dz;
    }

    double length() noexcept {
        if (!m_lengths.empty()) return m_lengths[static_cast<std::size_t>(m_segment)];
        if (m_length < 0.0) m_length = std::sqrt(m_square);
        return m_length;
    }

    std::span<const giPoint3> m_points;
    std::span<const double> m_lengths;
    double m_tolerance;
    int m_segment = 0;
    double m_walked = 0.0;   // up to the start of the segment
    double m_square = 0.0;   // of the segment's length
    double m_length = -1.0;  // below 0 until it is asked for
};

/// Where that length lies on the polyline; unset beyond its end, and where no segment is left.
inline PolylinePlace place_on_segment(PolylineWalk& walk, double target) noexcept {
    return walk.walk_to(target) && walk.has_segment() ? walk.place(target) : PolylinePlace();
}

/// Places at equal lengths along a polyline, one after the other, both ends included.
class EquallySpacedPlaces {
  public:
    /// Borrows the points, of which there is at least one, and the lengths as PolylineWalk does.
    ///
    ///   total   the polyline's length
    ///   count   number of places, at least 2
    EquallySpacedPlaces(std::span<const giPoint3> points, double total, int count, double tolerance,
                        std::span<const double> lengths = {}) noexcept
        : m_walk(points, tolerance, lengths),
          m_last(points.size() > 1 ? PolylinePlace{static_cast<int>(points.size()) - 2, 1.0}
                                   : PolylinePlace{0, 0.0}),
          m_count(count),
          m_spacing(total / (count - 1)) {}

    /// The next place; unset once they have run out, which may be before `count`.
    ///
    /// The first and the last are the ends of the polyline exactly, whatever rounding does to sums.
    PolylinePlace next() noexcept {
        const int i = m_next++;
        if (i == 0) return {0, 0.0};
        if (i >= m_count - 1) return i == m_count - 1 ? m_last : PolylinePlace();
        const double target = i * m_spacing;
        return m_walk.walk_to(target) ? m_walk.place(target) : PolylinePlace();
    }

  private:
    PolylineWalk m_walk;
    PolylinePlace m_last;
    int m_count;
    double m_spacing;
    int m_next = 0;
};

/// The length of each segment, and their sum in that order.
struct SegmentLengths {
    /// Of at least one point.
    explicit SegmentLengths(std::span<const giPoint3> points)
        : count(points.size() - 1), values(std::make_unique_for_overwrite<double[]>(count)) {
        for (std::size_t i = 0; i < count; ++i) {
            values[i] = points[i].distance(points[i + 1]);
            total += values[i];
        }
    }

    std::span<const double> lengths() const noexcept { return {values.get(), count}; }

    std::size_t count;
    std::unique_ptr<double[]> values;  // each written once, without zeros before
    double total = 0.0;
};

/// The length of a polyline up to the point `index`, which must be below their number.
inline double length_to(std::span<const giPoint3> points, std::size_t index) noexcept {
    double sum = 0.0;
    for (std::size_t i = 0; i < index; ++i) sum += points[i].distance(points[i + 1]);
    return sum;
}

}  // namespace nmk_curves

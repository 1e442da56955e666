// nearest_by_bounds: the nearest point of any smooth piece, by halving it.
//
// A part is left out when its chord, less how far the piece can be from it, is not nearer than the
// nearest point so far. Each nearer point is improved by Newton steps, so that the halving soon has
// nothing left but to prove that there is no other.
//
// Where a piece takes too many parts, since its bounds do not become smaller or all of it is
// equally far away, it is looked at in even steps instead: what is found then is nearest of these
// places.
#pragma once

#include "Piece.h"

namespace nmk_ngk {

template <int Dimension>
double distance_to_chord(const Vec<Dimension>& query, const Vec<Dimension>& start,
                         const Vec<Dimension>& end) noexcept {
    const Vec<Dimension> chord = end - start;
    const double square = chord.square();
    const double along = (query - start).dot(chord);
    const double part = square > 0.0 ? std::clamp(along / square, 0.0, 1.0) : 0.0;
    return (query - between(start, end, part)).norm();
}

template <int Dimension>
class BoundSearch {
  public:
    using V = Vec<Dimension>;

    BoundSearch(const Piece<Dimension>& piece, Nearest<Dimension>& nearest, int segment) noexcept
        : m_piece(piece), m_nearest(nearest), m_segment(segment) {}

    void run() {
        const auto [low, high] = m_piece.range();
        const V start = m_piece.point(low);
        const V end = m_piece.point(high);
        m_nearest.consider(start, m_segment, low);
        m_nearest.consider(end, m_segment, high);
        const double size = m_piece.size() + (start - m_nearest.query()).norm();
        m_rounding = rounding_part * size;
        m_nearest.parts_left().begin_piece();
        m_is_stopped = is_beyond_bounds(m_piece, size);
        search(low, start, high, end, max_depth);
        if (m_is_stopped) look_in_steps();
    }

  private:
    // A part is left out where it could be nearer by less than these. Without the first, a query at
    // the same distance from all points would ask for every point.
    static constexpr double distance_part = 1e-10;  // of the distance
    static constexpr double rounding_part = 1e-15;  // of coordinates
    static constexpr int max_depth = 60;
    static constexpr int newton_steps = 12;

    void search(double low, const V& start, double high, const V& end, int depth) {
        if (m_is_stopped) return;
        const double best = std::sqrt(m_nearest.square());
        const double least =
            distance_to_chord(m_nearest.query(), start, end) - m_piece.sagitta(low, high);
        const double middle = low + (high - low) / 2.0;
        if (least >= best - (distance_part * best + m_rounding)) return;
        if (depth == 0 || !(low < middle && middle < high)) return;
        m_is_stopped = !m_nearest.parts_left().take();
        if (m_is_stopped) return;
        const V point = m_piece.point(middle);
        if (m_nearest.consider(point, m_segment, middle)) improve(middle);
        const double to_start = distance_to_chord(m_nearest.query(), start, point);
        const double to_end = distance_to_chord(m_nearest.query(), point, end);
        if (to_start <= to_end) search(low, start, middle, point, depth - 1);
        search(middle, point, high, end, depth - 1);
        if (to_start > to_end) search(low, start, middle, point, depth - 1);
    }

    void look_in_steps() {
        for_even_steps(m_piece, [&](double value) {
            if (m_nearest.consider(m_piece.point(value), m_segment, value)) improve(value);
        });
    }

    void improve(double value) {
        const auto [low, high] = m_piece.range();
        for (int i = 0; i < newton_steps; ++i) {
            const Jet<Dimension> jet = m_piece.jet(value);
            const V from_query = jet.point - m_nearest.query();
            const double slope = jet.first.square() + from_query.dot(jet.second);
            if (!(slope > 0.0)) return;
            const double next = std::clamp(value - from_query.dot(jet.first) / slope, low, high);
            if (!(next != value)) return;
            value = next;
            m_nearest.consider(m_piece.point(value), m_segment, value);
        }
    }

    const Piece<Dimension>& m_piece;
    Nearest<Dimension>& m_nearest;
    int m_segment;
    double m_rounding = 0.0;
    bool m_is_stopped = false;
};

template <int Dimension>
void nearest_by_bounds(const Piece<Dimension>& piece, Nearest<Dimension>& nearest, int segment) {
    BoundSearch<Dimension>(piece, nearest, segment).run();
}

}  // namespace nmk_ngk

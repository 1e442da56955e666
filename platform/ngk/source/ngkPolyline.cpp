#include <ngk/ngkPolyline.h>

#include "LinePiece.h"
#include "control_points.h"

using nmk_ngk::Jet;
using nmk_ngk::Vec;

template <int Dimension>
ngkPolyline<Dimension>::ngkPolyline() {
    this->set_valid(true);
}

template <int Dimension>
ngkPolyline<Dimension>::ngkPolyline(std::span<const Point> points) : ngkPolyline() {
    reserve(static_cast<int>(points.size()));
    for (const Point& point : points) add_point(point);
}

template <int Dimension>
void ngkPolyline<Dimension>::add_point(const Point& point) {
    m_points.push_back(point);
    if (!nmk_ngk::vec_of(point).is_usable()) this->set_valid(false);
}

template <int Dimension>
void ngkPolyline<Dimension>::reserve(int count) {
    m_points.reserve(static_cast<std::size_t>(std::max(count, 0)));
}

template <int Dimension>
void ngkPolyline<Dimension>::clear() {
    m_points.clear();
    this->set_valid(true);
}

template <int Dimension>
int ngkPolyline<Dimension>::segment_count() const noexcept {
    return point_count() > 1 ? point_count() - 1 : point_count();
}

template <int Dimension>
ngkRange ngkPolyline<Dimension>::range(int /*segment*/) const noexcept {
    return {0.0, 1.0};
}

template <int Dimension>
typename ngkPolyline<Dimension>::Ptr ngkPolyline<Dimension>::reverse() const {
    if (!this->is_valid()) return Ptr();
    const std::vector<Point> turned(m_points.rbegin(), m_points.rend());
    return Ptr(new ngkPolyline(turned));
}

template <int Dimension>
std::pair<typename ngkPolyline<Dimension>::Ptr, typename ngkPolyline<Dimension>::Ptr>
ngkPolyline<Dimension>::split(const ngkT& t) const {
    const bool is_inside = this->contains(t) && this->fraction_at(t) > 0.0 &&
                           this->fraction_at(t) < 1.0 && point_count() > 1;
    if (!is_inside) return {};
    const Point middle = nmk_ngk::point_of(point_at(t));
    // A vertex that is met exactly is not repeated.
    const int last_of_first = t.value > 0.0 ? t.segment : t.segment - 1;
    const int first_of_second = t.value < 1.0 ? t.segment + 1 : t.segment + 2;
    auto first =
        std::make_shared<ngkPolyline>(points().first(static_cast<std::size_t>(last_of_first) + 1));
    auto second = std::make_shared<ngkPolyline>();
    first->add_point(middle);
    second->add_point(middle);
    for (const Point& point : points().subspan(static_cast<std::size_t>(first_of_second)))
        second->add_point(point);
    return {Ptr(std::shared_ptr<const Base>(first)), Ptr(std::shared_ptr<const Base>(second))};
}

template <int Dimension>
Vec<Dimension> ngkPolyline<Dimension>::start_of(int segment) const noexcept {
    return nmk_ngk::vec_of(point(segment));
}

template <int Dimension>
Vec<Dimension> ngkPolyline<Dimension>::end_of(int segment) const noexcept {
    return nmk_ngk::vec_of(point(std::min(segment + 1, point_count() - 1)));
}

template <int Dimension>
Vec<Dimension> ngkPolyline<Dimension>::point_at(const ngkT& t) const {
    return nmk_ngk::between(start_of(t.segment), end_of(t.segment), t.value);
}

template <int Dimension>
Jet<Dimension> ngkPolyline<Dimension>::jet_at(const ngkT& t) const {
    return {point_at(t), end_of(t.segment) - start_of(t.segment), Vec<Dimension>{}};
}

template <int Dimension>
void ngkPolyline<Dimension>::visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                                          nmk_ngk::PieceOrder order) const {
    const int count = segment_count();
    for (int i = 0; i < count; ++i) {
        const int segment = order == nmk_ngk::PieceOrder::forwards ? i : count - 1 - i;
        visitor.visit(nmk_ngk::LinePiece<Dimension>(start_of(segment), end_of(segment)), segment);
    }
}

template class ngkPolyline<2>;
template class ngkPolyline<3>;

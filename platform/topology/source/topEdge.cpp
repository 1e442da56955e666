#include <topology/topEdge.h>

namespace {

bool is_at(const ngkCurve3& curve, double fraction, const topVertex& vertex) {
    giPoint3 point;
    return curve.evaluate(fraction, point) != 0 &&
           point.coincident(vertex.point(), vertex.tolerance()) != 0;
}

}  // namespace

topEdge::topEdge(const ngkCurvePtr3& curve, const topVertexPtr& start, const topVertexPtr& end)
    : m_curve(curve), m_start(start), m_end(end) {
    const bool has_parts =
        curve && start && end && curve->is_valid() && start->is_valid() && end->is_valid();
    set_valid(has_parts && is_at(*curve, 0.0, *start) && is_at(*curve, 1.0, *end));
}

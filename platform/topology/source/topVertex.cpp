#include <ngk/Vec.h>
#include <topology/topVertex.h>

topVertex::topVertex(const giPoint3& point, double tolerance)
    : m_point(point), m_tolerance(tolerance) {
    set_valid(nmk_ngk::vec_of(point).is_usable() && tolerance >= 0.0 &&
              tolerance <= nmk_ngk::largest_coordinate);
}

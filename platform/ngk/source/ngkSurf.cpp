#include <ngk/ngkSurf.h>

ngkSurf::~ngkSurf() = default;

int ngkSurf::evaluate(const giPoint2& uv, giPoint3& point) const {
    point = giPoint3();
    const bool is_inside = m_is_valid && nmk_ngk::vec_of(uv).is_usable() &&
                           u_range().contains(uv.x) && v_range().contains(uv.y);
    if (!is_inside) return 0;
    point = nmk_ngk::point_of(jet_at(uv.x, uv.y).point);
    return 1;
}

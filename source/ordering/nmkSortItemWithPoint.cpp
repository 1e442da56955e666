// nmkSortItemWithPoint: the scaled point and the weights of an item for the elastic ring.
#include <exactmath/exact_power.h>
#include <nmktoolbox/ordering/nmkSortItemWithPoint.h>

#include "ordering/run_time_type.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "elastic_limits.h"

namespace {

double squared_plan_distance(const giPoint3& a, const giPoint3& b) {
    const double dx = a.x - b.x;
    const double dy = a.y - b.y;
    return dx * dx + dy * dy;
}

}  // namespace

nmkSortItemWithPoint::nmkSortItemWithPoint() = default;
nmkSortItemWithPoint::~nmkSortItemWithPoint() = default;

nmkSortItemWithPoint::nmkSortItemWithPoint(const nmkSortItemWithPoint& other)
    : nmkSortItem(other), point(other.point) {
    if (other.m_ring_part != nullptr) ring_part() = *other.m_ring_part;
}

nmkSortItemWithPoint& nmkSortItemWithPoint::operator=(const nmkSortItemWithPoint& other) {
    if (this == &other) return *this;
    nmkSortItem::operator=(other);
    point = other.point;
    m_ring_part.reset();
    if (other.m_ring_part != nullptr) ring_part() = *other.m_ring_part;
    return *this;
}

nmkSortItemWithPoint::RingPart& nmkSortItemWithPoint::ring_part() {
    if (m_ring_part == nullptr) m_ring_part = std::make_unique<RingPart>();
    return *m_ring_part;
}

const nmkSortItemWithPoint::RingPart& nmkSortItemWithPoint::ring_part() const {
    static const RingPart without_a_ring;
    return m_ring_part != nullptr ? *m_ring_part : without_a_ring;
}

void nmkSortItemWithPoint::get_weighted_distance(double& dx, double& dy, int ring_index,
                                                 giPoint3& ring_point) const {
    const RingPart& part = ring_part();
    const double weight = part.weights[ring_index];
    dx = (part.normal_point.x - ring_point.x) * weight / part.weight_sum;
    dy = (part.normal_point.y - ring_point.y) * weight / part.weight_sum;
}

double nmkSortItemWithPoint::set_distance_array(giPoint3coDynArr& ring, double k) {
    RingPart& part = ring_part();
    part.weights.resize(ring.size());
    part.weight_sum = 0.0;
    double least = std::numeric_limits<double>::max();
    for (int j = 0; j < ring.size(); ++j) {
        const double d2 = squared_plan_distance(part.normal_point, ring[j]);
        least = std::min(least, d2);
        const bool out_of_reach = d2 >= nmk_ordering::elastic_limits::squared_reach;
        part.weights[j] = out_of_reach ? 0.0 : nmk_exact::exact_exp(-d2 / ((k + k) * k));
        part.weight_sum += part.weights[j];
    }
    if (ring.size() == 0 || part.weight_sum < nmk_ordering::elastic_limits::min_weight_sum) {
        part.weight_sum = 1.0;
    }
    return least;
}

int nmkSortItemWithPoint::get_closest(giPoint3coDynArr& ring) const {
    const giPoint3& normal_point = ring_part().normal_point;
    int closest = 0;
    double least = std::numeric_limits<double>::max();
    for (int j = 0; j < ring.size(); ++j) {
        const double d2 = squared_plan_distance(normal_point, ring[j]);
        if (d2 < least) {
            least = d2;
            closest = j;
        }
    }
    return closest;
}

void nmkSortItemWithPoint::transform_point(double scale, double x0, double y0) {
    giPoint3& normal_point = ring_part().normal_point;
    normal_point = get_point();
    if (scale > 0.0) {
        normal_point.x = (normal_point.x - x0) / scale;
        normal_point.y = (normal_point.y - y0) / scale;
    }
}

CRuntimeClass* nmkSortItemWithPoint::GetRuntimeClass() const { return GetThisClass(); }

CRuntimeClass* nmkSortItemWithPoint::GetThisClass() {
    static CRuntimeClass runtime_class = {"nmkSortItemWithPoint", sizeof(nmkSortItemWithPoint),
                                          nmkSortItem::GetThisClass()};
    return &runtime_class;
}

CRuntimeClass* nmkSortItemWithPoint::_GetBaseClass() { return nmkSortItem::GetThisClass(); }

const utTypeID& nmkSortItemWithPoint::ut_static_type() {
    static const utTypeID type("nmkSortItemWithPoint", &nmkSortItem::ut_static_type());
    return type;
}

const utTypeID& nmkSortItemWithPoint::ut_dynamic_type() const { return ut_static_type(); }

int nmkSortItemWithPoint::ut_is_kind_of(const utTypeID& type) const {
    return nmk_ordering::is_kind(*this, type);
}

nmkSortItemWithPoint* nmkSortItemWithPoint::ut_dynamic_cast(nmkSortItem* item) {
    return nmk_ordering::cast_to_kind<nmkSortItemWithPoint>(item);
}

const nmkSortItemWithPoint* nmkSortItemWithPoint::ut_dynamic_cast(const nmkSortItem* item) {
    return nmk_ordering::cast_to_kind<const nmkSortItemWithPoint>(item);
}

#include <nmktoolbox/ordering/nmkAnnealStatePoints.h>

#include "ordering/run_time_type.h"
#include "ordering/whole_assignment.h"

using nmk_ordering::cast_to_kind;

nmkAnnealStatePoints::nmkAnnealStatePoints(const giPoint3coPageArr* array)
    : nmkAnnealOrderState(array->size()), points(array) {}

const utTypeID& nmkAnnealStatePoints::ut_dynamic_type() const { return ut_static_type(); }

int nmkAnnealStatePoints::ut_is_kind_of(const utTypeID& type) const {
    return nmk_ordering::is_kind(*this, type);
}

nmkAnnealState& nmkAnnealStatePoints::operator=(const nmkAnnealState& other) {
    if (&other == this) return *this;
    if (const nmkAnnealStatePoints* source = ut_dynamic_cast(&other)) points = source->points;
    nmkAnnealOrderState::operator=(other);
    return *this;
}

nmkAnnealStatePoints& nmkAnnealStatePoints::operator=(const nmkAnnealStatePoints& other) {
    return nmk_ordering::assign_whole(*this, other);
}

nmkAnnealStatePoints::~nmkAnnealStatePoints() = default;

double nmkAnnealStatePoints::distance(int item_a, int item_b) {
    return (*points)[item_a].distance((*points)[item_b]);
}

const utTypeID& nmkAnnealStatePoints::ut_static_type() {
    static const utTypeID type("nmkAnnealStatePoints", &nmkAnnealOrderState::ut_static_type());
    return type;
}

nmkAnnealStatePoints* nmkAnnealStatePoints::ut_dynamic_cast(nmkAnnealState* state) {
    return cast_to_kind<nmkAnnealStatePoints>(state);
}

const nmkAnnealStatePoints* nmkAnnealStatePoints::ut_dynamic_cast(const nmkAnnealState* state) {
    return cast_to_kind<const nmkAnnealStatePoints>(state);
}

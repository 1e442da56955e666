// curve_handle.h: handles to new curves, empty where the curve is not valid.
#pragma once

#include <ngk/ngkCurve.h>
#include <ngk/ngk_resource_table.h>

namespace nmk_curves {

/// Takes ownership of `curve`.
template <int Dimension>
coPrf<const ngkCurve<Dimension>> handle_of(const ngkCurve<Dimension>* curve) {
    const coPrf<const ngkCurve<Dimension>> handle(curve);
    return handle->is_valid() ? handle : coPrf<const ngkCurve<Dimension>>();
}

/// The value of ngk_TOLCOINCPOINT3D now.
inline double coincidence_in_space() {
    return ngk_resource_table_inquire().value(ngk_TOLCOINCPOINT3D);
}

}  // namespace nmk_curves

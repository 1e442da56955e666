#include <nmktoolbox/runtime/nmkUtestUnitSwitcher.h>

namespace {

constexpr double millimetres_per_inch = 25.4;
// A literal and not a division, so that every compiler uses the same double.
constexpr double inches_per_millimetre = 0.03937007874015748;

nmkUnitsType current_units = nmkUnitsTypeMillimetres;

}  // namespace

void nmkUtestUnitSwitcher::set_units(nmkUnitsType units) { current_units = units; }

void nmkUtestUnitSwitcher::set_units_callback(nmkUnitsType units, void* /*data*/) {
    set_units(units);
}

double nmkUtestUnitSwitcher::callback(nmkUnitsUtilsTrans transform, nmkUnitsType units,
                                      void* /*data*/) {
    if (units == current_units) return 1.0;
    const nmkUnitsType reduced =
        transform == nmkUnitsUtilsTransFrom ? nmkUnitsTypeMillimetres : nmkUnitsTypeInches;
    return units != reduced ? millimetres_per_inch : inches_per_millimetre;
}

#include <nmktoolbox/curves/nmkUnitsUtils.h>

namespace {

// Factor from millimetres to the current units. At most this: the units are inches.
constexpr double largest_factor_of_inches = 0.99999;

struct Callbacks {
    nmkUnitsUtils::ScalingCallback scaling = nullptr;
    void* scaling_data = nullptr;
    nmkUnitsUtils::UnitsCallback units = nullptr;
    void* units_data = nullptr;
};

constinit Callbacks registered;

double scale(nmkUnitsUtilsTrans direction, nmkUnitsType type) {
    if (registered.scaling == nullptr) return 1.0;
    return registered.scaling(direction, type, registered.scaling_data);
}

}  // namespace

void nmkUnitsUtils::set_scaling_callback(ScalingCallback callback, void* data) {
    registered.scaling = callback;
    registered.scaling_data = data;
}

void nmkUnitsUtils::set_units_callback(UnitsCallback callback, void* data) {
    registered.units = callback;
    registered.units_data = data;
}

double nmkUnitsUtils::get_scale_from(nmkUnitsType type) {
    return scale(nmkUnitsUtilsTransFrom, type);
}

double nmkUnitsUtils::get_scale_to(nmkUnitsType type) { return scale(nmkUnitsUtilsTransTo, type); }

nmkUnitsType nmkUnitsUtils::get_units() {
    // Deliberate: no state of its own. The host changes units without a message, so the factor is
    // the only thing that is never out of date.
    const bool is_inches = get_scale_from(nmkUnitsTypeMillimetres) <= largest_factor_of_inches;
    return is_inches ? nmkUnitsTypeInches : nmkUnitsTypeMillimetres;
}

void nmkUnitsUtils::set_units(nmkUnitsType type) {
    if (registered.units != nullptr) registered.units(type, registered.units_data);
}

double nmkUnitsUtils::select(double mm_value, double inch_value) {
    return get_units() == nmkUnitsTypeInches ? inch_value : mm_value;
}

utString nmkUnitsUtils::get_units_string(nmkUnitsType type, bool short_form) {
    if (type == nmkUnitsTypeMillimetres) return "mm";
    if (type == nmkUnitsTypeInches) return short_form ? "in" : "Inches";
    return "";
}

utString nmkUnitsUtils::get_current_units_string(bool short_form) {
    return get_units_string(get_units(), short_form);
}

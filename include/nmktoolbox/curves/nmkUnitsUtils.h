// nmkUnitsUtils: the units of length in force, as the host application reports them.
//
// The library keeps no units of its own. The host registers a callback that returns the factor
// between a unit and the current units, and may register one that changes the current units.
// Without callbacks the units are millimetres and every factor is 1.
//
// The callbacks are shared by the whole process and not locked: register them before other threads
// use them.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// A unit of length. Other values may arrive from outside and are accepted everywhere.
enum nmkUnitsType : int { nmkUnitsTypeMillimetres = 0, nmkUnitsTypeInches = 1 };

/// The direction of a factor of scale.
enum nmkUnitsUtilsTrans : int {
    nmkUnitsUtilsTransTo = 0,   // from the current units to the given unit
    nmkUnitsUtilsTransFrom = 1  // from the given unit to the current units
};

class NMKTOOLBOX_EXPORT nmkUnitsUtils {
  public:
    /// Returns the factor of scale for a direction and a unit; `data` is what was registered.
    using ScalingCallback = double (*)(nmkUnitsUtilsTrans, nmkUnitsType, void* data);

    /// Changes the current units of the host; `data` is what was registered.
    using UnitsCallback = void (*)(nmkUnitsType, void* data);

    /// Registers the callback in place of the earlier one; null removes it. `data` is borrowed.
    static void set_scaling_callback(ScalingCallback callback, void* data);
    static void set_units_callback(UnitsCallback callback, void* data);

    /// The factor from `type` to the current units; 1 without a scaling callback.
    static double get_scale_from(nmkUnitsType type);

    /// The factor from the current units to `type`; 1 without a scaling callback.
    static double get_scale_to(nmkUnitsType type);

    /// The current units, inferred from the factor from millimetres: at most 0.99999, also zero or
    /// negative, is inches; anything else, NaN included, is millimetres.
    static nmkUnitsType get_units();

    /// Asks the host to change the current units; without a units callback nothing happens.
    static void set_units(nmkUnitsType type);

    /// `inch_value` while the current units are inches, otherwise `mm_value`.
    static double select(double mm_value, double inch_value);

    /// The name of a unit: "mm", and "in" or "Inches"; the empty text for any other value.
    static utString get_units_string(nmkUnitsType type, bool short_form);
    static utString get_current_units_string(bool short_form);

  private:
    nmkUnitsUtils() = delete;
};

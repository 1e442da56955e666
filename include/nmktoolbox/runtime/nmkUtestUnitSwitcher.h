// nmkUtestUnitSwitcher: units for tests, in the form of the callbacks of nmkUnitsUtils.
//
//     nmkUnitsUtils::set_scaling_callback(nmkUtestUnitSwitcher::callback, nullptr);
//     nmkUnitsUtils::set_units_callback(nmkUtestUnitSwitcher::set_units_callback, nullptr);
//
// The current units are shared by the process and not locked.
#pragma once

#include <nmktoolbox/curves/nmkUnitsUtils.h>
#include <nmktoolbox/export.h>

class NMKTOOLBOX_EXPORT nmkUtestUnitSwitcher {
  public:
    /// Sets the current units, millimetres at first; `data` is not read.
    static void set_units(nmkUnitsType units);
    static void set_units_callback(nmkUnitsType units, void* data);

    /// The factor between `units` and the current units; exactly 1 when they are the same.
    ///
    ///   transform    nmkUnitsUtilsTransFrom: 25.4 for any units but millimetres, else 1 / 25.4;
    ///                any other: 25.4 for any units but inches, else 1 / 25.4
    ///   data         not read
    static double callback(nmkUnitsUtilsTrans transform, nmkUnitsType units, void* data);

  private:
    nmkUtestUnitSwitcher() = delete;
};

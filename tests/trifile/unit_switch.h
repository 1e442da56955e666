// unit_switch.h: the units of length in force for the length of a test.
#pragma once

#include <nmktoolbox/curves/nmkUnitsUtils.h>
#include <nmktoolbox/runtime/nmkUtestUnitSwitcher.h>

class UnitSwitch {
  public:
    explicit UnitSwitch(nmkUnitsType units) {
        nmkUtestUnitSwitcher::set_units(units);
        nmkUnitsUtils::set_scaling_callback(nmkUtestUnitSwitcher::callback, nullptr);
    }
    UnitSwitch(const UnitSwitch&) = delete;
    UnitSwitch& operator=(const UnitSwitch&) = delete;
    ~UnitSwitch() {
        nmkUnitsUtils::set_scaling_callback(nullptr, nullptr);
        nmkUtestUnitSwitcher::set_units(nmkUnitsTypeMillimetres);
    }
};

// nmkParThicknessInterface: the thickness that a part of a model has to keep.
//
// Thicknesses are in the unit of the model.
#pragma once

#include <nmktoolbox/export.h>

class NMKTOOLBOX_EXPORT nmkParThicknessInterface {
  public:
    /// The radial thickness, and the axial one.
    virtual double get_thickness() const = 0;
    virtual double get_thickness_axial() const = 0;

    /// Non-zero where the axial thickness is used apart from the radial one.
    virtual int get_axial_radial() const = 0;

    virtual void set_thickness(double thickness) = 0;
    virtual void set_thickness_axial(double thickness) = 0;
    virtual void set_axial_radial(int axial_radial) = 0;

  protected:
    nmkParThicknessInterface() = default;
    nmkParThicknessInterface(const nmkParThicknessInterface&) = default;
    nmkParThicknessInterface& operator=(const nmkParThicknessInterface&) = default;
    ~nmkParThicknessInterface() = default;
};

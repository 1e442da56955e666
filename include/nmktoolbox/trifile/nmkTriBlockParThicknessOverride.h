// nmkTriBlockParThicknessOverride: a thickness setting that takes the place of a component's own.
//
// It takes the component's settings over and attaches itself to it; from then on the component and
// the blocks that refer to it read and write the override. A class derived from it makes objects.
// The number of overrides in use is kept for the whole process, without a lock.
#pragma once

#include <nmktoolbox/export.h>
#include <nmktoolbox/trifile/nmkGiTriData.h>
#include <nmktoolbox/trifile/nmkGiTriDataTypes.h>

#include <cstdint>

class nmkMachinableComponent;

class NMKTOOLBOX_EXPORT nmkTriBlockParThicknessOverride {
  public:
    nmkTriBlockParThicknessOverride& operator=(const nmkTriBlockParThicknessOverride&) = delete;

    /// 0.0 while it is not set.
    virtual double get_thickness() const;

    /// The axial thickness where it is in use, else the thickness; 0.0 while that is not set.
    virtual double get_thickness_axial() const;
    virtual int get_use_thickness_axial() const;
    virtual nmkGiTriDataModelType get_model_type() const;
    virtual nmkGiTriDataMachiningType get_machining_type() const;

    /// Whether each block has a setting of its own: 0 here.
    virtual int per_tri_block() const;

    /// A new copy of every field, which the caller owns. It is not counted as in use; but when it
    /// is destroyed, it counts down and detaches what is attached to the component, unless
    /// set_slave was called on it.
    virtual nmkTriBlockParThicknessOverride* create_new() const;

    /// Detaches what is attached to the component and counts down. Does neither without a
    /// component, or once set_slave was called.
    virtual ~nmkTriBlockParThicknessOverride();

    void set_thickness(double thickness) noexcept { m_thickness = thickness; }
    void set_thickness_axial(double thickness) noexcept { m_thickness_axial = thickness; }
    void use_axial_thickness(int use) noexcept { m_use_axial_thickness = use; }
    void set_model_type(nmkGiTriDataModelType type) noexcept { m_model_type = type; }
    void set_machining_type(nmkGiTriDataMachiningType type) noexcept { m_machining_type = type; }

    /// Copies the data of the feature, which must be bound, into the parameters; the settings of
    /// the override stay as they are.
    void set_par(const nmkGiTriDatacoFeature& data);

    /// The parameters.
    const nmkGiTriData& par() const noexcept { return m_par; }

    /// From now on its destruction neither detaches nor counts down.
    void set_slave() noexcept { m_is_slave = 1; }

    /// Whether any override is counted as in use.
    static bool thickness_overrides_exist() noexcept;

  protected:
    /// As set_component. With null, nothing is taken over or counted: the thicknesses read 0.0
    /// until they are set.
    explicit nmkTriBlockParThicknessOverride(const nmkMachinableComponent* component);

    /// Takes the settings of the component over, counts itself as in use, also if it was before,
    /// and attaches itself. A machine mode other than 0, 1 and 2 leaves the machining type.
    void set_component(const nmkMachinableComponent* component);

    /// Copies every field.
    nmkTriBlockParThicknessOverride(const nmkTriBlockParThicknessOverride&) = default;

  private:
    double m_thickness = gi_unset_low;
    double m_thickness_axial = gi_unset_low;
    std::int32_t m_use_axial_thickness = 0;
    nmkGiTriDataModelType m_model_type = nmkGiTriDataModelUsual;
    nmkGiTriDataMachiningType m_machining_type = nmkGiTriDataMachining0;
    const nmkMachinableComponent* m_component = nullptr;
    nmkGiTriData m_par;
    std::int32_t m_is_slave = 0;
};

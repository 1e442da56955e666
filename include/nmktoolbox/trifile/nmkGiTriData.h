// nmkGiTriData.h: what machining needs to know of a block of triangles, as a feature.
//
// Settings that are doubles are minus the largest double while they are not set. Pointers are
// borrowed. Where the data have a thickness override, the settings that it has are read from it and
// written to it, and the data's own fields keep what they hold.
#pragma once

#include <geometry/giUnset.h>
#include <ncamcontainer/basecoFeature.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/trifile/nmkGiTriDataTypes.h>
#include <utils/utCopy.h>
#include <utils/utString.h>

#include <cstdint>

class nmkModelTopPar;
class nmkTriBlockParThicknessOverride;
class nmkUniqueId;
class topFace;

class NMKTOOLBOX_EXPORT nmkGiTriData {
  public:
    nmkGiTriData() = default;

    /// Copies every field; the copy shares the override and owns nothing of it.
    nmkGiTriData(utCopy, const nmkGiTriData& other);
    nmkGiTriData(const nmkGiTriData&) = default;
    nmkGiTriData& operator=(const nmkGiTriData&) = default;
    virtual ~nmkGiTriData();

    /// A number of the host's, -1 at first.
    int get_colour() const noexcept { return m_colour; }
    void set_colour(int colour) noexcept { m_colour = colour; }

    /// Null at first.
    const nmkUniqueId* get_level() const noexcept { return m_level; }
    void set_level(const nmkUniqueId* level) noexcept { m_level = level; }

    /// How far the triangles are from the model, in its unit.
    double get_tolerance() const noexcept { return m_tolerance; }
    void set_tolerance(double tolerance) noexcept { m_tolerance = tolerance; }

    /// True for a tolerance above 0.
    bool is_tolerance_valid() const noexcept { return m_tolerance > 0.0; }

    /// The thickness to leave: the override's, else the own one, 0.0 where that is not set.
    double get_thickness() const;
    void set_thickness(double thickness);

    /// The axial thickness to leave: the override's, else the own axial one where it is in use,
    /// else the own thickness; 0.0 where that is not set.
    double get_thickness_axial() const;
    void set_thickness_axial(double thickness);

    /// Whether the own axial thickness is in use, 0 at first. use_axial_thickness writes to the
    /// override where there is one, but the reading never asks it.
    int get_use_thickness_axial() const noexcept { return m_use_axial_thickness; }
    void use_axial_thickness(int use);

    /// The override's, else the own one.
    nmkGiTriDataModelType get_model_type() const;
    nmkGiTriDataModelType get_model_type_no_override() const noexcept { return m_model_type; }
    void set_model_type(nmkGiTriDataModelType type);

    /// The override's, else the own one.
    nmkGiTriDataMachiningType get_machining_type() const;
    nmkGiTriDataMachiningType get_machining_type_no_override() const noexcept {
        return m_machining_type;
    }
    void set_machining_type(nmkGiTriDataMachiningType type);

    /// Non-zero, as at first, where the block is drawn shaded.
    int is_shadeable() const noexcept { return m_is_shadeable; }
    void set_shadeable(int is_shadeable) noexcept { m_is_shadeable = is_shadeable; }

    /// Null at first; is_name_valid is true where it is a text, even the empty one.
    const utString& get_name() const noexcept { return m_name; }
    void set_name(const utString& name) { m_name = name; }
    bool is_name_valid() const noexcept { return !m_name.is_null(); }

    const topFace* get_face() const noexcept { return m_face; }
    void set_face(const topFace* face) noexcept { m_face = face; }

    const nmkModelTopPar* get_modeltop_par() const noexcept { return m_modeltop_par; }
    void set_modeltop_par(const nmkModelTopPar* par) noexcept { m_modeltop_par = par; }

    nmkTriBlockParThicknessOverride* get_thickness_override() const noexcept {
        return m_thickness_override;
    }
    void set_thickness_override(nmkTriBlockParThicknessOverride* thickness_override) noexcept {
        m_thickness_override = thickness_override;
    }

    /// Sets the override to null, and does nothing else.
    void reset_thickness_override() noexcept { m_thickness_override = nullptr; }

    /// Non-zero where the block is flat; 0 at first.
    int get_flat() const noexcept { return m_is_flat; }
    void set_flat(int is_flat) noexcept { m_is_flat = is_flat; }

    /// The limits of the block in Z.
    double z_min() const noexcept { return m_z_min; }
    double z_max() const noexcept { return m_z_max; }
    void set_z_limits(double z_min, double z_max) noexcept {
        m_z_min = z_min;
        m_z_max = z_max;
    }

    /// Stores a colour, 3 at first, for the whole process. New data do not use it: their colour
    /// stays -1.
    static void set_default_colour(int colour) noexcept;

  private:
    std::int32_t m_colour = -1;
    const nmkUniqueId* m_level = nullptr;
    double m_tolerance = gi_unset_low;
    double m_thickness = gi_unset_low;
    double m_thickness_axial = gi_unset_low;
    std::int32_t m_use_axial_thickness = 0;
    nmkGiTriDataModelType m_model_type = nmkGiTriDataModelUsual;
    nmkGiTriDataMachiningType m_machining_type = nmkGiTriDataMachining0;
    std::int32_t m_is_shadeable = 1;
    utString m_name;
    const topFace* m_face = nullptr;
    const nmkModelTopPar* m_modeltop_par = nullptr;
    nmkTriBlockParThicknessOverride* m_thickness_override = nullptr;
    std::int32_t m_is_flat = 0;
    double m_z_min = gi_unset_low;
    double m_z_max = gi_unset_low;
};

class NMKTOOLBOX_EXPORT nmkGiTriDatacoFeature : public coDataFeature<nmkGiTriData> {
  public:
    basecoFeature* create() const override;
    const coFeatureID& get_id() const override;

  private:
    static const coFeatureID s_id;
};

// nmkMachinableComponent: one piece of the model as the machining sees it.
//
// It has a thickness to leave, a machine mode, a model type, and two identifiers from which those
// who have computed something of it see that its geometry or its triangles have changed. A
// thickness override may be attached, which then takes the place of the component's own settings;
// whoever attaches it owns it.
//
// Each setter ends with one change notification. The override must be detached before it is
// destroyed, which its own destructor does. For one thread at a time.
#pragma once

#include <mfc/CObject.h>
#include <ncamcontainer/coDList.h>
#include <ncamcontainer/coPrf.h>
#include <nmktoolbox/collections/nmkPtrClaim.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/uniqueid/nmkParThicknessInterface.h>
#include <nmktoolbox/uniqueid/nmkUniqueId.h>

#include <cstdint>
#include <memory>

class nmkParTopology;
class nmkTriBlockParThicknessOverride;
enum nmkGiTriDataMachiningType : std::int32_t;
enum nmkGiTriDataModelType : std::int32_t;

/// How a component is machined; 0 to 2 are the values 0 to 2 of nmkGiTriDataMachiningType.
enum nmkMTPMachineMode : std::int32_t {
    nmkMTPMachineMode0 = 0,
    nmkMTPMachineMode1 = 1,
    nmkMTPMachineMode2 = 2
};

class NMKTOOLBOX_EXPORT nmkMachinableComponent : public CObject, public nmkParThicknessInterface {
  public:
    /// Thicknesses 0, flag 0, mode 0, model type 1, no override, two new identifiers, no proxies.
    nmkMachinableComponent();

    /// The same, but without an identifier of triangles: the derived class sets it, and the number
    /// of proxies. The topology is not kept.
    nmkMachinableComponent(nmkPtrClaim, nmkParTopology* topology);
    nmkMachinableComponent(const nmkMachinableComponent&) = delete;
    nmkMachinableComponent& operator=(const nmkMachinableComponent&) = delete;

    /// Leaves an attached override alone; overrides of its own list end with it, without a
    /// notification.
    ~nmkMachinableComponent() override;

    CRuntimeClass* GetRuntimeClass() const override;
    static CRuntimeClass* GetThisClass();
    static CRuntimeClass* _GetBaseClass();

    /// The identifiers; that of the geometry is valid until the next geometry_modify.
    const nmkUniqueId* get_geometry_id() const noexcept { return m_geometry_id.get(); }
    const nmkUniqueId* triangles_id() const noexcept { return m_triangles_id.get(); }

    /// The override's, where one is attached. Else the own fields; while the flag is 0, the axial
    /// thickness is the radial one, whatever its field holds.
    double get_thickness() const override;
    double get_thickness_axial() const override;
    int get_axial_radial() const override;

    /// To the override where one is attached, else to the own field.
    void set_thickness(double thickness) override;
    void set_thickness_axial(double thickness) override;
    void set_axial_radial(int axial_radial) override;

    nmkGiTriDataModelType get_model_type() const;
    nmkGiTriDataModelType get_model_type_no_override() const noexcept;
    void set_model_type(nmkGiTriDataModelType type);

    /// The mode of the override where that is 0, 1 or 2, else the own one.
    nmkMTPMachineMode machine_mode() const;
    nmkMTPMachineMode machine_mode_no_override() const noexcept { return m_machine_mode; }

    /// Refused, without a notification, while the mode is locked and `mode` is not 2. A locked
    /// component takes mode 2 itself, also with an override; else as a setter, and the override
    /// takes only 0, 1 and 2.
    void set_machine_mode(nmkMTPMachineMode mode);

    /// Gives modes 0, 1 and 2 to the override, and notifies whatever the mode is; does nothing
    /// without an override.
    void force_override_machine_mode(nmkMTPMachineMode mode);

    const nmkTriBlockParThicknessOverride* get_thickness_override() const noexcept {
        return m_thickness_override;
    }

    /// Attaches an override, null for none. Constant, since the component itself does not change.
    void set_thickness_override(nmkTriBlockParThicknessOverride* thickness_override) const;

    /// Empties the list of overrides and detaches the attached one.
    void reset_thickness_override() const;

    /// The number of registered proxies. It is not checked.
    int num_proxy() const noexcept { return m_num_proxy; }
    void register_proxy() noexcept;
    void unregister_proxy() noexcept;

  protected:
    using OverrideList = coDList<coPrf<nmkTriBlockParThicknessOverride>>;

    /// Replaces the identifier of the geometry by a new one, freeing the old one.
    void geometry_modify();

    /// As set_machine_mode, but a locked component takes every mode.
    void set_machine_mode_internal(nmkMTPMachineMode mode);

    /// Takes ownership of an identifier of the triangles.
    void set_triangles_id(nmkUniqueId* identifier);
    void set_num_proxy(int count) noexcept { m_num_proxy = count; }

    /// Overrides that the component keeps, and its position in them.
    OverrideList& override_list() const noexcept { return m_overrides; }
    OverrideList::coCursor& override_cursor() const noexcept { return m_override_cursor; }

  public:
    /// Operations of the libraries that derive components. None of them is called here.
    virtual void component_operation_1() = 0;
    virtual void component_operation_2() = 0;
    virtual void component_operation_3() = 0;
    virtual void component_operation_4() = 0;
    virtual void component_operation_5() = 0;
    virtual void component_operation_6() = 0;
    virtual void component_operation_7() = 0;
    virtual void component_operation_8() = 0;

    /// Whether the machine mode is locked.
    virtual bool is_machine_mode_locked() const = 0;

    /// The change notification.
    virtual void component_changed() const = 0;

  private:
    nmkMachinableComponent(bool has_triangles_id);
    bool give_to_override(nmkMTPMachineMode mode);

    double m_thickness = 0.0;
    double m_thickness_axial = 0.0;
    std::int32_t m_axial_radial = 0;
    nmkMTPMachineMode m_machine_mode = nmkMTPMachineMode0;
    std::int32_t m_num_proxy = 0;
    std::unique_ptr<nmkUniqueId> m_geometry_id;
    std::unique_ptr<nmkUniqueId> m_triangles_id;
    nmkGiTriDataModelType m_model_type{1};
    mutable nmkTriBlockParThicknessOverride* m_thickness_override = nullptr;
    mutable OverrideList m_overrides;
    mutable OverrideList::coCursor m_override_cursor{m_overrides};
    mutable bool m_is_resetting = false;  // the list destroys overrides, which reset on their own
};

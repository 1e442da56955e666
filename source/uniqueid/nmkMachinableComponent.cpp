#include <nmktoolbox/trifile/nmkTriBlockParThicknessOverride.h>
#include <nmktoolbox/uniqueid/nmkMachinableComponent.h>

namespace {

// Modes that have a machining type.
bool is_machining_type(int mode) { return mode >= 0 && mode <= 2; }

// Counts wrap, since nobody checks them.
std::int32_t wrapping_sum(std::int32_t a, std::uint32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + b);
}

}  // namespace

nmkMachinableComponent::nmkMachinableComponent(bool has_triangles_id)
    : m_geometry_id(nmkUniqueId::create()),
      m_triangles_id(has_triangles_id ? nmkUniqueId::create() : nullptr) {}

nmkMachinableComponent::nmkMachinableComponent() : nmkMachinableComponent(true) {}

nmkMachinableComponent::nmkMachinableComponent(nmkPtrClaim, nmkParTopology*)
    : nmkMachinableComponent(false) {}

nmkMachinableComponent::~nmkMachinableComponent() {
    m_is_resetting = true;
    m_overrides.clear();
}

CRuntimeClass* nmkMachinableComponent::GetRuntimeClass() const { return GetThisClass(); }

CRuntimeClass* nmkMachinableComponent::GetThisClass() {
    static CRuntimeClass of_this = {"nmkMachinableComponent", sizeof(nmkMachinableComponent),
                                    CObject::GetThisClass()};
    return &of_this;
}

CRuntimeClass* nmkMachinableComponent::_GetBaseClass() { return CObject::GetThisClass(); }

double nmkMachinableComponent::get_thickness() const {
    return m_thickness_override != nullptr ? m_thickness_override->get_thickness() : m_thickness;
}

double nmkMachinableComponent::get_thickness_axial() const {
    if (m_thickness_override != nullptr) return m_thickness_override->get_thickness_axial();
    return get_axial_radial() != 0 ? m_thickness_axial : m_thickness;
}

int nmkMachinableComponent::get_axial_radial() const {
    return m_thickness_override != nullptr ? m_thickness_override->get_use_thickness_axial()
                                           : m_axial_radial;
}

void nmkMachinableComponent::set_thickness(double thickness) {
    if (m_thickness_override != nullptr) {
        m_thickness_override->set_thickness(thickness);
    } else {
        m_thickness = thickness;
    }
    component_changed();
}

void nmkMachinableComponent::set_thickness_axial(double thickness) {
    if (m_thickness_override != nullptr) {
        m_thickness_override->set_thickness_axial(thickness);
    } else {
        m_thickness_axial = thickness;
    }
    component_changed();
}

void nmkMachinableComponent::set_axial_radial(int axial_radial) {
    if (m_thickness_override != nullptr) {
        m_thickness_override->use_axial_thickness(axial_radial);
    } else {
        m_axial_radial = axial_radial;
    }
    component_changed();
}

nmkGiTriDataModelType nmkMachinableComponent::get_model_type() const {
    return m_thickness_override != nullptr ? m_thickness_override->get_model_type() : m_model_type;
}

nmkGiTriDataModelType nmkMachinableComponent::get_model_type_no_override() const noexcept {
    return m_model_type;
}

void nmkMachinableComponent::set_model_type(nmkGiTriDataModelType type) {
    if (m_thickness_override != nullptr) {
        m_thickness_override->set_model_type(type);
    } else {
        m_model_type = type;
    }
    component_changed();
}

nmkMTPMachineMode nmkMachinableComponent::machine_mode() const {
    if (m_thickness_override == nullptr) return m_machine_mode;
    const nmkGiTriDataMachiningType type = m_thickness_override->get_machining_type();
    return is_machining_type(type) ? static_cast<nmkMTPMachineMode>(type) : m_machine_mode;
}

void nmkMachinableComponent::set_machine_mode(nmkMTPMachineMode mode) {
    if (is_machine_mode_locked() && mode != nmkMTPMachineMode2) return;
    set_machine_mode_internal(mode);
}

void nmkMachinableComponent::set_machine_mode_internal(nmkMTPMachineMode mode) {
    // Deliberate: a locked component keeps the mode itself, and its override goes on reporting its
    // own.
    if (is_machine_mode_locked() || !give_to_override(mode)) m_machine_mode = mode;
    component_changed();
}

void nmkMachinableComponent::force_override_machine_mode(nmkMTPMachineMode mode) {
    if (give_to_override(mode)) component_changed();
}

// Modes without a machining type are dropped. False without an override.
bool nmkMachinableComponent::give_to_override(nmkMTPMachineMode mode) {
    if (m_thickness_override == nullptr) return false;
    if (is_machining_type(mode)) {
        m_thickness_override->set_machining_type(static_cast<nmkGiTriDataMachiningType>(mode));
    }
    return true;
}

void nmkMachinableComponent::set_thickness_override(
    nmkTriBlockParThicknessOverride* thickness_override) const {
    m_thickness_override = thickness_override;
    component_changed();
}

void nmkMachinableComponent::reset_thickness_override() const {
    if (m_is_resetting) return;
    m_is_resetting = true;
    m_override_cursor.reset();
    m_overrides.clear();
    m_thickness_override = nullptr;
    m_is_resetting = false;
    component_changed();
}

void nmkMachinableComponent::register_proxy() noexcept {
    m_num_proxy = wrapping_sum(m_num_proxy, 1U);
}

void nmkMachinableComponent::unregister_proxy() noexcept {
    m_num_proxy = wrapping_sum(m_num_proxy, ~0U);
}

void nmkMachinableComponent::geometry_modify() { m_geometry_id.reset(nmkUniqueId::create()); }

void nmkMachinableComponent::set_triangles_id(nmkUniqueId* identifier) {
    m_triangles_id.reset(identifier);
}

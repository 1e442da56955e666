#include <nmktoolbox/trifile/nmkTriBlockParThicknessOverride.h>
#include <nmktoolbox/uniqueid/nmkMachinableComponent.h>

#include "marked_value.h"

namespace {

// Overrides that are counted as in use.
constinit std::int32_t live_count = 0;

}  // namespace

nmkTriBlockParThicknessOverride::nmkTriBlockParThicknessOverride(
    const nmkMachinableComponent* component) {
    if (component != nullptr) set_component(component);
}

nmkTriBlockParThicknessOverride::~nmkTriBlockParThicknessOverride() {
    if (m_component == nullptr || m_is_slave != 0) return;
    m_component->reset_thickness_override();
    --live_count;
}

void nmkTriBlockParThicknessOverride::set_component(const nmkMachinableComponent* component) {
    m_component = component;
    if (component == nullptr) return;
    const nmkParThicknessInterface& thickness = *component;
    m_thickness = thickness.get_thickness();
    m_thickness_axial = thickness.get_thickness_axial();
    m_use_axial_thickness = thickness.get_axial_radial();
    m_model_type = component->get_model_type();
    const nmkMTPMachineMode mode = component->machine_mode();
    if (mode >= 0 && mode <= 2) m_machining_type = static_cast<nmkGiTriDataMachiningType>(mode);
    ++live_count;
    component->set_thickness_override(this);
}

double nmkTriBlockParThicknessOverride::get_thickness() const {
    return nmk_trifile::zero_if_unset(m_thickness);
}

double nmkTriBlockParThicknessOverride::get_thickness_axial() const {
    return nmk_trifile::zero_if_unset(m_use_axial_thickness != 0 ? m_thickness_axial : m_thickness);
}

int nmkTriBlockParThicknessOverride::get_use_thickness_axial() const {
    return m_use_axial_thickness;
}

nmkGiTriDataModelType nmkTriBlockParThicknessOverride::get_model_type() const {
    return m_model_type;
}

nmkGiTriDataMachiningType nmkTriBlockParThicknessOverride::get_machining_type() const {
    return m_machining_type;
}

int nmkTriBlockParThicknessOverride::per_tri_block() const { return 0; }

// Deliberate: the copy is not counted, and yet counts down unless it is made a slave.
nmkTriBlockParThicknessOverride* nmkTriBlockParThicknessOverride::create_new() const {
    return new nmkTriBlockParThicknessOverride(*this);
}

void nmkTriBlockParThicknessOverride::set_par(const nmkGiTriDatacoFeature& data) { m_par = *data; }

bool nmkTriBlockParThicknessOverride::thickness_overrides_exist() noexcept {
    return live_count > 0;
}

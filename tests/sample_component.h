// sample_component.h: a machinable component for tests, and an override that anybody may make.
#pragma once

#include <nmktoolbox/trifile/nmkTriBlockParThicknessOverride.h>
#include <nmktoolbox/uniqueid/nmkMachinableComponent.h>

/// Counts its change notifications.
class SampleComponent : public nmkMachinableComponent {
  public:
    using nmkMachinableComponent::geometry_modify;
    using nmkMachinableComponent::nmkMachinableComponent;
    using nmkMachinableComponent::override_cursor;
    using nmkMachinableComponent::override_list;
    using nmkMachinableComponent::set_machine_mode_internal;
    using nmkMachinableComponent::set_num_proxy;
    using nmkMachinableComponent::set_triangles_id;

    void component_operation_1() override {}
    void component_operation_2() override {}
    void component_operation_3() override {}
    void component_operation_4() override {}
    void component_operation_5() override {}
    void component_operation_6() override {}
    void component_operation_7() override {}
    void component_operation_8() override {}
    bool is_machine_mode_locked() const override { return is_locked; }
    void component_changed() const override { ++changes; }

    bool is_locked = false;
    mutable int changes = 0;
};

class SampleOverride : public nmkTriBlockParThicknessOverride {
  public:
    explicit SampleOverride(const nmkMachinableComponent* component)
        : nmkTriBlockParThicknessOverride(component) {}
    using nmkTriBlockParThicknessOverride::set_component;
};

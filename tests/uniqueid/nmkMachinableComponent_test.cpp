#include <gtest/gtest.h>
#include <nmktoolbox/uniqueid/nmkMachinableComponentPtr.h>

#include <climits>
#include <functional>
#include <memory>
#include <ostream>
#include <utility>

#include "sample_component.h"

namespace {

constexpr auto mode_of = [](int mode) { return static_cast<nmkMTPMachineMode>(mode); };
constexpr auto machining_of = [](int type) { return static_cast<nmkGiTriDataMachiningType>(type); };
constexpr auto model_of = [](int type) { return static_cast<nmkGiTriDataModelType>(type); };

// A change of a component, and how often it notifies.
struct NotificationCase {
    const char* name;
    void (*change)(SampleComponent& component);
    int notifications;
};

std::ostream& operator<<(std::ostream& out, const NotificationCase& each) {
    return out << each.name;
}

class nmkMachinableComponent_notifications : public testing::TestWithParam<NotificationCase> {};

}  // namespace

TEST(nmkMachinableComponent, new_one_has_the_defaults) {
    const SampleComponent component;
    EXPECT_EQ(component.get_thickness(), 0.0);
    EXPECT_EQ(component.get_thickness_axial(), 0.0);
    EXPECT_EQ(component.get_axial_radial(), 0);
    EXPECT_EQ(component.machine_mode(), nmkMTPMachineMode0);
    EXPECT_EQ(component.get_model_type(), model_of(1));
    EXPECT_EQ(component.get_thickness_override(), nullptr);
    EXPECT_EQ(component.num_proxy(), 0);
    EXPECT_EQ(component.get_geometry_id()->is_valid(), 1);
    EXPECT_EQ(component.triangles_id()->is_valid(), 1);
    EXPECT_EQ(component.get_geometry_id()->is_equal(component.triangles_id()), 0);
    EXPECT_EQ(component.changes, 0);
}

TEST(nmkMachinableComponent, run_time_class_cannot_be_stored) {
    const CRuntimeClass* const own = nmkMachinableComponent::GetThisClass();
    EXPECT_STREQ(own->m_lpszClassName, "nmkMachinableComponent");
    EXPECT_EQ(own->m_wSchema, 0xFFFFU);
    EXPECT_EQ(nmkMachinableComponent::_GetBaseClass(), CObject::GetThisClass());
    EXPECT_EQ(SampleComponent().GetRuntimeClass(), own);
}

TEST(nmkMachinableComponent,
     of_a_topology_leaves_the_identifier_of_triangles_to_the_derived_class) {
    SampleComponent component(nmk_ptr_claim, nullptr);
    EXPECT_EQ(component.get_geometry_id()->is_valid(), 1);
    EXPECT_EQ(component.triangles_id(), nullptr);
    component.set_triangles_id(nmkUniqueId::create());
    component.set_num_proxy(4);
    EXPECT_EQ(component.triangles_id()->is_valid(), 1);
    EXPECT_EQ(component.num_proxy(), 4);
}

TEST(nmkMachinableComponent, axial_thickness_is_the_radial_one_while_the_flag_is_clear) {
    SampleComponent component;
    component.set_thickness(0.5);
    component.set_thickness_axial(2.0);
    EXPECT_EQ(component.get_thickness_axial(), 0.5);
    component.set_axial_radial(1);
    EXPECT_EQ(component.get_thickness_axial(), 2.0);
}

TEST(nmkMachinableComponent, a_derived_class_may_decide_whether_the_axial_thickness_is_used) {
    class AlwaysAxial : public SampleComponent {
      public:
        int get_axial_radial() const override { return 1; }
    } component;
    component.set_thickness(0.5);
    component.set_thickness_axial(2.0);
    EXPECT_EQ(component.get_thickness_axial(), 2.0);
}

TEST(nmkMachinableComponent, with_an_override_the_own_fields_are_left_alone) {
    SampleComponent component;
    component.set_thickness(0.5);
    {
        const SampleOverride attached(&component);
        component.set_thickness(3.0);
        component.set_thickness_axial(4.0);
        component.set_axial_radial(1);
        component.set_model_type(model_of(7));
        EXPECT_EQ(component.get_thickness(), 3.0);
        EXPECT_EQ(component.get_thickness_axial(), 4.0);
        EXPECT_EQ(component.get_axial_radial(), 1);
        EXPECT_EQ(component.get_model_type(), model_of(7));
        EXPECT_EQ(component.get_model_type_no_override(), model_of(1));
        EXPECT_EQ(attached.get_thickness(), 3.0);
        component.reset_thickness_override();
        EXPECT_EQ(component.get_thickness(), 0.5);
        EXPECT_EQ(component.get_axial_radial(), 0);
    }
}

TEST(nmkMachinableComponent, machine_mode_is_the_overrides_where_it_has_one) {
    SampleComponent component;
    component.set_machine_mode(nmkMTPMachineMode1);
    SampleOverride attached(&component);
    attached.set_machining_type(machining_of(2));
    EXPECT_EQ(component.machine_mode(), nmkMTPMachineMode2);
    attached.set_machining_type(machining_of(3));
    EXPECT_EQ(component.machine_mode(), nmkMTPMachineMode1);
    attached.set_machining_type(machining_of(-1));
    EXPECT_EQ(component.machine_mode(), nmkMTPMachineMode1);
}

TEST(nmkMachinableComponent, machine_mode_goes_to_the_override) {
    SampleComponent component;
    const SampleOverride attached(&component);
    component.set_machine_mode(nmkMTPMachineMode1);
    EXPECT_EQ(attached.get_machining_type(), machining_of(1));
    EXPECT_EQ(component.machine_mode_no_override(), nmkMTPMachineMode0);
    component.set_machine_mode(mode_of(3));
    EXPECT_EQ(attached.get_machining_type(), machining_of(1));
    EXPECT_EQ(component.machine_mode_no_override(), nmkMTPMachineMode0);
}

TEST(nmkMachinableComponent, any_machine_mode_is_kept_without_an_override) {
    SampleComponent component;
    component.set_machine_mode(mode_of(9));
    EXPECT_EQ(component.machine_mode(), mode_of(9));
}

TEST(nmkMachinableComponent, locked_mode_takes_only_mode_2) {
    SampleComponent component;
    component.is_locked = true;
    component.set_machine_mode(nmkMTPMachineMode1);
    EXPECT_EQ(component.machine_mode(), nmkMTPMachineMode0);
    component.set_machine_mode(nmkMTPMachineMode2);
    EXPECT_EQ(component.machine_mode(), nmkMTPMachineMode2);
}

TEST(nmkMachinableComponent, locked_mode_2_is_kept_beside_an_override_that_reports_its_own) {
    SampleComponent component;
    const SampleOverride attached(&component);
    component.is_locked = true;
    component.set_machine_mode(nmkMTPMachineMode2);
    EXPECT_EQ(component.machine_mode_no_override(), nmkMTPMachineMode2);
    EXPECT_EQ(component.machine_mode(), nmkMTPMachineMode0);
    EXPECT_EQ(attached.get_machining_type(), machining_of(0));
}

TEST(nmkMachinableComponent, internal_machine_mode_is_not_refused_by_the_lock) {
    SampleComponent component;
    component.is_locked = true;
    component.set_machine_mode_internal(nmkMTPMachineMode1);
    EXPECT_EQ(component.machine_mode_no_override(), nmkMTPMachineMode1);
}

TEST(nmkMachinableComponent, forced_mode_goes_to_the_override_only) {
    SampleComponent component;
    component.is_locked = true;
    const SampleOverride attached(&component);
    component.force_override_machine_mode(nmkMTPMachineMode1);
    EXPECT_EQ(attached.get_machining_type(), machining_of(1));
    component.changes = 0;
    component.force_override_machine_mode(mode_of(3));
    EXPECT_EQ(attached.get_machining_type(), machining_of(1));
    EXPECT_EQ(component.changes, 1);
    EXPECT_EQ(component.machine_mode_no_override(), nmkMTPMachineMode0);
}

TEST_P(nmkMachinableComponent_notifications, are_sent) {
    SampleComponent component;
    GetParam().change(component);
    EXPECT_EQ(component.changes, GetParam().notifications);
}

INSTANTIATE_TEST_SUITE_P(
    changes, nmkMachinableComponent_notifications,
    testing::Values(
        NotificationCase{"once_for_the_thickness",
                         [](SampleComponent& component) { component.set_thickness(0.0); }, 1},
        NotificationCase{"once_for_the_axial_thickness",
                         [](SampleComponent& component) { component.set_thickness_axial(1.0); }, 1},
        NotificationCase{"once_for_the_axial_flag",
                         [](SampleComponent& component) { component.set_axial_radial(1); }, 1},
        NotificationCase{"once_for_the_model_type",
                         [](SampleComponent& component) { component.set_model_type(model_of(1)); },
                         1},
        NotificationCase{
            "once_for_the_machine_mode",
            [](SampleComponent& component) { component.set_machine_mode(nmkMTPMachineMode1); }, 1},
        NotificationCase{
            "once_for_an_attached_override",
            [](SampleComponent& component) { component.set_thickness_override(nullptr); }, 1},
        NotificationCase{"once_for_a_reset_override",
                         [](SampleComponent& component) { component.reset_thickness_override(); },
                         1},
        NotificationCase{"never_for_a_refused_mode",
                         [](SampleComponent& component) {
                             component.is_locked = true;
                             component.set_machine_mode(nmkMTPMachineMode1);
                         },
                         0},
        NotificationCase{"never_for_a_force_without_an_override",
                         [](SampleComponent& component) {
                             component.force_override_machine_mode(nmkMTPMachineMode1);
                         },
                         0},
        NotificationCase{"never_for_a_changed_geometry",
                         [](SampleComponent& component) { component.geometry_modify(); }, 0},
        NotificationCase{"never_for_proxies",
                         [](SampleComponent& component) { component.register_proxy(); }, 0}),
    testing::PrintToStringParamName());

TEST(nmkMachinableComponent, changed_geometry_gets_a_new_identifier_for_one_serial) {
    SampleComponent component;
    const std::unique_ptr<nmkUniqueId> old(nmkUniqueId::create(component.get_geometry_id()));
    const std::unique_ptr<nmkUniqueId> before(nmkUniqueId::create());
    component.geometry_modify();
    const std::unique_ptr<nmkUniqueId> after(nmkUniqueId::create());
    EXPECT_EQ(component.get_geometry_id()->is_equal(old.get()), 0);
    const auto serial = [](const nmkUniqueId& identifier) {
        const utString text = identifier.hex_string();
        return std::stoul(std::string(text.view().substr(16, 8)), nullptr, 16);
    };
    EXPECT_EQ(serial(*after), serial(*before) + 2);
}

TEST(nmkMachinableComponent, proxies_are_counted_without_checks) {
    SampleComponent component;
    component.unregister_proxy();
    EXPECT_EQ(component.num_proxy(), -1);
    component.register_proxy();
    component.register_proxy();
    EXPECT_EQ(component.num_proxy(), 1);
    component.set_num_proxy(INT_MAX);
    component.register_proxy();
    EXPECT_EQ(component.num_proxy(), INT_MIN);
    component.unregister_proxy();
    EXPECT_EQ(component.num_proxy(), INT_MAX);
}

TEST(nmkMachinableComponent, reset_empties_the_list_and_notifies_once) {
    SampleComponent component;
    component.override_list().insert_last(
        coPrf<nmkTriBlockParThicknessOverride>(new SampleOverride(&component)));
    ++component.override_cursor();
    EXPECT_EQ(component.override_cursor().index(), 0);
    component.changes = 0;
    component.reset_thickness_override();
    EXPECT_EQ(component.changes, 1);
    EXPECT_EQ(component.override_list().size(), 0);
    EXPECT_EQ(component.override_cursor().index(), -1);
    EXPECT_EQ(component.get_thickness_override(), nullptr);
    EXPECT_FALSE(nmkTriBlockParThicknessOverride::thickness_overrides_exist());
}

TEST(nmkMachinableComponent, is_destroyed_with_the_overrides_of_its_list) {
    {
        SampleComponent component;
        component.override_list().insert_last(
            coPrf<nmkTriBlockParThicknessOverride>(new SampleOverride(&component)));
        EXPECT_TRUE(nmkTriBlockParThicknessOverride::thickness_overrides_exist());
    }
    EXPECT_FALSE(nmkTriBlockParThicknessOverride::thickness_overrides_exist());
}

TEST(nmkMachinableComponentPtr, is_a_plain_pointer_with_value_semantics) {
    SampleComponent component;
    SampleComponent other;
    nmkMachinableComponentPtr pointer;
    EXPECT_EQ(pointer(), nullptr);
    EXPECT_EQ(pointer = &component, &component);
    EXPECT_EQ(pointer(), &component);
    EXPECT_TRUE(pointer == nmkMachinableComponentPtr(&component));
    EXPECT_FALSE(pointer == nmkMachinableComponentPtr(&other));
    EXPECT_EQ(co_hash(pointer), co_hash(nmkMachinableComponentPtr(&component)));
}

TEST(nmkMachinableComponentPtrcoSet, keeps_each_component_once) {
    SampleComponent component;
    SampleComponent other;
    nmkMachinableComponentPtrcoSet set;
    set.add(&component);
    set.add(&component);
    set.add(&other);
    EXPECT_EQ(set.size(), 2);
    EXPECT_TRUE(set.contains(&component));
}

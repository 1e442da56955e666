#include <gtest/gtest.h>

#include <memory>

#include "sample_component.h"

namespace {

constexpr auto mode_of = [](int mode) { return static_cast<nmkMTPMachineMode>(mode); };
constexpr auto machining_of = [](int type) { return static_cast<nmkGiTriDataMachiningType>(type); };
constexpr auto model_of = [](int type) { return static_cast<nmkGiTriDataModelType>(type); };

bool overrides_exist() { return nmkTriBlockParThicknessOverride::thickness_overrides_exist(); }

// An override counts up and down, and its copy down alone.
void count_down_once() {
    const SampleComponent component;
    const SampleOverride counted(&component);
    const std::unique_ptr<nmkTriBlockParThicknessOverride> copy(counted.create_new());
}

}  // namespace

TEST(nmkTriBlockParThicknessOverride, takes_the_settings_of_its_component_and_attaches_itself) {
    SampleComponent component;
    component.set_thickness(1.5);
    component.set_thickness_axial(2.5);
    component.set_axial_radial(1);
    component.set_model_type(model_of(4));
    component.set_machine_mode(nmkMTPMachineMode2);
    const SampleOverride made(&component);
    EXPECT_EQ(made.get_thickness(), 1.5);
    EXPECT_EQ(made.get_thickness_axial(), 2.5);
    EXPECT_EQ(made.get_use_thickness_axial(), 1);
    EXPECT_EQ(made.get_model_type(), model_of(4));
    EXPECT_EQ(made.get_machining_type(), machining_of(2));
    EXPECT_EQ(made.per_tri_block(), 0);
    EXPECT_EQ(component.get_thickness_override(), &made);
    EXPECT_TRUE(overrides_exist());
}

TEST(nmkTriBlockParThicknessOverride, a_mode_past_2_leaves_the_machining_type) {
    SampleComponent component;
    component.set_machine_mode(mode_of(5));
    const SampleOverride made(&component);
    EXPECT_EQ(made.get_machining_type(), machining_of(0));
}

TEST(nmkTriBlockParThicknessOverride, its_end_detaches_and_counts_down) {
    SampleComponent component;
    {
        const SampleOverride made(&component);
        component.changes = 0;
    }
    EXPECT_EQ(component.get_thickness_override(), nullptr);
    EXPECT_EQ(component.changes, 1);
    EXPECT_FALSE(overrides_exist());
}

TEST(nmkTriBlockParThicknessOverride, of_a_null_component_is_not_counted_and_resets_nothing) {
    {
        const SampleOverride made(nullptr);
        EXPECT_FALSE(overrides_exist());
        EXPECT_EQ(made.get_thickness(), 0.0);
        EXPECT_EQ(made.get_thickness_axial(), 0.0);
    }
    EXPECT_FALSE(overrides_exist());
}

TEST(nmkTriBlockParThicknessOverride, of_a_null_component_can_be_given_one_later) {
    SampleComponent component;
    component.set_thickness(2.0);
    {
        SampleOverride made(nullptr);
        made.set_component(&component);
        EXPECT_EQ(made.get_thickness(), 2.0);
        EXPECT_TRUE(overrides_exist());
    }
    EXPECT_FALSE(overrides_exist());
}

TEST(nmkTriBlockParThicknessOverride, setting_the_component_a_second_time_counts_again) {
    SampleComponent component;
    {
        SampleOverride made(&component);
        made.set_component(&component);
    }
    EXPECT_TRUE(overrides_exist());
    count_down_once();
    EXPECT_FALSE(overrides_exist());
}

TEST(nmkTriBlockParThicknessOverride, a_copy_is_not_counted_but_its_end_counts_down_and_detaches) {
    ASSERT_FALSE(overrides_exist());
    SampleComponent component;
    auto made = std::make_unique<SampleOverride>(&component);
    made->set_thickness(3.0);
    std::unique_ptr<nmkTriBlockParThicknessOverride> copy(made->create_new());
    EXPECT_EQ(copy->get_thickness(), 3.0);
    EXPECT_EQ(component.get_thickness_override(), made.get());
    copy.reset();
    EXPECT_EQ(component.get_thickness_override(), nullptr);
    EXPECT_FALSE(overrides_exist());
    made->set_slave();
}

TEST(nmkTriBlockParThicknessOverride, the_end_of_a_slave_concerns_nobody) {
    SampleComponent component;
    const SampleOverride made(&component);
    std::unique_ptr<nmkTriBlockParThicknessOverride> copy(made.create_new());
    copy->set_slave();
    copy.reset();
    EXPECT_EQ(component.get_thickness_override(), &made);
    EXPECT_TRUE(overrides_exist());
}

TEST(nmkTriBlockParThicknessOverride, a_copy_of_a_slave_is_a_slave) {
    SampleComponent component;
    SampleOverride made(&component);
    made.set_slave();
    std::unique_ptr<nmkTriBlockParThicknessOverride> copy(made.create_new());
    copy.reset();
    EXPECT_EQ(component.get_thickness_override(), &made);
    count_down_once();
}

TEST(nmkTriBlockParThicknessOverride, unset_thicknesses_read_as_zero) {
    SampleOverride made(nullptr);
    made.use_axial_thickness(1);
    EXPECT_EQ(made.get_thickness_axial(), 0.0);
    made.set_thickness(4.0);
    EXPECT_EQ(made.get_thickness_axial(), 0.0);
    made.set_thickness_axial(5.0);
    EXPECT_EQ(made.get_thickness_axial(), 5.0);
    made.use_axial_thickness(0);
    EXPECT_EQ(made.get_thickness_axial(), 4.0);
}

TEST(nmkTriBlockParThicknessOverride, parameters_are_copied_and_the_settings_stay) {
    nmkGiTriDatacoFeature data;
    data.make_data();
    data->set_colour(8);
    data->set_thickness(9.0);
    SampleOverride made(nullptr);
    made.set_thickness(1.0);
    made.set_par(data);
    EXPECT_EQ(made.par().get_colour(), 8);
    EXPECT_EQ(made.par().get_thickness(), 9.0);
    EXPECT_EQ(made.get_thickness(), 1.0);
}

#include <gtest/gtest.h>
#include <nmktoolbox/trifile.h>
#include <nmktoolbox/uniqueid/nmkUniqueId.h>

#include <cmath>
#include <limits>
#include <memory>

#include "sample_component.h"

namespace {

constexpr double marker = -std::numeric_limits<double>::max();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

constexpr auto machining_of = [](int type) { return static_cast<nmkGiTriDataMachiningType>(type); };
constexpr auto model_of = [](int type) { return static_cast<nmkGiTriDataModelType>(type); };

}  // namespace

TEST(nmkGiTriBlockColour, is_none_at_first) {
    nmkGiTriBlockColourcoFeature feature;
    feature.make_data();
    EXPECT_EQ(feature->get_colour(), -1);
    feature->set_colour(5);
    nmkGiTriBlockColourcoFeature copy;
    copy.make_copy_data(&feature);
    EXPECT_EQ(copy->get_colour(), 5);
}

TEST(nmkGiTriBlockFeatures, the_colour_comes_before_the_data) {
    const nmkGiTriBlockColourcoFeature colour;
    const nmkGiTriDatacoFeature data;
    EXPECT_EQ(data.get_id().value(), colour.get_id().value() + 1);
    const std::unique_ptr<basecoFeature> created(data.create());
    EXPECT_TRUE(created->get_id() == data.get_id());
    EXPECT_FALSE(created->is_bound());
}

TEST(nmkGiTriData, new_data_have_the_defaults) {
    const nmkGiTriData data;
    EXPECT_EQ(data.get_colour(), -1);
    EXPECT_EQ(data.get_level(), nullptr);
    EXPECT_EQ(data.get_tolerance(), marker);
    EXPECT_FALSE(data.is_tolerance_valid());
    EXPECT_EQ(data.get_thickness(), 0.0);
    EXPECT_EQ(data.get_thickness_axial(), 0.0);
    EXPECT_EQ(data.get_use_thickness_axial(), 0);
    EXPECT_EQ(data.get_model_type(), model_of(1));
    EXPECT_EQ(data.get_machining_type(), machining_of(0));
    EXPECT_EQ(data.is_shadeable(), 1);
    EXPECT_FALSE(data.is_name_valid());
    EXPECT_EQ(data.get_face(), nullptr);
    EXPECT_EQ(data.get_modeltop_par(), nullptr);
    EXPECT_EQ(data.get_thickness_override(), nullptr);
    EXPECT_EQ(data.get_flat(), 0);
    EXPECT_EQ(data.z_min(), marker);
    EXPECT_EQ(data.z_max(), marker);
}

TEST(nmkGiTriData, setters_store_what_the_getters_return) {
    nmkGiTriData data;
    const std::unique_ptr<nmkUniqueId> level(nmkUniqueId::create());
    const auto* const face = reinterpret_cast<const topFace*>(level.get());
    const auto* const par = reinterpret_cast<const nmkModelTopPar*>(level.get());
    data.set_colour(4);
    data.set_level(level.get());
    data.set_tolerance(0.01);
    data.set_shadeable(0);
    data.set_name("");
    data.set_face(face);
    data.set_modeltop_par(par);
    data.set_flat(1);
    data.set_z_limits(-1.0, 2.0);
    data.set_model_type(model_of(3));
    data.set_machining_type(machining_of(2));
    EXPECT_EQ(data.get_colour(), 4);
    EXPECT_EQ(data.get_level(), level.get());
    EXPECT_EQ(data.get_tolerance(), 0.01);
    EXPECT_TRUE(data.is_tolerance_valid());
    EXPECT_EQ(data.is_shadeable(), 0);
    EXPECT_TRUE(data.is_name_valid());
    EXPECT_EQ(data.get_face(), face);
    EXPECT_EQ(data.get_modeltop_par(), par);
    EXPECT_EQ(data.get_flat(), 1);
    EXPECT_EQ(data.z_min(), -1.0);
    EXPECT_EQ(data.z_max(), 2.0);
    EXPECT_EQ(data.get_model_type(), model_of(3));
    EXPECT_EQ(data.get_machining_type(), machining_of(2));
}

TEST(nmkGiTriData, a_tolerance_of_0_is_not_valid) {
    nmkGiTriData data;
    data.set_tolerance(0.0);
    EXPECT_FALSE(data.is_tolerance_valid());
    data.set_tolerance(not_a_number);
    EXPECT_FALSE(data.is_tolerance_valid());
}

TEST(nmkGiTriData, axial_thickness_is_used_where_it_is_switched_on) {
    nmkGiTriData data;
    data.set_thickness(1.0);
    data.set_thickness_axial(2.0);
    EXPECT_EQ(data.get_thickness_axial(), 1.0);
    data.use_axial_thickness(1);
    EXPECT_EQ(data.get_thickness_axial(), 2.0);
    data.set_thickness_axial(marker);
    EXPECT_EQ(data.get_thickness_axial(), 0.0);
}

TEST(nmkGiTriData, nan_as_thickness_passes_through) {
    nmkGiTriData data;
    data.set_thickness(not_a_number);
    EXPECT_TRUE(std::isnan(data.get_thickness()));
    EXPECT_TRUE(std::isnan(data.get_thickness_axial()));
    SampleOverride thickness_override(nullptr);
    thickness_override.set_thickness(not_a_number);
    EXPECT_TRUE(std::isnan(thickness_override.get_thickness()));
}

TEST(nmkGiTriData, with_an_override_settings_are_read_from_and_written_to_it) {
    nmkGiTriData data;
    data.set_thickness(1.0);
    SampleOverride thickness_override(nullptr);
    data.set_thickness_override(&thickness_override);
    data.set_thickness(5.0);
    data.set_thickness_axial(6.0);
    data.use_axial_thickness(1);
    data.set_model_type(model_of(7));
    data.set_machining_type(machining_of(2));
    EXPECT_EQ(thickness_override.get_thickness(), 5.0);
    EXPECT_EQ(data.get_thickness(), 5.0);
    EXPECT_EQ(data.get_thickness_axial(), 6.0);
    EXPECT_EQ(data.get_model_type(), model_of(7));
    EXPECT_EQ(data.get_machining_type(), machining_of(2));
    EXPECT_EQ(data.get_model_type_no_override(), model_of(1));
    EXPECT_EQ(data.get_machining_type_no_override(), machining_of(0));
    data.reset_thickness_override();
    EXPECT_EQ(data.get_thickness(), 1.0);
    EXPECT_EQ(data.get_thickness_axial(), 1.0);
    EXPECT_EQ(thickness_override.get_thickness(), 5.0);
}

TEST(nmkGiTriData,
     whether_the_axial_thickness_is_used_is_written_to_the_override_but_not_read_there) {
    nmkGiTriData data;
    SampleOverride thickness_override(nullptr);
    data.set_thickness_override(&thickness_override);
    data.use_axial_thickness(1);
    EXPECT_EQ(data.get_use_thickness_axial(), 0);
    EXPECT_EQ(thickness_override.get_use_thickness_axial(), 1);
}

TEST(nmkGiTriData, a_copy_shares_the_override) {
    nmkGiTriDatacoFeature feature;
    feature.make_data();
    SampleOverride thickness_override(nullptr);
    feature->set_thickness_override(&thickness_override);
    feature->set_name("block");
    feature->set_flat(1);
    nmkGiTriDatacoFeature copy;
    copy.make_copy_data(&feature);
    EXPECT_EQ(copy->get_thickness_override(), &thickness_override);
    EXPECT_EQ(copy->get_name().view(), "block");
    const nmkGiTriData tagged(utCopy(), *feature);
    EXPECT_EQ(tagged.get_thickness_override(), &thickness_override);
    EXPECT_EQ(tagged.get_flat(), 1);
}

TEST(nmkGiTriData, the_default_colour_is_not_that_of_new_data) {
    nmkGiTriData::set_default_colour(9);
    EXPECT_EQ(nmkGiTriData().get_colour(), -1);
    nmkGiTriData::set_default_colour(3);
}

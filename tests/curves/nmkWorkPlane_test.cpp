#include <gtest/gtest.h>
#include <mfc/CArchive.h>
#include <mfc/CMemFile.h>
#include <nmktoolbox/curves/nmkWorkPlane.h>

#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "archive_failure.h"

namespace {

using Bytes = std::vector<unsigned char>;

const giUnitVec3 world_x(giAxis::x);
const giUnitVec3 world_y(giAxis::y);
const giUnitVec3 world_z(giAxis::z);

giWorkplane3 plane_of(const nmkWorkPlane& workplane) {
    giWorkplane3 plane;
    workplane.get_workplane(plane);
    return plane;
}

nmkWorkPlane made_of(const giWorkplane3& plane) {
    nmkWorkPlane workplane;
    workplane.set_workplane(plane);
    return workplane;
}

const giWorkplane3 tilted(giPoint3(1.5, -2.25, 1e300), giUnitVec3(0.2, 1.0, -0.4),
                          giUnitVec3(1.0, 0.3, 0.7));

template <class Write>
Bytes stored(const Write& write) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    write(archive);
    archive.Close();
    return {file.bytes().begin(), file.bytes().end()};
}

void load(nmkWorkPlane& workplane, const Bytes& bytes) {
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load);
    workplane.Serialize(archive);
}

}  // namespace

TEST(nmkWorkPlane, starts_as_the_world_plane) {
    const giWorkplane3 plane = plane_of(nmkWorkPlane());
    EXPECT_EQ(plane.origin(), giPoint3(0, 0, 0));
    EXPECT_EQ(plane.x_axis(), world_x);
    EXPECT_EQ(plane.y_axis(), world_y);
    EXPECT_EQ(plane.z_axis(), world_z);
}

TEST(nmkWorkPlane, becomes_the_world_plane_again) {
    nmkWorkPlane workplane = made_of(tilted);
    EXPECT_FALSE(workplane == nmkWorkPlane());
    workplane.init();
    EXPECT_EQ(plane_of(workplane), giWorkplane3());
}

TEST(nmkWorkPlane, copies_have_the_same_plane) {
    const nmkWorkPlane workplane = made_of(tilted);
    const nmkWorkPlane copy(workplane);
    nmkWorkPlane assigned;
    assigned = workplane;
    EXPECT_EQ(plane_of(copy), tilted);
    EXPECT_EQ(plane_of(assigned), tilted);
}

TEST(nmkWorkPlane, planes_0_009_apart_are_equal_and_those_beyond_a_ball_of_0_01_are_not) {
    const auto at = [](double x, double y, double z) {
        return made_of(giWorkplane3(giPoint3(x, y, z), world_y, world_z));
    };
    EXPECT_TRUE(at(0, 0, 0) == at(0.009, 0, 0));
    EXPECT_TRUE(at(0, 0, 0) == at(0, 0, -0.01));
    EXPECT_FALSE(at(0, 0, 0) == at(0.011, 0, 0));
    EXPECT_FALSE(at(0, 0, 0) == at(0.009, 0.009, 0));
}

TEST(nmkWorkPlane, planes_turned_by_less_than_a_tenth_of_a_radian_are_equal) {
    const auto turned = [](double angle) {
        return made_of(giWorkplane3(giPoint3(0, 0, 0),
                                    giUnitVec3(-std::sin(angle), std::cos(angle), 0), world_z));
    };
    EXPECT_TRUE(turned(0.0) == turned(0.099));
    EXPECT_FALSE(turned(0.0) == turned(0.101));
}

// A turn about the bisector of two axes moves the third one further than them.
TEST(nmkWorkPlane, planes_of_which_one_axis_alone_is_turned_too_far_differ) {
    const giPoint3 origin(0, 0, 0);
    for (const giUnitVec3& bisector :
         {giUnitVec3(0, 1, 1), giUnitVec3(1, 0, 1), giUnitVec3(1, 1, 0)}) {
        const auto turned = [&](double angle) {
            giWorkplane3 plane;
            giXform3::rotation(origin, bisector, giAngle(giRadians, angle))
                .transform(giWorkplane3(), plane);
            return made_of(plane);
        };
        EXPECT_TRUE(turned(0.099) == nmkWorkPlane());
        EXPECT_FALSE(turned(0.12) == nmkWorkPlane());  // the two others are turned by 0.085
    }
}

TEST(nmkWorkPlane, planes_with_opposite_axes_differ) {
    const nmkWorkPlane turned_half = made_of(giWorkplane3(giPoint3(0, 0, 0), -world_y, world_z));
    const nmkWorkPlane turned_over = made_of(giWorkplane3(giPoint3(0, 0, 0), world_y, -world_z));
    EXPECT_FALSE(turned_half == nmkWorkPlane());
    EXPECT_FALSE(turned_over == nmkWorkPlane());
}

TEST(nmkWorkPlane, is_stored_in_72_bytes_and_comes_back_to_the_last_bit) {
    nmkWorkPlane workplane = made_of(tilted);
    const Bytes bytes = stored([&](CArchive& archive) { workplane.Serialize(archive); });
    EXPECT_EQ(bytes.size(), 72U);
    nmkWorkPlane loaded;
    load(loaded, bytes);
    EXPECT_EQ(plane_of(loaded), tilted);
}

TEST(nmkWorkPlane, is_streamed_as_a_value_without_its_class) {
    const nmkWorkPlane workplane = made_of(tilted);
    const Bytes bytes = stored([&](CArchive& archive) { archive << workplane << 7; });
    EXPECT_EQ(bytes.size(), 76U);
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load);
    nmkWorkPlane loaded;
    int behind = 0;
    archive >> loaded >> behind;
    EXPECT_EQ(plane_of(loaded), tilted);
    EXPECT_EQ(behind, 7);
}

TEST(nmkWorkPlane, is_streamed_as_an_object_with_its_class) {
    const nmkWorkPlane workplane = made_of(tilted);
    const Bytes bytes = stored([&](CArchive& archive) { archive << &workplane; });
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load);
    nmkWorkPlane* loaded = nullptr;
    archive >> loaded;
    const std::unique_ptr<nmkWorkPlane> owner(loaded);
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(plane_of(*loaded), tilted);
    EXPECT_TRUE(loaded->IsKindOf(nmkWorkPlane::GetThisClass()));
    EXPECT_EQ(nmkWorkPlane::_GetBaseClass(), CObject::GetThisClass());
}

TEST(nmkWorkPlane, a_later_schema_throws_badSchema) {
    const nmkWorkPlane workplane;
    Bytes bytes = stored([&](CArchive& archive) { archive << &workplane; });
    const auto load_object = [&] {
        CMemFile file(bytes);
        CArchive archive(&file, CArchive::load);
        nmkWorkPlane* loaded = nullptr;
        archive >> loaded;
        delete loaded;
    };
    bytes[2] = 2;
    EXPECT_EQ(cause_of(load_object), CArchiveException::badSchema);
    bytes[2] = 0;
    EXPECT_EQ(cause_of(load_object), CArchiveException::none);
}

TEST(nmkWorkPlane, every_prefix_throws_endOfFile_and_leaves_it_as_it_was) {
    nmkWorkPlane workplane;
    const Bytes whole = stored([&](CArchive& archive) { workplane.Serialize(archive); });
    for (std::size_t size = 0; size < whole.size(); ++size) {
        nmkWorkPlane loaded = made_of(tilted);
        const Bytes prefix(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(cause_of([&] { load(loaded, prefix); }), CArchiveException::endOfFile);
        EXPECT_EQ(plane_of(loaded), tilted);
    }
}

TEST(nmkWorkPlane, axes_that_do_not_form_a_frame_throw_badIndex_and_leave_it_as_it_was) {
    const double not_a_number = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const std::vector<double> forged[] = {
        {0, 0, 0, 0, 2, 0, 0, 0, 1},             // Y is 2 long
        {0, 0, 0, 0, 1, 0, 0, 0, 0},             // Z is missing
        {0, 0, 0, 0, 1, 0, 0, 1, 0},             // Z is Y
        {not_a_number, 0, 0, 0, 1, 0, 0, 0, 1},  // an origin that is nowhere
        {0, 0, infinity, 0, 1, 0, 0, 0, 1},
        {0, 0, 0, 0, not_a_number, 0, 0, 0, 1},
        {0, 0, 0, 0, 1, 0, 0, 0, infinity},
        {0, 0, 0, 0, 1, 0, gi_unset_low, gi_unset_low, gi_unset_low},  // only Z is unset
    };
    for (const std::vector<double>& numbers : forged) {
        const Bytes bytes = stored([&](CArchive& archive) {
            for (const double number : numbers) archive << number;
        });
        nmkWorkPlane loaded = made_of(tilted);
        EXPECT_EQ(cause_of([&] { load(loaded, bytes); }), CArchiveException::badIndex);
        EXPECT_EQ(plane_of(loaded), tilted);
    }
}

// Tests of the item family: index, run-time types, reversal, and the weights of the elastic ring.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "ordering/sort_samples.h"

using sort_samples::Hole;

namespace {

giPoint3coDynArr ring_of(std::initializer_list<giPoint3> points) {
    giPoint3coDynArr ring;
    for (const giPoint3& point : points) ring.add(point);
    return ring;
}

struct OpenItem : nmkSortItemLine {
    using nmkSortItemLine::nmkSortItemLine;
    using nmkSortItemWithPoint::ring_part;
};

}  // namespace

TEST(nmkSortItem, has_the_marker_for_an_index_until_one_is_set) {
    nmkSortItem item;
    EXPECT_EQ(static_cast<unsigned>(item.index()), 0x80000001u);
    item.set_index(7);
    EXPECT_EQ(item.index(), 7);
}

TEST(nmkSortItem, copies_and_assigns_its_index) {
    nmkSortItem item;
    item.set_index(3);
    nmkSortItem copy(item);
    EXPECT_EQ(copy.index(), 3);
    nmkSortItem other;
    other = item;
    EXPECT_EQ(other.index(), 3);
}

TEST(nmkSortItem, reports_its_run_time_type_at_every_level) {
    nmkSortItemLine line(giPoint3(0, 0, 0), giPoint3(1, 0, 0));
    EXPECT_TRUE(line.ut_dynamic_type() == nmkSortItemLine::ut_static_type());
    EXPECT_STREQ(line.ut_dynamic_type().name(), "nmkSortItemLine");
    EXPECT_TRUE(line.ut_is_kind_of(nmkSortItem::ut_static_type()));
    EXPECT_TRUE(line.ut_is_kind_of(nmkSortItemWithPoint::ut_static_type()));
    EXPECT_TRUE(line.ut_is_kind_of(nmkSortItemWithEndPoint::ut_static_type()));
    EXPECT_FALSE(nmkSortItem().ut_is_kind_of(nmkSortItemWithPoint::ut_static_type()));
}

TEST(nmkSortItem, casts_down_only_to_what_an_item_is) {
    nmkSortItemLine line(giPoint3(0, 0, 0), giPoint3(1, 0, 0));
    Hole hole(1, 2);
    nmkSortItem bare;
    EXPECT_EQ(nmkSortItemLine::ut_dynamic_cast(&line), &line);
    EXPECT_EQ(nmkSortItemWithEndPoint::ut_dynamic_cast(&line), &line);
    EXPECT_EQ(nmkSortItemWithPoint::ut_dynamic_cast(&hole), &hole);
    EXPECT_EQ(nmkSortItem::ut_dynamic_cast(&hole), &hole);
    EXPECT_EQ(nmkSortItemWithEndPoint::ut_dynamic_cast(&hole), nullptr);
    EXPECT_EQ(nmkSortItemLine::ut_dynamic_cast(&hole), nullptr);
    EXPECT_EQ(nmkSortItemWithPoint::ut_dynamic_cast(&bare), nullptr);
    EXPECT_EQ(nmkSortItemLine::ut_dynamic_cast(static_cast<nmkSortItem*>(nullptr)), nullptr);
    EXPECT_EQ(nmkSortItemLine::ut_dynamic_cast(static_cast<const nmkSortItem*>(nullptr)), nullptr);
}

struct Slot : nmkSortItemLine {
    using nmkSortItemLine::nmkSortItemLine;
    const utTypeID& ut_dynamic_type() const override { return ut_static_type(); }
    static const utTypeID& ut_static_type() {
        static const utTypeID type("Slot", &nmkSortItemLine::ut_static_type());
        return type;
    }
};

TEST(nmkSortItem, is_of_its_own_kind_when_it_only_reports_its_dynamic_type) {
    const Slot slot(giPoint3(0, 0, 0), giPoint3(1, 0, 0));
    EXPECT_NE(slot.ut_is_kind_of(Slot::ut_static_type()), 0);
    EXPECT_NE(slot.ut_is_kind_of(nmkSortItemLine::ut_static_type()), 0);
    EXPECT_NE(slot.ut_is_kind_of(nmkSortItem::ut_static_type()), 0);
}

// The C++ class decides as well as the type that is reported.
TEST(nmkSortItem, is_of_the_kind_it_derives_from_though_its_own_type_names_no_base) {
    struct Unrelated : nmkSortItemLine {
        using nmkSortItemLine::nmkSortItemLine;
        const utTypeID& ut_dynamic_type() const override {
            static const utTypeID type("Unrelated");
            return type;
        }
    };
    Unrelated item(giPoint3(0, 0, 0), giPoint3(1, 0, 0));
    EXPECT_NE(item.ut_is_kind_of(item.ut_dynamic_type()), 0);
    EXPECT_EQ(nmkSortItemLine::ut_dynamic_cast(&item), &item);
    EXPECT_EQ(nmkSortItemWithPoint::ut_dynamic_cast(&item), &item);
}

TEST(nmkSortItem, has_a_run_time_class_under_the_framework_root) {
    nmkSortItemLine line(giPoint3(0, 0, 0), giPoint3(1, 0, 0));
    EXPECT_EQ(line.GetRuntimeClass(), nmkSortItemLine::GetThisClass());
    EXPECT_STREQ(line.GetRuntimeClass()->m_lpszClassName, "nmkSortItemLine");
    EXPECT_EQ(line.GetRuntimeClass()->m_nObjectSize, static_cast<int>(sizeof(nmkSortItemLine)));
    EXPECT_EQ(nmkSortItemLine::_GetBaseClass(), nmkSortItemWithEndPoint::GetThisClass());
    EXPECT_EQ(nmkSortItemWithEndPoint::_GetBaseClass(), nmkSortItemWithPoint::GetThisClass());
    EXPECT_EQ(nmkSortItemWithPoint::_GetBaseClass(), nmkSortItem::GetThisClass());
    EXPECT_EQ(nmkSortItem::_GetBaseClass(), CObject::GetThisClass());
    EXPECT_TRUE(line.IsKindOf(CObject::GetThisClass()));
    EXPECT_FALSE(nmkSortItem().IsKindOf(nmkSortItemLine::GetThisClass()));
}

TEST(nmkSortItemLine, negates_its_flag_and_keeps_its_points) {
    nmkSortItemLine line(giPoint3(1, 2, 3), giPoint3(4, 5, 6));
    EXPECT_EQ(line.reversed(), 0);
    line.reverse();
    EXPECT_EQ(line.reversed(), 1);
    EXPECT_EQ(line.get_point(), giPoint3(1, 2, 3));
    EXPECT_EQ(line.get_end_point(), giPoint3(4, 5, 6));
    line.reverse();
    EXPECT_EQ(line.reversed(), 0);
}

TEST(nmkSortItemWithPoint, scales_into_the_unit_box_and_leaves_z) {
    nmkSortItemLine line(giPoint3(3, 7, 11), giPoint3(0, 0, 0));
    line.transform_point(4.0, 1.0, 5.0);
    giPoint3coDynArr ring = ring_of({giPoint3(0.9, 0.9, 0), giPoint3(0.5, 0.5, 11)});
    EXPECT_EQ(line.get_closest(ring), 1);
    ring = ring_of({giPoint3(0.5, 0.5, 0)});
    EXPECT_EQ(line.set_distance_array(ring, 0.2), 0.0);
}

TEST(nmkSortItemWithPoint, leaves_the_point_as_it_is_for_a_scale_of_zero) {
    Hole hole(3, 7);
    hole.transform_point(0.0, 1.0, 5.0);
    giPoint3coDynArr ring = ring_of({giPoint3(3, 7, 0)});
    EXPECT_EQ(hole.set_distance_array(ring, 0.2), 0.0);
}

TEST(nmkSortItemWithPoint, never_scales_z) {
    OpenItem item(giPoint3(3, 7, 11), giPoint3(0, 0, 0));
    item.transform_point(4.0, 1.0, 5.0);
    EXPECT_EQ(item.ring_part().normal_point, giPoint3(0.5, 0.5, 11));
}

TEST(nmkSortItemWithPoint, copies_its_weights_too) {
    OpenItem item(giPoint3(0.5, 0.5, 0), giPoint3(0, 0, 0));
    item.transform_point(0.0, 0.0, 0.0);
    giPoint3coDynArr ring = ring_of({giPoint3(0.25, 0.5, 0), giPoint3(0.5, 1.0, 0)});
    item.set_distance_array(ring, 0.25);
    const double sum = item.ring_part().weight_sum;
    OpenItem copy(item);
    OpenItem assigned(giPoint3(9, 9, 9), giPoint3(0, 0, 0));
    assigned = item;
    assigned = *&assigned;
    item.set_distance_array(ring, 0.5);
    for (const OpenItem* one : {&copy, &assigned}) {
        EXPECT_EQ(one->ring_part().weight_sum, sum);
        EXPECT_EQ(one->ring_part().weights.size(), 2);
        EXPECT_EQ(one->get_closest(ring), 0);
    }
    copy = OpenItem(giPoint3(1, 1, 1), giPoint3(0, 0, 0));
    EXPECT_EQ(copy.ring_part().weights.size(), 0);
}

TEST(nmkSortItemWithPoint, finds_the_nearest_ring_point_the_lowest_of_equals) {
    Hole hole(0.5, 0.5);
    hole.transform_point(0.0, 0.0, 0.0);
    giPoint3coDynArr ring =
        ring_of({giPoint3(1, 1, 0), giPoint3(0.5, 0.25, 0), giPoint3(0.5, 0.75, 0)});
    EXPECT_EQ(hole.get_closest(ring), 1);
}

TEST(nmkSortItemWithPoint, finds_position_zero_on_an_empty_ring) {
    Hole hole(0.5, 0.5);
    giPoint3coDynArr ring;
    EXPECT_EQ(hole.get_closest(ring), 0);
    EXPECT_EQ(hole.set_distance_array(ring, 0.2), std::numeric_limits<double>::max());
}

TEST(nmkSortItemWithPoint, weighs_ring_points_by_a_bell_over_the_sum_of_weights) {
    Hole hole(0.5, 0.5);
    hole.transform_point(0.0, 0.0, 0.0);
    giPoint3coDynArr ring = ring_of({giPoint3(0.25, 0.5, 0), giPoint3(0.5, 1.0, 0)});
    EXPECT_EQ(hole.set_distance_array(ring, 0.25), 0.0625);
    const double first = std::exp(-0.0625 / ((0.25 + 0.25) * 0.25));
    const double second = std::exp(-0.25 / ((0.25 + 0.25) * 0.25));
    double dx = 0.0, dy = 0.0;
    hole.get_weighted_distance(dx, dy, 0, ring[0]);
    EXPECT_EQ(dx, 0.25 * first / (first + second));
    EXPECT_EQ(dy, 0.0);
    hole.get_weighted_distance(dx, dy, 1, ring[1]);
    EXPECT_EQ(dx, 0.0);
    EXPECT_EQ(dy, -0.5 * second / (first + second));
}

TEST(nmkSortItemWithPoint, divides_by_one_when_every_ring_point_is_out_of_reach) {
    Hole hole(0.0, 0.0);
    hole.transform_point(0.0, 0.0, 0.0);
    giPoint3coDynArr ring = ring_of({giPoint3(1, 1, 0), giPoint3(3, 0, 0)});
    EXPECT_EQ(hole.set_distance_array(ring, 100.0), 2.0);
    double dx = 1.0, dy = 1.0;
    hole.get_weighted_distance(dx, dy, 0, ring[0]);
    EXPECT_EQ(dx, 0.0);  // not 0 / 0
    EXPECT_EQ(dy, 0.0);
}

// At a plan distance of 1 the weight is exp(-1 / 2kk), which is the sum too: 1e-19 is divided by,
// 1e-21 is not.
TEST(nmkSortItemWithPoint, divides_by_a_sum_of_weights_from_1e_minus_20_up) {
    OpenItem item(giPoint3(0, 0, 0), giPoint3(0, 0, 0));
    item.transform_point(0.0, 0.0, 0.0);
    giPoint3coDynArr ring = ring_of({giPoint3(1, 0, 0)});
    double dx = 0.0, dy = 0.0;
    item.set_distance_array(ring, std::sqrt(0.5 / (19 * std::log(10.0))));
    item.get_weighted_distance(dx, dy, 0, ring[0]);
    EXPECT_EQ(dx, -1.0);
    item.set_distance_array(ring, std::sqrt(0.5 / (21 * std::log(10.0))));
    EXPECT_EQ(item.ring_part().weight_sum, 1.0);
    item.get_weighted_distance(dx, dy, 0, ring[0]);
    EXPECT_NEAR(dx, -1e-21, 1e-30);
}

// Tests of the references and lists by which items travel.
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "ordering/sort_samples.h"

using namespace sort_samples;

namespace {

class Counted : public Hole {
  public:
    explicit Counted(int& alive_count) : Hole(0, 0), m_alive(alive_count) { ++m_alive; }
    ~Counted() override { --m_alive; }

  private:
    int& m_alive;
};

void expect_order(nmkSortList& list, const std::vector<int>& expected) {
    EXPECT_EQ(indices(list), expected);
}

}  // namespace

TEST(nmkSortItemPrf, is_invalid_by_default_and_after_set_invalid_though_it_keeps_the_item) {
    nmkSortItemPrf nothing;
    EXPECT_TRUE(nothing.invalid());
    EXPECT_EQ(nothing.item(), nullptr);
    Hole hole(1, 2);
    nmkSortItemPrf reference(&hole);
    EXPECT_FALSE(reference.invalid());
    reference.set_invalid();
    EXPECT_TRUE(reference.invalid());
    EXPECT_EQ(reference.item(), &hole);
    EXPECT_TRUE(nmkSortItemPrf(reference).invalid());
}

TEST(nmkSortItemPrf, leaves_a_borrowed_item_alive) {
    int alive = 0;
    Counted item(alive);
    {
        nmkSortItemPrf reference(&item);
        nmkSortItemPrf copy = reference;
        EXPECT_EQ(copy->index(), nmkSortItem::no_index);
    }
    EXPECT_EQ(alive, 1);
}

TEST(nmkSortItemPrf, deletes_a_claimed_item_with_the_last_reference) {
    int alive = 0;
    nmkSortItemPrf kept;
    {
        nmkSortItemPrf reference(nmk_ptr_claim, new Counted(alive));
        kept = reference;
    }
    EXPECT_EQ(alive, 1);
    EXPECT_FALSE(kept.invalid());
    kept = nmkSortItemPrf();
    EXPECT_EQ(alive, 0);
}

TEST(nmkSortItemPrf, is_unique_when_null_or_the_only_owner_never_when_borrowing) {
    int alive = 0;
    Hole hole(1, 2);
    EXPECT_EQ(nmkSortItemPrf().unique(), 1);
    EXPECT_EQ(nmkSortItemPrf(&hole).unique(), 0);
    nmkSortItemPrf owner(nmk_ptr_claim, new Counted(alive));
    EXPECT_EQ(owner.unique(), 1);
    const nmkSortItemPrf second = owner;
    EXPECT_EQ(owner.unique(), 0);
}

TEST(nmkSortList, walks_its_items_and_ends_before_the_head_again) {
    Holes holes;
    for (int i = 0; i < 3; ++i) holes.add(double(i), 0.0);
    nmkSortList list;
    holes.give_to(list);
    for (int walk = 0; walk < 2; ++walk) {
        std::vector<int> seen;
        while (list.forwards() != 0) seen.push_back(list.read()->index());
        EXPECT_EQ(seen, (std::vector<int>{0, 1, 2}));
        EXPECT_TRUE(list.read().invalid());
    }
    EXPECT_EQ(list.size(), 3);
}

TEST(nmkSortList, adds_what_the_other_lists_cursor_has_left) {
    Holes holes;
    for (int i = 0; i < 4; ++i) holes.add(double(i), 0.0);
    nmkSortList whole;
    holes.give_to(whole);
    whole.forwards();
    whole.forwards();
    nmkSortList rest;
    rest.add_items(whole);
    expect_order(rest, {2, 3});
    rest.clear();
    rest.add_items(whole);
    expect_order(rest, {0, 1, 2, 3});
    rest.add_items(rest);
    expect_order(rest, {0, 1, 2, 3, 0, 1, 2, 3});
}

TEST(nmkSortList, jumps_to_a_position_and_removes_backwards) {
    Holes holes;
    for (int i = 0; i < 5; ++i) holes.add(double(i), 0.0);
    nmkSortList list;
    holes.give_to(list);
    EXPECT_EQ(list[3]->index(), 3);
    EXPECT_EQ(list.read()->index(), 3);
    list.remove_backwards();
    EXPECT_EQ(list.read()->index(), 2);
    list.forwards();
    EXPECT_EQ(list.read()->index(), 4);
    list.remove_first();
    EXPECT_EQ(list.read_first()->index(), 1);
    expect_order(list, {1, 2, 4});
    list[0];
    list.remove_backwards();
    list.forwards();
    EXPECT_EQ(list.read()->index(), 2);
}

TEST(nmkSortList, returns_an_invalid_reference_where_there_is_no_item) {
    nmkSortList list;
    Hole hole(1, 2);
    EXPECT_TRUE(list.read_first().invalid());
    EXPECT_TRUE(list[4].invalid());
    list.read() = nmkSortItemPrf(&hole);  // written to nowhere
    EXPECT_TRUE(list.read().invalid());
    list.remove_first();
    list.remove_backwards();
    EXPECT_EQ(list.forwards(), 0);
    EXPECT_EQ(list.size(), 0);
}

TEST(nmkSortList, is_empty_and_before_its_head_after_clear) {
    Holes holes;
    holes.add(0.0, 0.0);
    nmkSortList list;
    holes.give_to(list);
    list.forwards();
    list.clear();
    EXPECT_EQ(list.size(), 0);
    EXPECT_TRUE(list.read().invalid());
    holes.give_to(list);
    EXPECT_EQ(list.forwards(), 1);
}

TEST(nmkSortList, is_walked_by_a_range_for_also_where_it_is_const) {
    Holes holes;
    for (int i = 0; i < 3; ++i) holes.add(double(i), 0.0);
    nmkSortList list;
    holes.give_to(list);
    list.forwards();
    std::vector<int> seen;
    for (const nmkSortItemPrf& item : std::as_const(list)) seen.push_back(item->index());
    EXPECT_EQ(seen, (std::vector<int>{0, 1, 2}));
    for (nmkSortItemPrf& item : list) item->set_index(item->index() + 10);
    EXPECT_EQ(list.read()->index(), 10);  // the cursor of the list is not moved
    EXPECT_EQ(holes[2].index(), 12);
    const nmkSortPointList empty;
    EXPECT_TRUE(empty.begin() == empty.end());
}

TEST(nmkSortPointList, finds_the_plan_box_of_its_points) {
    Holes holes;
    holes.add(3.0, -1.0, 50.0);
    holes.add(-2.0, 4.0, -50.0);
    holes.add(1.0, 9.0, 0.0);
    nmkSortPointList list;
    holes.give_to(list);
    giBox2 box;
    list.get_box(box);
    EXPECT_EQ(box.min(), giPoint2(-2.0, -1.0));
    EXPECT_EQ(box.max(), giPoint2(3.0, 9.0));
}

TEST(nmkSortPointList, finds_the_closest_item_in_plan_the_lowest_of_equals) {
    Holes holes;
    holes.add(5.0, 0.0);
    holes.add(1.0, 0.0, 100.0);
    holes.add(-1.0, 0.0);
    nmkSortPointList list;
    holes.give_to(list);
    EXPECT_EQ(list.get_closest(giPoint3(0, 0, 0)), 1);
    EXPECT_EQ(nmkSortPointList().get_closest(giPoint3(0, 0, 0)), 0);
}

TEST(nmkSortPointList, looks_at_every_item_wherever_the_cursor_is) {
    Holes holes;
    for (const double x : {5.0, 1.0, 3.0, -1.0}) holes.add(x, 2.0 * x);
    nmkSortPointList list;
    holes.give_to(list);
    for (int walked = 0; walked <= 4; ++walked) {
        list.reset();
        for (int step = 0; step < walked; ++step) list.forwards();
        const nmkSortItem* const under_cursor = list.read().item();
        EXPECT_EQ(list.get_closest(giPoint3(3, 6, 0)), 2) << walked;
        giBox2 box;
        list.get_box(box);
        EXPECT_EQ(box.min(), giPoint2(-1, -2)) << walked;
        EXPECT_EQ(box.max(), giPoint2(5, 10)) << walked;
        list.normalize_points();
        giPoint3coDynArr ring;
        ring.add(giPoint3(0.5, 1.0, 0.0));
        EXPECT_EQ(holes[0].set_distance_array(ring, 0.2), 0.0) << walked;
        EXPECT_EQ(list.read().item(), under_cursor) << walked;
    }
}

TEST(nmkSortPointList, normalizes_into_the_unit_square_with_proportions_kept) {
    Holes holes;
    holes.add(10.0, 20.0);
    holes.add(14.0, 22.0);
    nmkSortPointList list;
    holes.give_to(list);
    list.normalize_points();
    giPoint3coDynArr ring;
    ring.add(giPoint3(1.0, 0.5, 0.0));
    EXPECT_EQ(holes[0].set_distance_array(ring, 0.2), 1.25);
    EXPECT_EQ(holes[1].set_distance_array(ring, 0.2), 0.0);
}

TEST(nmkSortPointList, leaves_coincident_points_unscaled) {
    Holes holes;
    holes.add(10.0, 20.0);
    holes.add(10.0, 20.0);
    nmkSortPointList list;
    holes.give_to(list);
    giBox2 box;
    list.get_box(box);
    EXPECT_EQ(box.width(), 0.0);
    EXPECT_EQ(box.height(), 0.0);
    list.normalize_points();
    giPoint3coDynArr ring;
    ring.add(giPoint3(10.0, 20.0, 0.0));
    EXPECT_EQ(holes[0].set_distance_array(ring, 0.2), 0.0);
}

TEST(nmkSortedList, keeps_items_of_equal_keys_in_order_of_insertion) {
    KeepsComparator keeps;
    nmkItemComparator::primary_sort(&nmkItemSortMethods::compare_x);
    Holes holes;
    for (const double x : {2.0, 1.0, 2.0, 1.0, 0.0, 2.0}) holes.add(x, 0.0);
    nmkSortItemPrf first(&holes[0]);
    nmkSortedList row(first);
    EXPECT_EQ(row->size(), 0);
    for (int i = 0; i < holes.size(); ++i) row->add(nmkSortItemPrf(&holes[i]));
    std::vector<int> order;
    for (const nmkSortItemPrf& item : row.list()) order.push_back(item->index());
    EXPECT_EQ(order, (std::vector<int>{4, 1, 3, 0, 2, 5}));
}

TEST(nmkSortedList, is_walked_by_a_range_for) {
    KeepsComparator keeps;
    nmkItemComparator::primary_sort(&nmkItemSortMethods::compare_x);
    Holes holes;
    for (const double x : {2.0, 1.0}) holes.add(x, 0.0);
    nmkSortedList row{nmkSortItemPrf(&holes[0])};
    for (int i = 0; i < holes.size(); ++i) row->add(nmkSortItemPrf(&holes[i]));
    std::vector<int> order;
    for (const nmkSortItemPrf& item : std::as_const(row)) order.push_back(item->index());
    EXPECT_EQ(order, (std::vector<int>{1, 0}));
    const nmkSortedList without_a_list;
    EXPECT_TRUE(without_a_list.begin() == without_a_list.end());
}

TEST(nmkSortedList, shares_its_list_with_copies_and_lends_its_representative) {
    Hole hole(1, 2);
    nmkSortedList row(new nmkSortItemPrfcoSortedList, nmkSortItemPrf(&hole));
    nmkSortedList copy = row;
    copy->add(nmkSortItemPrf(&hole));
    EXPECT_EQ(row.list().size(), 1);
    EXPECT_EQ(row.sort_value().item(), &hole);
    EXPECT_TRUE(row.sort_value().external());
}

TEST(nmkSortPointList, normalizes_only_the_items_that_have_a_point) {
    nmkSortItem without_point;
    Hole hole(3.0, 4.0);
    nmkSortPointList list;
    list.add_item(&hole);
    list.add_item(&without_point);
    list.add_item(nmkSortItemPrf());
    list.normalize_points();
    EXPECT_EQ(list.size(), 3);
    EXPECT_EQ(list.get_closest(giPoint3(3, 4, 0)), 0);
}

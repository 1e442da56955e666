#include <gtest/gtest.h>
#include <nmktoolbox/uniqueid/nmkObjectId.h>
#include <nmktoolbox/uniqueid/nmkRefToObjectIdList.h>

#include <vector>

namespace {

int size_of(nmkRefToObjectIdList list) {
    int size = 0;
    list.reset();
    while (list.forwards() != 0) ++size;
    return size;
}

class nmkRefToObjectIdList_test : public testing::Test {
  protected:
    nmkRefToObjectIdList_test() {
        for (nmkObjectId& object : objects) list.add_item(object.create_reference());
    }

    nmkObjectId objects[3];
    nmkRefToObjectIdList list;
};

}  // namespace

TEST_F(nmkRefToObjectIdList_test, keeps_items_in_the_order_of_their_addition) {
    for (const nmkObjectId& object : objects) {
        ASSERT_EQ(list.forwards(), 1);
        EXPECT_EQ(object.is_target_of(list.read()), 1);
    }
    EXPECT_EQ(list.forwards(), 0);
}

TEST_F(nmkRefToObjectIdList_test, adding_a_valid_reference_twice_leaves_one_item) {
    list.add_item(objects[1].create_reference());
    EXPECT_EQ(size_of(list), 3);
}

TEST_F(nmkRefToObjectIdList_test, adding_an_invalid_reference_twice_leaves_two_items) {
    const nmkRefToObjectId invalid;
    list.add_item(invalid);
    list.add_item(invalid);
    EXPECT_EQ(size_of(list), 5);
    EXPECT_EQ(list.num_valid(), 3);
}

TEST_F(nmkRefToObjectIdList_test, items_that_turned_invalid_are_kept_and_not_counted) {
    {
        nmkObjectId gone;
        list.add_item(gone.create_reference());
        EXPECT_EQ(list.num_valid(), 4);
    }
    EXPECT_EQ(list.num_valid(), 3);
    EXPECT_EQ(size_of(list), 4);
}

TEST_F(nmkRefToObjectIdList_test, adding_does_not_disturb_the_cursor) {
    list.forwards();
    list.forwards();
    nmkObjectId another;
    list.add_item(another.create_reference());
    EXPECT_EQ(objects[1].is_target_of(list.read()), 1);
}

TEST_F(nmkRefToObjectIdList_test, counting_valid_items_moves_the_cursor_past_the_last) {
    list.forwards();
    list.forwards();
    EXPECT_EQ(list.num_valid(), 3);
    EXPECT_EQ(list.read().is_valid(), 0);
    EXPECT_EQ(list.forwards(), 1);
    EXPECT_EQ(objects[0].is_target_of(list.read()), 1);
}

TEST_F(nmkRefToObjectIdList_test, removing_takes_out_the_item_and_goes_on_to_the_next) {
    list.forwards();
    list.forwards();
    list.remove();
    EXPECT_EQ(objects[2].is_target_of(list.read()), 1);
    EXPECT_EQ(size_of(list), 2);
    list.reset();
    list.remove();
    EXPECT_EQ(size_of(list), 2);
}

TEST_F(nmkRefToObjectIdList_test, without_an_item_under_the_cursor_an_invalid_one_is_read) {
    EXPECT_EQ(list.read().is_valid(), 0);
    EXPECT_EQ(nmkRefToObjectIdList().read().is_valid(), 0);
}

TEST_F(nmkRefToObjectIdList_test, copies_have_a_cursor_of_their_own) {
    list.forwards();
    nmkRefToObjectIdList copy(list);
    nmkRefToObjectIdList assigned;
    assigned = list;
    const nmkRefToObjectIdList& same = list;
    list = same;
    EXPECT_EQ(size_of(list), 3);
    copy.forwards();
    copy.forwards();
    copy.remove();
    EXPECT_EQ(size_of(copy), 2);
    EXPECT_EQ(size_of(list), 3);
    EXPECT_EQ(size_of(assigned), 3);
    EXPECT_EQ(objects[0].is_target_of(list.read()), 1);
}

TEST_F(nmkRefToObjectIdList_test, an_iterator_skips_invalid_items) {
    nmkRefToObjectIdList mixed;
    mixed.add_item(nmkRefToObjectId());
    mixed.add_item(objects[0].create_reference());
    mixed.add_item(nmkRefToObjectId());
    mixed.add_item(objects[1].create_reference());
    mixed.add_item(nmkRefToObjectId());
    nmkRefToObjectIdListIT item(mixed);
    EXPECT_EQ(item().is_valid(), 0);
    for (int pass = 0; pass < 2; ++pass) {
        EXPECT_EQ(++item, 1);
        EXPECT_EQ(objects[0].is_target_of(item()), 1);
        EXPECT_EQ(++item, 1);
        EXPECT_EQ(objects[1].is_target_of(item()), 1);
        EXPECT_EQ(++item, 0);
    }
    ++item;
    item.reset();
    EXPECT_EQ(++item, 1);
    EXPECT_EQ(objects[0].is_target_of(item()), 1);
}

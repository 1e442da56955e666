#include <gtest/gtest.h>
#include <nmktoolbox/collections/CRuntimeClassPtrObj.h>

namespace {

const CRuntimeClass first_class{"first", 8, CObject::GetThisClass()};
const CRuntimeClass namesake{"first", 8, CObject::GetThisClass()};

}  // namespace

TEST(CRuntimeClassPtrObj, the_nil_element_holds_null) {
    EXPECT_EQ(CRuntimeClassPtrObjcoSet::nil().get(), nullptr);
}

TEST(CRuntimeClassPtrObj, a_set_compares_classes_by_their_addresses) {
    CRuntimeClassPtrObjcoSet set(4, 50);
    set.add(&first_class);
    EXPECT_EQ(set.find(&first_class).get(), &first_class);
    EXPECT_EQ(set.find(&namesake).get(), nullptr);
    EXPECT_EQ(set.remove(&namesake).get(), nullptr);
    EXPECT_EQ(set.remove(&first_class).get(), &first_class);
    EXPECT_EQ(set.size(), 0);
}

TEST(CRuntimeClassPtrObj, a_table_stores_a_text_for_each_class) {
    CRuntimeClassPtrObjutStringcoTable table;
    table[&first_class] = utString("the first");
    table[CObject::GetThisClass()] = utString("the root");
    EXPECT_EQ(table.read(&first_class), utString("the first"));
    EXPECT_EQ(table.read(CObject::GetThisClass()), utString("the root"));
    EXPECT_TRUE(table.read(&namesake).is_null());
    EXPECT_EQ(table.size(), 2);
}

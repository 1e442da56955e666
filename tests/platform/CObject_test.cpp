// The framework's root class and its run-time classes.

#include <mfc/CObject.h>

#include <gtest/gtest.h>

namespace {

class Leaf : public CObject {
  public:
    CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    static CRuntimeClass* GetThisClass() {
        static CRuntimeClass of_this = {"Leaf", sizeof(Leaf), CObject::GetThisClass()};
        return &of_this;
    }
    static CRuntimeClass* _GetBaseClass() { return CObject::GetThisClass(); }
};

class Plain : public CObject {};

}  // namespace

TEST(CObject, knows_its_class_and_those_above) {
    const Leaf leaf;
    EXPECT_TRUE(leaf.IsKindOf(Leaf::GetThisClass()));
    EXPECT_TRUE(leaf.IsKindOf(CObject::GetThisClass()));
    EXPECT_FALSE(leaf.IsKindOf(nullptr));
    EXPECT_STREQ(leaf.GetRuntimeClass()->m_lpszClassName, "Leaf");
    EXPECT_EQ(leaf.GetRuntimeClass()->m_nObjectSize, static_cast<int>(sizeof(Leaf)));
}

TEST(CObject, a_class_without_its_own_run_time_class_counts_as_the_root) {
    const Plain plain;
    EXPECT_EQ(plain.GetRuntimeClass(), CObject::GetThisClass());
    EXPECT_FALSE(plain.IsKindOf(Leaf::GetThisClass()));
}

TEST(CObject, the_root_has_no_base) {
    EXPECT_EQ(CObject::_GetBaseClass(), nullptr);
    EXPECT_EQ(CObject::GetThisClass()->m_pBaseClass, nullptr);
    EXPECT_EQ(Leaf::_GetBaseClass(), CObject::GetThisClass());
}

TEST(CRuntimeClass, is_compared_by_identity_and_not_by_name) {
    const CRuntimeClass impostor = {"CObject", 0, nullptr};
    EXPECT_FALSE(Leaf::GetThisClass()->IsDerivedFrom(&impostor));
    EXPECT_TRUE(impostor.IsDerivedFrom(&impostor));
}

TEST(CRuntimeClass, is_found_by_its_name_while_it_is_registered) {
    EXPECT_EQ(CRuntimeClass::FromName("Leaf"), nullptr);
    {
        const CRuntimeClassRegistration registration(Leaf::GetThisClass());
        const CRuntimeClass namesake = {"Leaf", 0, nullptr};
        const CRuntimeClassRegistration second(&namesake);
        EXPECT_EQ(CRuntimeClass::FromName("Leaf"), Leaf::GetThisClass());
    }
    EXPECT_EQ(CRuntimeClass::FromName("Leaf"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName(""), nullptr);
}

TEST(CRuntimeClass, keeps_the_flag_of_versionable_classes_out_of_the_stored_schema) {
    const CRuntimeClass versionable = {"V", 0, nullptr, CRuntimeClass::versionable | 5};
    const CRuntimeClass plain = {"P", 0, nullptr, 5};
    const CRuntimeClass without = {"N", 0, nullptr};
    EXPECT_EQ(versionable.stored_schema(), 5U);
    EXPECT_TRUE(versionable.is_versionable());
    EXPECT_FALSE(plain.is_versionable());
    EXPECT_FALSE(without.is_storable());
    EXPECT_FALSE(without.is_versionable());
    EXPECT_EQ(without.CreateObject(), nullptr);
}

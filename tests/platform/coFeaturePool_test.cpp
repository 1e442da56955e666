#include <gtest/gtest.h>
#include <ncamcontainer/coFeaturePool.h>

#include <memory>

namespace {

// Data that count how many of them exist.
struct Counted {
    Counted() { ++living; }
    Counted(const Counted& other) : value(other.value) { ++living; }
    Counted& operator=(const Counted&) = default;
    ~Counted() { --living; }

    int value = 7;
    static inline int living = 0;
};

const coFeatureID id_of_first;
const coFeatureID id_of_second;

class FirstcoFeature : public coDataFeature<Counted> {
  public:
    basecoFeature* create() const override { return new FirstcoFeature; }
    const coFeatureID& get_id() const override { return id_of_first; }
};

class SecondcoFeature : public coDataFeature<Counted> {
  public:
    basecoFeature* create() const override { return new SecondcoFeature; }
    const coFeatureID& get_id() const override { return id_of_second; }
};

}  // namespace

TEST(coFeatureID, numbers_count_up_in_the_order_of_making) {
    EXPECT_EQ(id_of_second.value(), id_of_first.value() + 1);
    const int last = coFeatureID::count_m;
    const coFeatureID next;
    EXPECT_EQ(next.value(), last + 1);
    EXPECT_FALSE(next == id_of_first);
}

TEST(basecoFeature, deletes_data_of_its_own_only) {
    {
        FirstcoFeature owner;
        owner.make_data();
        FirstcoFeature user;
        user.bind(&owner);
        EXPECT_EQ(user.get(), owner.get());
        EXPECT_EQ(Counted::living, 1);
    }
    EXPECT_EQ(Counted::living, 0);
}

TEST(basecoFeature, binding_an_owner_deletes_its_data) {
    FirstcoFeature owner;
    owner.make_data();
    owner.make_data();
    EXPECT_EQ(Counted::living, 1);
    owner.bind(nullptr);
    EXPECT_EQ(Counted::living, 0);
    EXPECT_FALSE(owner.is_bound());
}

TEST(basecoFeature, copies_the_data_of_a_feature_of_its_class) {
    FirstcoFeature source;
    source.make_data();
    source->value = 9;
    FirstcoFeature copy;
    copy.make_copy_data(&source);
    EXPECT_EQ(copy->value, 9);
    EXPECT_NE(copy.get(), source.get());
    SecondcoFeature other;
    other.make_data();
    copy.make_copy_data(&other);
    EXPECT_FALSE(copy.is_bound());
    other.make_copy_data(nullptr);
    EXPECT_FALSE(other.is_bound());
}

TEST(basecoFeature, creates_unbound_features_of_its_class) {
    FirstcoFeature feature;
    feature.make_data();
    const std::unique_ptr<basecoFeature> created(feature.create());
    EXPECT_TRUE(created->get_id() == id_of_first);
    EXPECT_FALSE(created->is_bound());
}

TEST(coFeaturePool, get_binds_a_feature_that_it_has) {
    coFeaturePool pool;
    FirstcoFeature feature;
    EXPECT_EQ(pool.get(feature), 0);
    EXPECT_FALSE(feature.is_bound());
    EXPECT_EQ(pool.add(feature), 1);
    feature->value = 3;
    FirstcoFeature again;
    EXPECT_EQ(pool.get(again), 1);
    EXPECT_EQ(again->value, 3);
    SecondcoFeature missing;
    missing.make_data();
    EXPECT_EQ(pool.get(missing), 0);
    EXPECT_FALSE(missing.is_bound());
}

TEST(coFeaturePool, add_leaves_a_feature_that_it_has) {
    coFeaturePool pool;
    FirstcoFeature feature;
    pool.add(feature);
    feature->value = 3;
    FirstcoFeature again;
    EXPECT_EQ(pool.add(again), 0);
    EXPECT_EQ(again->value, 3);
    EXPECT_EQ(pool.size(), 1);
}

TEST(coFeaturePool, remove_deletes_the_data) {
    coFeaturePool pool;
    FirstcoFeature first;
    SecondcoFeature second;
    pool.add(first);
    pool.add(second);
    EXPECT_EQ(pool.remove(first), 1);
    EXPECT_FALSE(first.is_bound());
    EXPECT_EQ(Counted::living, 1);
    EXPECT_EQ(pool.remove(first), 0);
    EXPECT_EQ(pool.get(second), 1);
}

TEST(coFeaturePool, become_copies_all_features) {
    coFeaturePool source;
    FirstcoFeature first;
    SecondcoFeature second;
    source.add(first);
    source.add(second);
    second->value = 5;
    coFeaturePool copy(utCopy(), source);
    copy.become(utCopy(), copy);
    EXPECT_EQ(copy.size(), 2);
    SecondcoFeature copied;
    ASSERT_EQ(copy.get(copied), 1);
    EXPECT_EQ(copied->value, 5);
    EXPECT_NE(copied.get(), second.get());
}

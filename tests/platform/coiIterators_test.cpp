#include <gtest/gtest.h>
#include <ncamcontainer/coiIterators.h>

#include <vector>

namespace {

class Countdown : public coiAbsCloneableIterator<int> {
  public:
    explicit Countdown(int from) : m_from(from), m_now(from + 1) {}

    bool undefined() const override { return m_now > m_from || m_now <= 0; }
    void reset() override { m_now = m_from + 1; }
    bool operator++() override { return --m_now > 0; }
    const int& operator()() const override { return m_now; }
    std::unique_ptr<coiAbsCloneableIterator<int>> clone() const override {
        return std::make_unique<Countdown>(*this);
    }

  private:
    int m_from;
    int m_now;
};

TEST(coiFixedIterator, visits_its_values_and_starts_again_after_a_reset) {
    coiIterator<int> it = coiIterator_from_values<int>({3, 5});
    for (int pass = 0; pass < 2; ++pass) {
        EXPECT_TRUE(it.undefined());
        ASSERT_TRUE(++it);
        EXPECT_EQ(it(), 3);
        EXPECT_FALSE(it.undefined());
        ASSERT_TRUE(++it);
        EXPECT_EQ(it(), 5);
        EXPECT_FALSE(++it);
        EXPECT_FALSE(++it);
        EXPECT_TRUE(it.undefined());
        it.reset();
    }
}

TEST(coiFixedIterator, a_copy_shares_the_values_and_keeps_its_own_position) {
    coiIterator<int> it = coiIterator_from_values<int>({3, 5});
    ++it;
    coiIterator<int> copy = it;
    ++it;
    EXPECT_EQ(copy(), 3);
    EXPECT_EQ(it(), 5);
    using Fixed = coiFixedIterator<int>;
    EXPECT_EQ(&dynamic_cast<const Fixed&>(it.inner()).values(),
              &dynamic_cast<const Fixed&>(copy.inner()).values());
}

TEST(coiFixedIterator, an_iterator_over_no_values_never_moves) {
    coiIterator<int> it = coiIterator_from_values<int>({});
    EXPECT_FALSE(++it);
    EXPECT_TRUE(it.undefined());
}

}  // namespace

TEST(coiFiller, appends_to_a_container) {
    std::vector<int> numbers{1};
    coiFiller<int> filler = coiFiller_from_container(numbers);
    filler.add(2);
    filler.add(3);
    EXPECT_EQ(numbers, (std::vector<int>{1, 2, 3}));
}

TEST(coiFiller, copies_share_the_sink) {
    int sum = 0;
    coiFiller<int> filler = coiFiller_from_function<int>([&sum](int value) { sum += value; });
    coiFiller<int> copy = filler;
    filler.add(1);
    copy.add(2);
    EXPECT_EQ(sum, 3);
}

TEST(coiFiller, an_empty_function_throws_bad_function_call) {
    coiFiller<int> filler = coiFiller_from_function<int>(std::function<void(int)>());
    EXPECT_THROW(filler.add(1), std::bad_function_call);
}

TEST(coiIterator, a_copy_is_an_independent_cursor) {
    coiIterator<int> it(std::make_unique<Countdown>(2));
    EXPECT_TRUE(it.undefined());
    EXPECT_TRUE(++it);
    coiIterator<int> copy = it;
    EXPECT_TRUE(++it);
    EXPECT_EQ(it(), 1);
    EXPECT_EQ(copy(), 2);
    EXPECT_FALSE(++it);
    EXPECT_TRUE(it.undefined());
    it.reset();
    EXPECT_TRUE(++it);
    EXPECT_EQ(it(), 2);
    copy = it;
    EXPECT_EQ(copy(), 2);
}

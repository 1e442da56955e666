#include <gtest/gtest.h>
#include <ncamcontainer/coDynArr.h>
#include <ncamcontainer/coFixedArr.h>

#include <string>
#include <utility>
#include <vector>

namespace {

template <class Array>
std::vector<int> contents_of(const Array& array) {
    return std::vector<int>(array.begin(), array.end());
}

coFixedArr<int> counting(int size) {
    coFixedArr<int> array(size);
    for (int i = 0; i < size; ++i) array[i] = i;
    return array;
}

}  // namespace

TEST(coFixedArr, starts_with_zeros) {
    EXPECT_EQ(contents_of(coFixedArr<int>(3)), (std::vector<int>{0, 0, 0}));
    EXPECT_EQ(coFixedArr<int>().size(), 0);
    EXPECT_EQ(coFixedArr<int>(-1).size(), 0);
}

TEST(coFixedArr, becoming_a_copy_takes_its_size) {
    const coFixedArr<int> large = counting(5);
    coFixedArr<int> array(2);
    array.become(utCopy(), large);
    EXPECT_EQ(contents_of(array), (std::vector<int>{0, 1, 2, 3, 4}));
    array.become(utCopy(), coFixedArr<int>());
    EXPECT_EQ(array.size(), 0);
}

TEST(coFixedArr, reuses_its_storage_for_the_same_size) {
    const coFixedArr<int> source = counting(5);
    coFixedArr<int> array(5);
    const int* const storage = array.array();
    array.become(utCopy(), source);
    EXPECT_EQ(array.array(), storage);
    EXPECT_EQ(contents_of(array), contents_of(source));
}

TEST(coFixedArr, is_empty_after_it_was_moved_from) {
    coFixedArr<int> source = counting(3);
    const coFixedArr<int> target(std::move(source));
    EXPECT_EQ(contents_of(target), (std::vector<int>{0, 1, 2}));
    source = counting(2);
    EXPECT_EQ(source.size(), 2);
}

TEST(coFixedArr, is_copied_and_assigned) {
    const coFixedArr<int> original = counting(3);
    coFixedArr<int> copy(original);
    EXPECT_EQ(contents_of(copy), contents_of(original));
    EXPECT_EQ(contents_of(coFixedArr<int>(utCopy(), original)), contents_of(original));
    coFixedArr<int> assigned(1);
    assigned = copy;
    copy[0] = 9;
    EXPECT_EQ(contents_of(assigned), contents_of(original));
    assigned.become(utCopy(), assigned);
    EXPECT_EQ(contents_of(assigned), contents_of(original));
    for (int& element : assigned) ++element;
    EXPECT_EQ(contents_of(assigned), (std::vector<int>{1, 2, 3}));
}

TEST(coDynArr, starts_new_elements_at_zero) {
    coDynArr<int> array;
    array.resize(2);
    array[0] = 5;
    array.resize(3);
    EXPECT_EQ(contents_of(array), (std::vector<int>{5, 0, 0}));
    array.resize(-1);
    EXPECT_EQ(array.size(), 0);
}

TEST(coDynArr, appends_an_element_of_its_own) {
    coDynArr<std::string> array;
    array.add("a text that is too long for the small-string buffer");
    for (int i = 0; i < 20; ++i) array.add(array[0]);
    EXPECT_EQ(array[20], array[0]);
}

TEST(coDynArr, becomes_an_independent_copy) {
    coDynArr<int> original{1, 2};
    coDynArr<int> copy;
    copy.become(utCopy(), original);
    original[0] = 9;
    EXPECT_EQ(contents_of(copy), (std::vector<int>{1, 2}));
}

TEST(coDynArr, takes_sizes_below_zero_as_zero) {
    EXPECT_EQ(coDynArr<int>(-3).size(), 0);
    coDynArr<int> array{1};
    array.reserve(-3);
    EXPECT_EQ(contents_of(array), (std::vector<int>{1}));
    array.clear();
    EXPECT_EQ(array.size(), 0);
}

TEST(coDynArr, keeps_its_elements_when_it_shrinks) {
    coDynArr<int> array;
    array.reserve(100);
    array.add(1);
    array.shrink();
    EXPECT_EQ(contents_of(array), (std::vector<int>{1}));
}

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

TEST(coFixedArr, takes_the_size_of_what_it_becomes) {
    const coFixedArr<int> large = counting(5);
    coFixedArr<int> array(2);
    array.become(utCopy(), large);
    EXPECT_EQ(contents_of(array), (std::vector<int>{0, 1, 2, 3, 4}));
    array.become(utCopy(), coFixedArr<int>());
    EXPECT_EQ(array.size(), 0);
}

TEST(coFixedArr, uses_its_storage_again_for_the_same_size) {
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
    array.add("a text that is too long for its own pocket");
    for (int i = 0; i < 20; ++i) array.add(array[0]);
    EXPECT_EQ(array[20], array[0]);
}

TEST(coDynArr, becomes_a_copy_that_is_its_own) {
    coDynArr<int> original{1, 2};
    coDynArr<int> copy;
    copy.become(utCopy(), original);
    original[0] = 9;
    EXPECT_EQ(contents_of(copy), (std::vector<int>{1, 2}));
}

TEST(coDynArr, keeps_its_elements_when_it_shrinks) {
    coDynArr<int> array;
    array.reserve(100);
    array.add(1);
    array.shrink();
    EXPECT_EQ(contents_of(array), (std::vector<int>{1}));
}

#include <gtest/gtest.h>
#include <ncamcontainer/coPageArr.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace {

using IntArr = coPageArr<int>;

IntArr counting(int size, int shift = 2) {
    IntArr array(shift, 5, 10);
    for (int i = 0; i < size; ++i) array.add(i);
    return array;
}

std::vector<int> contents_of(const IntArr& array) {
    std::vector<int> found(static_cast<std::size_t>(array.size()));
    array.copyout(0, found.data(), array.size());
    return found;
}

}  // namespace

TEST(coPageArr, has_pages_of_256_elements_by_default) {
    IntArr array;
    EXPECT_EQ(array.page_size(), 256);
    array[255] = 1;
    EXPECT_EQ(array.pages(), 1);
    array[256] = 1;
    EXPECT_EQ(array.pages(), 2);
    EXPECT_EQ(IntArr(3, 5, 10).page_size(), 8);
}

TEST(coPageArr, keeps_the_address_of_element_0_through_a_thousand_additions) {
    IntArr array;
    array.add(42);
    const int* const first = &array[0];
    for (int i = 0; i < 1000; ++i) array.add(i);
    EXPECT_EQ(&array[0], first);
    EXPECT_EQ(array[0], 42);
}

TEST(coPageArr, keeps_every_address_while_the_page_table_grows) {
    IntArr array(0, 1, 1);
    std::vector<const int*> addresses;
    for (int i = 0; i < 300; ++i) addresses.push_back(&array[i]);
    for (int i = 0; i < 300; ++i) EXPECT_EQ(&array[i], addresses[static_cast<std::size_t>(i)]);
}

TEST(coPageArr, indexing_raises_the_mark_and_never_lowers_it) {
    IntArr array;
    array[9] = 1;
    EXPECT_EQ(array.size(), 10);
    array[3] = 1;
    EXPECT_EQ(array.size(), 10);
    const IntArr& constant = array;
    EXPECT_EQ(constant[5], 0);
    EXPECT_EQ(array.size(), 10);
}

TEST(coPageArr, reading_past_the_mark_gives_nil_and_adds_nothing) {
    const IntArr array = counting(5);
    EXPECT_EQ(array[4], 4);
    EXPECT_EQ(&array[5], &IntArr::nil());
    EXPECT_EQ(&array[1000000], &IntArr::nil());
    EXPECT_EQ(&array[-1], &IntArr::nil());
    EXPECT_EQ(IntArr::nil(), 0);
    EXPECT_EQ(array.size(), 5);
    EXPECT_EQ(array.pages(), 2);
    EXPECT_EQ(&*array.iterator(), &IntArr::nil());
    EXPECT_EQ(array.iterator().operator->(), &IntArr::nil());
}

TEST(coPageArr, copying_from_past_the_mark_gives_copies_of_nil) {
    const IntArr source = counting(3);
    IntArr array;
    array.copy(0, source, 1, 4);
    EXPECT_EQ(contents_of(array), (std::vector<int>{1, 2, 0, 0}));
    int out[2] = {9, 9};
    source.copyout(2, out, 2);
    EXPECT_EQ(out[0], 2);
    EXPECT_EQ(out[1], 0);
    array.copy(0, source, 0, 0);
    EXPECT_EQ(array.size(), 4);
}

TEST(coPageArr, works_with_standard_algorithms_across_pages) {
    IntArr array = counting(11);
    array.reverse();
    std::sort(array.begin(), array.end());
    EXPECT_EQ(contents_of(array), contents_of(counting(11)));
    EXPECT_EQ(array.end() - array.begin(), 11);
    EXPECT_EQ(std::accumulate(array.begin(), array.end(), 0), 55);
    const IntArr& constant = array;
    EXPECT_TRUE(std::binary_search(constant.begin(), constant.end(), 7));
    EXPECT_EQ(constant.begin()[3], 3);
    EXPECT_EQ(*(2 + constant.begin()--), 2);
    EXPECT_TRUE(IntArr().begin() == IntArr().end());
}

TEST(coPageArr, limits_the_arguments_of_its_constructor) {
    IntArr array(-1, 0, -5);
    EXPECT_EQ(array.page_size(), 1);
    for (int i = 0; i < 20; ++i) array.add(i);
    EXPECT_EQ(array.pages(), 20);
    EXPECT_EQ(IntArr(99, 1, 1).page_size(), 1 << 30);
}

TEST(coPageArr, is_assigned_by_copying_and_by_moving) {
    const IntArr original = counting(6);
    IntArr copy;
    copy = original;
    EXPECT_EQ(contents_of(copy), contents_of(original));
    IntArr& same = copy;
    copy = std::move(same);
    EXPECT_EQ(contents_of(copy), contents_of(original));
    const IntArr constructed(copy);
    EXPECT_EQ(contents_of(constructed), contents_of(original));
}

TEST(coPageArr, clear_keeps_the_first_elements) {
    IntArr array = counting(10);
    array.clear(3);
    EXPECT_EQ(contents_of(array), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(array.pages(), 1);
    array.clear(7);
    EXPECT_EQ(array.size(), 3);
    array.clear();
    EXPECT_EQ(array.size(), 0);
    EXPECT_EQ(array.pages(), 0);
}

TEST(coPageArr, elements_past_the_mark_are_default_constructed_when_they_return) {
    IntArr array = counting(4);
    array.clear(1);
    array[3];
    EXPECT_EQ(contents_of(array), (std::vector<int>{0, 0, 0, 0}));
}

TEST(coPageArr, shrink_keeps_spare_pages) {
    IntArr array = counting(20);
    array.shrink(5, 4);
    EXPECT_EQ(array.size(), 5);
    EXPECT_EQ(array.pages(), 3);
    array[11];
    EXPECT_EQ(array[6], 0);
}

TEST(coPageArr, copies_across_pages_and_within_itself) {
    IntArr array = counting(10);
    array.copy(3, array, 0, 10);
    EXPECT_EQ(contents_of(array), (std::vector<int>{0, 1, 2, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    array.copy(0, array, 3, 10);
    EXPECT_EQ(contents_of(array), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 7, 8, 9}));
}

TEST(coPageArr, copies_in_and_out_of_plain_arrays) {
    const int plain[] = {7, 8, 9};
    IntArr array = counting(2);
    array.copyin(5, plain, 3);
    EXPECT_EQ(contents_of(array), (std::vector<int>{0, 1, 0, 0, 0, 7, 8, 9}));
    int out[2] = {};
    array.copyout(6, out, 2);
    EXPECT_EQ(out[0], 8);
    EXPECT_EQ(out[1], 9);
}

TEST(coPageArr, reverses_across_pages) {
    IntArr odd = counting(7);
    odd.reverse();
    EXPECT_EQ(contents_of(odd), (std::vector<int>{6, 5, 4, 3, 2, 1, 0}));
    IntArr none;
    none.reverse();
    EXPECT_EQ(none.size(), 0);
}

TEST(coPageArr, repaginate_drops_to_the_smallest_page_that_holds_the_elements) {
    IntArr array = counting(5, 8);
    EXPECT_NE(array.repaginate(), 0);
    EXPECT_EQ(array.page_size(), 8);
    EXPECT_EQ(contents_of(array), (std::vector<int>{0, 1, 2, 3, 4}));
    EXPECT_EQ(array.repaginate(), 0);
}

TEST(coPageArr, repaginate_keeps_a_page_that_is_just_full) {
    IntArr array = counting(8, 3);
    EXPECT_EQ(array.repaginate(), 0);
    EXPECT_EQ(array.page_size(), 8);
}

TEST(coPageArr, repaginate_of_one_element_makes_pages_of_one) {
    IntArr array = counting(1, 8);
    EXPECT_NE(array.repaginate(), 0);
    EXPECT_EQ(array.page_size(), 1);
    array.add(1);
    EXPECT_EQ(contents_of(array), (std::vector<int>{0, 1}));
}

TEST(coPageArr, repaginate_frees_pages_past_the_mark) {
    IntArr array = counting(20);
    array.shrink(6, 100);
    EXPECT_EQ(array.pages(), 5);
    EXPECT_NE(array.repaginate(), 0);
    EXPECT_EQ(array.pages(), 2);
    EXPECT_EQ(array.page_size(), 4);
}

TEST(coPageArr, repaginate_of_an_empty_array_clears_it_outright) {
    IntArr array = counting(20);
    array.shrink(0, 100);
    EXPECT_NE(array.repaginate(), 0);
    EXPECT_EQ(array.pages(), 0);
    EXPECT_EQ(array.page_size(), 4);
    EXPECT_EQ(array.repaginate(), 0);
}

TEST(coPageArr, becomes_an_independent_copy) {
    IntArr original = counting(10);
    IntArr copy(utCopy(), original);
    original[0] = 99;
    EXPECT_EQ(copy[0], 0);
    EXPECT_EQ(copy.size(), 10);
    EXPECT_EQ(copy.page_size(), 4);
    copy.become(utCopy(), copy);
    EXPECT_EQ(copy.size(), 10);
}

TEST(coPageArr, is_empty_and_usable_after_it_was_moved_from) {
    IntArr original = counting(10);
    const int* const first = &original[0];
    IntArr moved(std::move(original));
    EXPECT_EQ(&moved[0], first);
    original = IntArr();
    original.add(1);
    EXPECT_EQ(original.size(), 1);
}

TEST(coPageArr, adds_a_copy_of_one_of_its_elements) {
    coPageArr<std::string> array(1, 1, 1);
    array.add("a text that is too long for the small-string buffer");
    for (int i = 0; i < 9; ++i) array.add(array[i]);
    EXPECT_EQ(array[9], array[0]);
}

TEST(coPageArr, an_iterator_visits_all_elements_twice) {
    const IntArr array = counting(6);
    IntArr::coIterator it = array.iterator();
    for (int pass = 0; pass < 2; ++pass) {
        int expected = 0;
        for (int more = it.do_first(); more != 0; more = ++it) EXPECT_EQ(*it, expected++);
        EXPECT_EQ(expected, 6);
        EXPECT_EQ(it.index(), -1);
    }
    EXPECT_EQ(IntArr().iterator().do_first(), 0);
}

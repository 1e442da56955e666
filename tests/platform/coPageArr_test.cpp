#include <gtest/gtest.h>
#include <ncamcontainer/coPageArr.h>

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

TEST(coPageArr, has_pages_of_256_elements_unless_told_otherwise) {
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

TEST(coPageArr, elements_past_the_mark_are_fresh_when_they_come_back) {
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

TEST(coPageArr, copies_across_pages_also_within_itself) {
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

TEST(coPageArr, becomes_a_copy_that_is_its_own) {
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

TEST(coPageArr, adds_an_element_of_its_own) {
    coPageArr<std::string> array(1, 1, 1);
    array.add("a text that is too long for its own pocket");
    for (int i = 0; i < 9; ++i) array.add(array[i]);
    EXPECT_EQ(array[9], array[0]);
}

TEST(coPageArr, iterator_walks_from_the_first_and_again) {
    const IntArr array = counting(6);
    IntArr::coIterator it = array.iterator();
    for (int walk = 0; walk < 2; ++walk) {
        int expected = 0;
        for (int more = it.do_first(); more != 0; more = ++it) EXPECT_EQ(*it, expected++);
        EXPECT_EQ(expected, 6);
        EXPECT_EQ(it.index(), -1);
    }
    EXPECT_EQ(IntArr().iterator().do_first(), 0);
}

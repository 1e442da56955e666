#include <gtest/gtest.h>
#include <nmktoolbox/uniqueid/nmkUniqueIdPtr.h>

#include <memory>

#include "archive_failure.h"
#include "uniqueid/identifier_samples.h"

using namespace identifier_samples;

TEST(nmkUniqueIdPtr, a_new_one_holds_an_invalid_identifier) {
    EXPECT_EQ(serials_spent([] {
                  const nmkUniqueIdPtr handle;
                  EXPECT_EQ(handle.is_valid(), 0);
                  EXPECT_EQ(handle.reference_count(), 1);
              }),
              1);
}

TEST(nmkUniqueIdPtr, claiming_takes_the_identifier_over) {
    nmkUniqueId* const identifier = nmkUniqueId::create();
    const nmkUniqueIdPtr handle(nmk_ptr_claim, identifier);
    EXPECT_EQ(handle.get_uid(), identifier);
    EXPECT_EQ(&*handle, identifier);
    EXPECT_EQ(handle->get_hash_val(), handle.get_hash_val());
    EXPECT_EQ(co_hash(handle), static_cast<unsigned int>(identifier->get_hash_val()));
}

TEST(nmkUniqueIdPtr, claiming_null_gives_an_invalid_identifier) {
    const nmkUniqueIdPtr handle(nmk_ptr_claim, nullptr);
    ASSERT_NE(handle.get_uid(), nullptr);
    EXPECT_EQ(handle.is_valid(), 0);
}

TEST(nmkUniqueIdPtr, copies_share_the_identifier_and_are_counted) {
    nmkUniqueIdPtr handle(nmk_ptr_claim, nmkUniqueId::create());
    EXPECT_EQ(serials_spent([&] {
                  const nmkUniqueIdPtr copy = handle;
                  EXPECT_EQ(copy.get_uid(), handle.get_uid());
                  EXPECT_EQ(handle.reference_count(), 2);
              }),
              0);
    EXPECT_EQ(handle.reference_count(), 1);
    nmkUniqueIdPtr other;
    other = handle;
    const nmkUniqueIdPtr& same = other;
    other = same;
    EXPECT_EQ(handle.reference_count(), 2);
    other.set_invalid();
    EXPECT_EQ(handle.is_valid(), 0);
    other.rename_member();
    EXPECT_EQ(handle.is_valid(), 1);
}

TEST(nmkUniqueIdPtr, is_compared_by_value_and_not_by_address) {
    EXPECT_TRUE(handle_with({1, 2, 3, 4}) == handle_with({1, 2, 3, 4}));
    EXPECT_FALSE(handle_with({1, 2, 3, 4}) == handle_with({1, 2, 3, 5}));
    EXPECT_TRUE(nmkUniqueIdPtr() == nmkUniqueIdPtr());
    EXPECT_FALSE(nmkUniqueIdPtr() == handle_with({1, 2, 3, 4}));
}

TEST(nmkUniqueIdPtr, counts_2_for_an_external_identifier_and_0_for_none) {
    const std::unique_ptr<nmkUniqueId> identifier(nmkUniqueId::create());
    nmkUniqueIdPtr handle;
    handle.get_modifiable_ptr() = nmkUniqueIdcoPrf(coPrfExtern(), identifier.get());
    EXPECT_EQ(handle.reference_count(), 2);
    const nmkUniqueIdPtr copy = handle;
    EXPECT_EQ(copy.reference_count(), 2);
    EXPECT_TRUE(copy.get_ptr().external());
    handle.get_modifiable_ptr().reset();
    EXPECT_EQ(handle.reference_count(), 0);
}

TEST(nmkUniqueIdPtr, one_without_an_identifier_counts_as_invalid) {
    nmkUniqueIdPtr handle;
    handle.get_modifiable_ptr().reset();
    EXPECT_EQ(handle.is_valid(), 0);
    EXPECT_EQ(handle.get_hash_val(), 0UL);
    EXPECT_TRUE(handle == nmkUniqueIdPtr());
    handle.set_invalid();
    handle.rename_member();
    EXPECT_EQ(handle.get_uid(), nullptr);
}

TEST(nmkUniqueIdPtr, loading_takes_a_new_identifier_and_leaves_the_old_one_to_others) {
    nmkUniqueIdPtr handle = handle_with({1, 2, 3, 4});
    const nmkUniqueIdPtr other = handle;
    EXPECT_EQ(serials_spent([&] { load_record(handle, record_with({5, 6, 7, 8})); }), 1);
    EXPECT_EQ(words_of(*handle), (Words{5, 6, 7, 8}));
    EXPECT_EQ(words_of(*other), (Words{1, 2, 3, 4}));
    EXPECT_EQ(handle.reference_count(), 1);
    EXPECT_EQ(record_of(handle), record_with({5, 6, 7, 8}));
}

TEST(nmkUniqueIdPtr, loading_that_fails_leaves_the_old_identifier) {
    nmkUniqueIdPtr handle = handle_with({1, 2, 3, 4});
    const nmkUniqueId* const before = handle.get_uid();
    EXPECT_EQ(cause_of([&] { load_record(handle, {1, 2, 3}); }), CArchiveException::endOfFile);
    EXPECT_EQ(handle.get_uid(), before);
}

TEST(nmkUniqueIdPtr, is_stored_and_loaded_as_an_object_of_its_class) {
    const nmkUniqueIdPtr handle = handle_with({1, 2, 3, 4});
    CMemFile file;
    CArchive stored(&file, CArchive::store);
    stored << &handle;
    stored.Close();
    const Bytes in_front = {0xFF, 0xFF, 1,   0,   14,  0,   'n', 'm', 'k', 'U',
                            'n',  'i',  'q', 'u', 'e', 'I', 'd', 'P', 't', 'r'};
    Bytes expected = in_front;
    for (const unsigned char byte : record_with({1, 2, 3, 4})) expected.push_back(byte);
    EXPECT_EQ(Bytes(file.bytes().begin(), file.bytes().end()), expected);
    file.Seek(0, CFile::begin);
    CArchive archive(&file, CArchive::load);
    nmkUniqueIdPtr* loaded = nullptr;
    archive >> loaded;
    const std::unique_ptr<nmkUniqueIdPtr> owner(loaded);
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(*loaded == handle);
    EXPECT_TRUE(loaded->IsKindOf(nmkUniqueIdPtr::GetThisClass()));
}

TEST(nmkUniqueIdPtrcoSet, empty_slots_allocate_nothing_and_spend_no_serial) {
    nmkUniqueIdPtrcoSet set(12, 50);
    const nmkUniqueIdPtr handle = handle_with({1, 2, 3, 4});
    EXPECT_EQ(serials_spent([&] {
                  set.add(handle);
                  set.remove(handle);
                  set.clear();
              }),
              0);
    EXPECT_EQ(set.arr_size(), 4096);
    nmkRefToObjectIdcoSet references(12, 50);
    const nmkRefToObjectId reference;
    EXPECT_EQ(serials_spent([&] { references.add(reference); }), 0);
}

#include <gtest/gtest.h>
#include <nmktoolbox/uniqueid/nmkObjectId.h>
#include <nmktoolbox/uniqueid/nmkObjectIdAccessor.h>
#include <nmktoolbox/uniqueid/nmkUniqueIdTable.h>

#include <memory>
#include <type_traits>
#include <vector>

#include "archive_failure.h"
#include "uniqueid/identifier_samples.h"

using namespace identifier_samples;

namespace {

const Words words = {0x11111111, 0x22222222, 0x33333333, 0};
const Words invalid_words = {0x11111111, 1, 0x33333333, 0};

class nmkObjectId_loading : public testing::Test {
  protected:
    ~nmkObjectId_loading() override { nmkObjectId::protect_id(false); }

    nmkUniqueIdTable& table() { return *nmkUniqueIdTable::session_entities(); }

    FreshSession session;
};

struct Accessor : nmkObjectIdAccessor {
    using nmkObjectIdAccessor::invalidate;
    using nmkObjectIdAccessor::make_valid;
    using nmkObjectIdAccessor::reseat;
};

}  // namespace

TEST(nmkObjectId, is_made_valid_and_never_copied) {
    EXPECT_EQ(serials_spent([] { const std::unique_ptr<nmkObjectId> leaked(new nmkObjectId); }), 2);
    EXPECT_EQ(nmkObjectId().is_valid(), 1);
    EXPECT_FALSE(std::is_copy_constructible_v<nmkObjectId>);
    EXPECT_FALSE(std::is_copy_assignable_v<nmkObjectId>);
}

TEST(nmkObjectId, references_share_its_identifier) {
    nmkObjectId object;
    nmkRefToObjectId reference;
    EXPECT_EQ(serials_spent([&] { reference = object.create_reference(); }), 0);
    EXPECT_EQ(object.is_target_of(reference), 1);
    EXPECT_EQ(object.reference_count(), 2);
    EXPECT_EQ(reference.get_uid(), object.get_uid());
}

TEST(nmkObjectId, is_the_target_of_its_own_references_only_by_address) {
    nmkObjectId object;
    nmkRefToObjectId reference;
    nmkUniqueIdPtr equal = handle_with({1, 2, 3, 4});
    equal->become(object.get_uid());
    reference.become(equal);
    EXPECT_EQ(object.is_target_of(reference), 0);
    EXPECT_TRUE(reference == object.create_reference());
}

TEST(nmkObjectId, its_end_invalidates_every_reference_and_those_are_then_equal) {
    nmkRefToObjectId first;
    nmkRefToObjectId second;
    {
        nmkObjectId one;
        nmkObjectId other;
        first = one.create_reference();
        second = other.create_reference();
        EXPECT_FALSE(first == second);
    }
    EXPECT_EQ(first.is_valid(), 0);
    EXPECT_EQ(second.is_valid(), 0);
    EXPECT_TRUE(first == second);
}

TEST(nmkObjectId, mutating_renames_it_for_all_references) {
    nmkObjectId object;
    const nmkRefToObjectId reference = object.create_reference();
    const utString before = object.get_uid()->hex_string();
    EXPECT_EQ(serials_spent([&] { object.mutate(); }), 1);
    EXPECT_NE(object.get_uid()->hex_string(), before);
    EXPECT_EQ(object.is_target_of(reference), 1);
}

TEST(nmkObjectId, swapping_exchanges_what_references_refer_to) {
    nmkObjectId one;
    nmkObjectId other;
    const nmkRefToObjectId to_one = one.create_reference();
    const nmkRefToObjectId to_other = other.create_reference();
    EXPECT_EQ(serials_spent([&] { one.swap_ids(other); }), 0);
    EXPECT_EQ(one.is_target_of(to_other), 1);
    EXPECT_EQ(other.is_target_of(to_one), 1);
    one.swap_ids(one);
    EXPECT_EQ(one.is_target_of(to_other), 1);
}

TEST(nmkObjectId, uncoupling_leaves_the_old_identifier_to_the_references) {
    nmkObjectId object;
    const nmkRefToObjectId reference = object.create_reference();
    const utString before = reference.get_uid()->hex_string();
    EXPECT_EQ(serials_spent([&] { object.uncouple(); }), 2);
    EXPECT_EQ(object.is_valid(), 1);
    EXPECT_EQ(object.is_target_of(reference), 0);
    EXPECT_EQ(reference.is_valid(), 1);
    EXPECT_EQ(reference.get_uid()->hex_string(), before);
    EXPECT_FALSE(object.create_reference() == reference);
}

TEST(nmkObjectId, uncoupling_a_sole_owner_still_gives_it_a_new_identifier) {
    nmkObjectId object;
    const utString before = object.get_uid()->hex_string();
    EXPECT_EQ(object.reference_count(), 1);
    EXPECT_EQ(serials_spent([&] { object.uncouple(); }), 2);
    EXPECT_NE(object.get_uid()->hex_string(), before);
    EXPECT_EQ(object.is_valid(), 1);
}

TEST(nmkObjectId, equality_is_that_of_the_values) {
    const FreshSession session;
    nmkObjectId one;
    nmkObjectId other;
    EXPECT_EQ(one.is_equal(other), 0);
    EXPECT_EQ(one.is_equal(one), 1);
    load_record(one, record_with(words));
    load_record(other, record_with(words));
    EXPECT_EQ(one.is_equal(other), 1);
}

TEST_F(nmkObjectId_loading, a_reference_read_before_its_target_is_joined_with_it) {
    nmkRefToObjectId reference;
    load_record(reference, record_with(words));
    EXPECT_EQ(table().member(reference), 1);
    nmkObjectId object;
    load_record(object, record_with(words));
    EXPECT_EQ(object.is_target_of(reference), 1);
    EXPECT_EQ(table().size(), 1);
}

TEST_F(nmkObjectId_loading, a_reference_read_after_its_target_is_joined_with_it) {
    nmkObjectId object;
    load_record(object, record_with(words));
    nmkRefToObjectId reference;
    load_record(reference, record_with(words));
    EXPECT_EQ(object.is_target_of(reference), 1);
    EXPECT_EQ(table().size(), 1);
}

TEST_F(nmkObjectId_loading, two_owners_read_with_equal_identifiers_share_one) {
    nmkRefToObjectId reference;
    nmkObjectId kept;
    {
        nmkObjectId first;
        load_record(first, record_with(words));
        load_record(kept, record_with(words));
        reference = first.create_reference();
        EXPECT_EQ(kept.is_target_of(reference), 1);
    }
    EXPECT_EQ(kept.is_valid(), 0);
    EXPECT_EQ(reference.is_valid(), 0);
}

TEST_F(nmkObjectId_loading, protection_keeps_a_target_out_of_the_table_and_its_references_apart) {
    const nmkActionBlocker<nmkProtectIdTag> blocker;
    nmkObjectId::protect_id(true);
    nmkObjectId object;
    load_record(object, record_with(words));
    EXPECT_EQ(table().size(), 0);
    nmkRefToObjectId reference;
    load_record(reference, record_with(words));
    EXPECT_EQ(table().size(), 0);
    EXPECT_EQ(object.is_target_of(reference), 0);
    EXPECT_EQ(reference.is_equal(object.create_reference()), 1);
}

TEST_F(nmkObjectId_loading, protection_stops_adding_but_not_looking_up) {
    nmkRefToObjectId reference;
    load_record(reference, record_with(words));
    const nmkActionBlocker<nmkProtectIdTag> blocker;
    nmkObjectId::protect_id(true);
    nmkObjectId object;
    load_record(object, record_with(words));
    EXPECT_EQ(object.is_target_of(reference), 1);
    nmkRefToObjectId later;
    load_record(later, record_with(words));
    EXPECT_EQ(object.is_target_of(later), 1);
}

TEST_F(nmkObjectId_loading, protection_needs_the_flag_and_a_blocker) {
    nmkObjectId::protect_id(true);
    EXPECT_FALSE(nmkObjectId::protect_id());
    {
        const nmkActionBlocker<nmkProtectIdTag> blocker;
        EXPECT_TRUE(nmkObjectId::protect_id());
        {
            const nmkActionBlocker<nmkProtectIdTag> second;
            EXPECT_EQ(nmkActionBlocker<nmkProtectIdTag>::s_count, 2);
        }
        EXPECT_TRUE(nmkObjectId::protect_id());
        nmkObjectId::protect_id(false);
        EXPECT_FALSE(nmkObjectId::protect_id());
        EXPECT_TRUE(nmkActionBlocker<nmkProtectIdTag>::block());
    }
    EXPECT_FALSE(nmkActionBlocker<nmkProtectIdTag>::block());
}

TEST_F(nmkObjectId_loading, an_owner_read_as_invalid_is_renamed_before_it_is_looked_up) {
    nmkObjectId object;
    EXPECT_EQ(serials_spent([&] { load_record(object, record_with(invalid_words)); }), 2);
    EXPECT_EQ(object.is_valid(), 1);
    EXPECT_EQ(table().size(), 1);
    EXPECT_EQ(table().member(object.create_reference()), 1);
    EXPECT_EQ(table().member(handle_with(invalid_words)), 0);
}

TEST_F(nmkObjectId_loading, a_reference_read_as_invalid_stays_so_and_out_of_the_table) {
    nmkRefToObjectId reference;
    EXPECT_EQ(serials_spent([&] { load_record(reference, record_with(invalid_words)); }), 1);
    EXPECT_EQ(reference.is_valid(), 0);
    EXPECT_EQ(table().size(), 0);
    EXPECT_EQ(record_of(reference), record_with(invalid_words));
}

TEST_F(nmkObjectId_loading, into_an_owner_with_references_leaves_those_on_the_old_identifier) {
    nmkObjectId object;
    const nmkRefToObjectId reference = object.create_reference();
    load_record(object, record_with(words));
    EXPECT_EQ(object.is_target_of(reference), 0);
    EXPECT_EQ(reference.is_valid(), 1);
}

TEST_F(nmkObjectId_loading, that_fails_leaves_owner_and_reference_with_their_targets) {
    const Bytes whole = record_with(words);
    nmkObjectId object;
    nmkRefToObjectId reference = object.create_reference();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Bytes prefix(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(cause_of([&] { load_record(object, prefix); }), CArchiveException::endOfFile);
        EXPECT_EQ(cause_of([&] { load_record(reference, prefix); }), CArchiveException::endOfFile);
        EXPECT_EQ(object.is_target_of(reference), 1);
        EXPECT_EQ(object.is_valid(), 1);
    }
    EXPECT_EQ(table().size(), 0);
}

TEST_F(nmkObjectId_loading, storing_writes_the_record_alone_valid_or_not) {
    nmkObjectId object;
    load_record(object, record_with(words));
    EXPECT_EQ(record_of(object), record_with(words));
    Accessor().invalidate(object);
    EXPECT_EQ(record_of(object).size(), 18U);
    EXPECT_EQ(record_of(object)[4], 1);
}

TEST_F(nmkObjectId_loading, owners_and_references_are_stored_as_objects_of_their_classes) {
    CMemFile file;
    {
        nmkObjectId object;
        const nmkRefToObjectId reference = object.create_reference();
        CArchive archive(&file, CArchive::store);
        archive << &reference << &object << &reference;
    }
    file.Seek(0, CFile::begin);
    CArchive archive(&file, CArchive::load);
    nmkRefToObjectId* reference = nullptr;
    nmkObjectId* object = nullptr;
    nmkRefToObjectId* again = nullptr;
    archive >> reference >> object >> again;
    const std::unique_ptr<nmkRefToObjectId> owned_reference(reference);
    const std::unique_ptr<nmkObjectId> owned_object(object);
    EXPECT_EQ(again, reference);
    EXPECT_EQ(object->is_target_of(*reference), 1);
    EXPECT_EQ(object->IsKindOf(nmkObjectId::GetThisClass()), true);
    EXPECT_EQ(object->GetRuntimeClass()->m_wSchema, 0x80000001U);
}

TEST_F(nmkObjectId_loading, an_owner_where_a_reference_is_stored_throws_badClass) {
    CMemFile file;
    {
        const nmkRefToObjectId reference;
        CArchive archive(&file, CArchive::store);
        archive << &reference;
    }
    file.Seek(0, CFile::begin);
    CArchive archive(&file, CArchive::load);
    nmkObjectId* object = nullptr;
    EXPECT_EQ(cause_of([&] { archive >> object; }), CArchiveException::badClass);
    EXPECT_EQ(object, nullptr);
}

TEST_F(nmkObjectId_loading, reseating_takes_the_place_of_an_equal_member) {
    const nmkUniqueIdPtr member = handle_with(words);
    const nmkUniqueIdPtr handle = handle_with(words);
    table().add(member);
    nmkObjectId object;
    Accessor().reseat(object, handle);
    EXPECT_EQ(object.get_uid(), handle.get_uid());
    EXPECT_EQ(table().size(), 1);
    EXPECT_EQ(table().find(member).get_uid(), handle.get_uid());
}

TEST_F(nmkObjectId_loading, reseating_without_an_equal_member_leaves_the_table_alone) {
    const nmkUniqueIdPtr handle = handle_with(words);
    nmkObjectId object;
    const nmkRefToObjectId reference = object.create_reference();
    Accessor().reseat(object, handle);
    EXPECT_EQ(object.get_uid(), handle.get_uid());
    EXPECT_EQ(table().size(), 0);
    EXPECT_EQ(reference.is_valid(), 1);
}

TEST(nmkObjectIdAccessor, making_valid_copies_a_value_for_all_that_share_it) {
    nmkObjectId object;
    const nmkRefToObjectId reference = object.create_reference();
    Accessor().invalidate(object);
    EXPECT_EQ(reference.is_valid(), 0);
    const nmkUniqueIdPtr value = handle_with(words);
    EXPECT_EQ(serials_spent([&] { Accessor().make_valid(object, value.get_uid()); }), 0);
    EXPECT_EQ(words_of(*reference.get_uid()), words);
    EXPECT_EQ(object.is_target_of(reference), 1);
}

TEST(nmkObjectIdAccessor, making_valid_with_an_invalid_value_makes_it_invalid) {
    nmkObjectId object;
    Accessor().make_valid(object, handle_with(invalid_words).get_uid());
    EXPECT_EQ(object.is_valid(), 0);
    object.mutate();
    Accessor().make_valid(object, nullptr);
    EXPECT_EQ(object.is_valid(), 0);
}

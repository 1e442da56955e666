#include <gtest/gtest.h>
#include <nmktoolbox/uniqueid/nmkObjectId.h>
#include <nmktoolbox/uniqueid/nmkUniqueIdTable.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "uniqueid/identifier_samples.h"

using namespace identifier_samples;

namespace {

// Opens the copying that tables forbid.
struct CopyingTable : nmkUniqueIdTable {
    CopyingTable() = default;
    CopyingTable(const CopyingTable& other) : nmkUniqueIdTable(other) {}
    CopyingTable& operator=(const CopyingTable& other) {
        nmkUniqueIdTable::operator=(other);
        return *this;
    }
};

const nmkUniqueIdPtr& nil() { return nmkUniqueIdPtrcoSet::nil(); }

}  // namespace

TEST(nmkUniqueIdTable, is_made_with_16_slots_at_the_first_addition) {
    nmkUniqueIdTable table;
    EXPECT_EQ(table.arr_size(), 0);
    table.add(handle_with({1, 2, 3, 4}));
    EXPECT_EQ(table.arr_size(), 16);
}

TEST(nmkUniqueIdTable, the_sessions_table_starts_empty_after_it_was_deleted) {
    const FreshSession session;
    nmkUniqueIdTable* const table = nmkUniqueIdTable::session_entities();
    EXPECT_EQ(nmkUniqueIdTable::session_entities(), table);
    table->add(handle_with({1, 2, 3, 4}));
    nmkUniqueIdTable::delete_session_entities();
    nmkUniqueIdTable::delete_session_entities();
    EXPECT_EQ(nmkUniqueIdTable::session_entities()->size(), 0);
}

TEST(nmkUniqueIdTable, an_equal_member_stays_and_the_new_one_is_dropped) {
    nmkUniqueIdTable table;
    const nmkUniqueIdPtr first = handle_with({1, 2, 3, 4});
    const nmkUniqueIdPtr second = handle_with({1, 2, 3, 4});
    table.add(first);
    table.add(second);
    EXPECT_EQ(table.size(), 1);
    EXPECT_EQ(table.find(second).get_uid(), first.get_uid());
    EXPECT_EQ(table.member(second), 1);
}

TEST(nmkUniqueIdTable, takes_references_as_it_takes_handles) {
    nmkUniqueIdTable table;
    nmkObjectId object;
    nmkRefToObjectId reference = object.create_reference();
    EXPECT_EQ(table.member(reference), 0);
    table.add(reference);
    EXPECT_EQ(table.member(reference), 1);
    EXPECT_EQ(table.find(reference).get_uid(), object.get_uid());
}

TEST(nmkUniqueIdTable, finding_a_stranger_hands_out_nil_itself) {
    nmkUniqueIdTable table;
    const nmkUniqueIdPtr stranger = handle_with({1, 2, 3, 4});
    EXPECT_EQ(table.find(stranger).get_uid(), nil().get_uid());
    EXPECT_EQ(table.find(stranger).is_valid(), 0);
    EXPECT_EQ(table.get_ref(stranger).get_uid(), nil().get_uid());
    EXPECT_EQ(table.size(), 0);
}

TEST(nmkUniqueIdTable, gives_a_reference_that_shares_the_member) {
    nmkUniqueIdTable table;
    const nmkUniqueIdPtr handle = handle_with({1, 2, 3, 4});
    table.add(handle);
    EXPECT_EQ(table.get_ref(handle_with({1, 2, 3, 4})).get_uid(), handle.get_uid());
}

TEST(nmkUniqueIdTable, deleting_a_member_leaves_the_others) {
    nmkUniqueIdTable table;
    table.add(handle_with({1, 2, 3, 4}));
    table.add(handle_with({1, 2, 3, 5}));
    table.delete_member(handle_with({1, 2, 3, 4}));
    table.delete_member(handle_with({9, 9, 9, 9}));
    EXPECT_EQ(table.size(), 1);
    EXPECT_EQ(table.member(handle_with({1, 2, 3, 5})), 1);
}

TEST(nmkUniqueIdTable, an_invalid_handle_is_not_a_member_where_all_members_are_valid) {
    nmkUniqueIdTable table;
    for (std::uint32_t i = 0; i < 100; ++i) table.add(handle_with({i, 2, 3, 4}));
    EXPECT_EQ(table.member(nmkUniqueIdPtr()), 0);
    EXPECT_EQ(table.member(nmkRefToObjectId()), 0);
    EXPECT_EQ(table.member(handle_with({50, 1, 3, 4})), 0);
}

TEST(nmkUniqueIdTable, a_member_whose_owner_died_stays_and_hides_no_other) {
    nmkUniqueIdTable table;
    std::vector<std::unique_ptr<nmkObjectId>> owners;
    for (int i = 0; i < 200; ++i) {
        owners.push_back(std::make_unique<nmkObjectId>());
        table.add(owners.back()->create_reference());
    }
    for (std::size_t i = 0; i < owners.size(); i += 2) owners[i].reset();
    EXPECT_EQ(table.size(), 200);
    for (std::size_t i = 1; i < owners.size(); i += 2) {
        EXPECT_EQ(table.member(owners[i]->create_reference()), 1) << i;
    }
}

TEST(nmkUniqueIdTable, a_member_keeps_its_identifier_alive) {
    nmkUniqueIdTable table;
    {
        const nmkObjectId object;
        nmkUniqueIdPtr handle = handle_with({1, 2, 3, 4});
        table.add(handle);
    }
    EXPECT_EQ(table.find(handle_with({1, 2, 3, 4})).is_valid(), 1);
}

TEST(nmkUniqueIdTable, a_member_renamed_in_place_is_not_found_by_its_old_value) {
    nmkUniqueIdTable table;
    nmkUniqueIdPtr loaded = handle_with({1, 2, 3, 4});
    const nmkUniqueIdPtr other = handle_with({5, 6, 7, 8});
    table.add(loaded);
    table.add(other);
    loaded.rename_member();
    EXPECT_EQ(table.member(handle_with({1, 2, 3, 4})), 0);
    EXPECT_EQ(table.member(other), 1);
    EXPECT_EQ(table.size(), 2);
}

TEST(nmkUniqueIdTable, a_fresh_member_renamed_in_place_is_found_by_its_new_value) {
    nmkUniqueIdTable table;
    nmkUniqueIdPtr fresh(nmk_ptr_claim, nmkUniqueId::create());
    table.add(fresh);
    fresh.rename_member();
    EXPECT_EQ(table.member(fresh), 1);
}

TEST(nmkUniqueIdTable, loaded_members_renamed_in_place_are_in_wrong_slots_until_all_are_renamed) {
    nmkUniqueIdTable table;
    std::vector<nmkUniqueIdPtr> loaded;
    for (std::uint32_t i = 0; i < 1000; ++i) {
        loaded.push_back(handle_with({i, 2, 3, 4}));
        table.add(loaded.back());
    }
    for (nmkUniqueIdPtr& one : loaded) one.rename_member();
    const auto is_found = [&](const nmkUniqueIdPtr& one) { return table.member(one) == 1; };
    EXPECT_LT(std::count_if(loaded.begin(), loaded.end(), is_found), 1000);
    table.rename_all_members();
    EXPECT_EQ(std::count_if(loaded.begin(), loaded.end(), is_found), 1000);
    EXPECT_EQ(table.size(), 1000);
}

TEST(nmkUniqueIdTable, renaming_all_members_renames_each_in_place) {
    nmkUniqueIdTable table;
    const nmkUniqueIdPtr loaded = handle_with({1, 2, 3, 4});
    nmkObjectId object;
    const nmkRefToObjectId reference = object.create_reference();
    table.add(loaded);
    table.add(reference);
    const int slots = table.arr_size();
    const utString before = object.get_uid()->hex_string();
    table.rename_all_members();
    EXPECT_EQ(table.arr_size(), slots);
    EXPECT_EQ(table.size(), 2);
    EXPECT_EQ(table.member(handle_with({1, 2, 3, 4})), 0);
    EXPECT_EQ(table.member(loaded), 1);
    EXPECT_NE(words_of(*loaded)[0], 1U);
    EXPECT_NE(object.get_uid()->hex_string(), before);
    EXPECT_EQ(object.is_target_of(reference), 1);
    EXPECT_EQ(table.find(reference).get_uid(), object.get_uid());
}

TEST(nmkUniqueIdTable, renaming_all_members_makes_one_whose_owner_died_valid) {
    nmkUniqueIdTable table;
    nmkRefToObjectId reference;
    {
        nmkObjectId object;
        reference = object.create_reference();
        table.add(reference);
    }
    EXPECT_EQ(reference.is_valid(), 0);
    table.rename_all_members();
    EXPECT_EQ(reference.is_valid(), 1);
    EXPECT_EQ(table.member(reference), 1);
    EXPECT_EQ(table.size(), 1);
}

TEST(nmkUniqueIdTable, a_copy_is_empty_and_an_assignment_does_nothing) {
    CopyingTable table;
    table.add(handle_with({1, 2, 3, 4}));
    const CopyingTable copy(table);
    EXPECT_EQ(copy.size(), 0);
    CopyingTable other;
    other.add(handle_with({5, 6, 7, 8}));
    other = table;
    EXPECT_EQ(other.size(), 1);
    EXPECT_EQ(other.member(handle_with({5, 6, 7, 8})), 1);
    EXPECT_EQ(table.size(), 1);
}

TEST(nmkUniqueIdTable, agrees_with_a_map_of_texts_over_generated_work) {
    std::mt19937 generator(12);
    const auto random = [&] { return static_cast<std::uint32_t>(generator()); };
    nmkUniqueIdTable table;
    std::map<std::string, const nmkUniqueId*> plain;
    for (int step = 0; step < 20000; ++step) {
        const Words words = {random() % 3, 5 + random() % 4, random() % 40, random() % 2};
        const nmkUniqueIdPtr handle = handle_with(words);
        if (random() % 3 != 0) {
            table.add(handle);
            plain.emplace(hex_of(words), handle.get_uid());
        } else {
            table.delete_member(handle);
            plain.erase(hex_of(words));
        }
        const auto found = plain.find(hex_of(words));
        ASSERT_EQ(table.find(handle).get_uid(),
                  found != plain.end() ? found->second : nil().get_uid());
        ASSERT_EQ(static_cast<std::size_t>(table.size()), plain.size());
    }
}

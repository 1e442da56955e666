#include <gtest/gtest.h>
#include <ncamcontainer/co_hash.h>
#include <nmktoolbox/uniqueid/nmkUniqueId.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <ctime>
#include <limits>
#include <memory>
#include <new>
#include <ostream>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "archive_failure.h"
#include "uniqueid/identifier_samples.h"

using namespace identifier_samples;

namespace {

using Owned = std::unique_ptr<nmkUniqueId>;

Owned made() { return Owned(nmkUniqueId::create()); }
Owned made_invalid() { return Owned(nmkUniqueId::create(nmk_ptr_invalid)); }
Owned made_of(const Words& words) {
    Owned identifier = made();
    identifier->become(hex_of(words).c_str());
    return identifier;
}

// The test that runs in a process of its own: nothing has spent a serial before.
int first_serial_of_a_process() {
    const Owned first = made();
    return static_cast<int>(words_of(*first)[2]);
}

const int serial_at_start = first_serial_of_a_process();

}  // namespace

TEST(nmkUniqueId, the_first_of_a_process_has_serial_1) {
    // Made while this program was loaded: no static of the library has spent one.
    EXPECT_EQ(serial_at_start, 1);
}

TEST(nmkUniqueId, is_made_of_the_hash_of_its_address_the_time_and_the_next_serial) {
    const int before = last_serial();
    const auto from = std::time(nullptr);
    const Owned identifier = made();
    const auto to = std::time(nullptr);
    const Words words = words_of(*identifier);
    const nmkUniqueId* const address = identifier.get();
    EXPECT_EQ(words[0], co_hash(&address, sizeof address));
    EXPECT_GE(words[1], static_cast<std::uint32_t>(from));
    EXPECT_LE(words[1], static_cast<std::uint32_t>(to));
    EXPECT_EQ(words[2], static_cast<std::uint32_t>(before + 1));
    EXPECT_EQ(words[3], 0U);
    EXPECT_EQ(identifier->is_valid(), 1);
    EXPECT_EQ(identifier->get_hash_val(), words[0]);
}

TEST(nmkUniqueId, word_0_does_not_hash_the_bytes_at_the_address) {
    const Owned identifier = made();
    const Words words = words_of(*identifier);
    identifier->become(made_of({1, 2, 3, 4}).get());
    identifier->update();
    EXPECT_EQ(words_of(*identifier)[0], words[0]);
}

TEST(nmkUniqueId, an_invalid_one_has_stamp_1_and_a_hash_and_serial_of_its_own) {
    const Owned first = made_invalid();
    const Owned second = made_invalid();
    EXPECT_EQ(first->is_valid(), 0);
    EXPECT_EQ(words_of(*first)[1], 1U);
    EXPECT_NE(words_of(*first)[0], words_of(*second)[0]);
    EXPECT_EQ(words_of(*first)[2] + 1, words_of(*second)[2]);
}

TEST(nmkUniqueId, made_twice_at_one_address_within_a_second_differs_only_in_its_serial) {
    const ScopedStamp stamp(77);
    const Owned identifier = made();
    const Words before = words_of(*identifier);
    identifier->update();
    const Words after = words_of(*identifier);
    EXPECT_EQ(after, (Words{before[0], 77, before[2] + 1, 0}));
}

TEST(nmkUniqueId, one_that_was_loaded_takes_another_word_0_with_update) {
    const Owned identifier = made_of({0x12345678, 2, 3, 4});
    EXPECT_EQ(identifier->get_hash_val(), 0x12345678UL);
    identifier->update();
    EXPECT_NE(identifier->get_hash_val(), 0x12345678UL);
}

TEST(nmkUniqueId, invalidating_one_that_was_loaded_generates_all_its_words_anew) {
    const Owned identifier = made_of({0x12345678, 2, 3, 4});
    const nmkUniqueId* const address = identifier.get();
    const int before = last_serial();
    identifier->set_invalid();
    EXPECT_EQ(words_of(*identifier), (Words{co_hash(&address, sizeof address), 1,
                                            static_cast<std::uint32_t>(before + 1), 0}));
}

TEST(nmkUniqueId, updating_and_invalidating_may_be_repeated) {
    const Owned identifier = made();
    identifier->set_invalid();
    identifier->set_invalid();
    EXPECT_EQ(identifier->is_valid(), 0);
    identifier->update();
    identifier->update();
    EXPECT_EQ(identifier->is_valid(), 1);
}

TEST(nmkUniqueId, serials_are_spent_as_documented) {
    const Owned identifier = made();
    const std::string good = hex_of({1, 2, 3, 4});
    EXPECT_EQ(serials_spent([] { made(); }), 1);
    EXPECT_EQ(serials_spent([] { made_invalid(); }), 1);
    EXPECT_EQ(serials_spent([&] { identifier->update(); }), 1);
    EXPECT_EQ(serials_spent([&] { identifier->set_invalid(); }), 1);
    EXPECT_EQ(serials_spent([&] { identifier->become("no identifier"); }), 1);
    EXPECT_EQ(serials_spent([&] { identifier->become(good.c_str()); }), 0);
    EXPECT_EQ(serials_spent([&] { Owned copy(nmkUniqueId::create(identifier.get())); }), 0);
    EXPECT_EQ(serials_spent(
                  [&] { EXPECT_EQ(words_of(nmkUniqueId(*identifier)), words_of(*identifier)); }),
              0);
}

TEST(nmkUniqueId, a_stamp_of_1_gives_an_invalid_identifier) {
    const ScopedStamp stamp(1);
    EXPECT_EQ(made()->is_valid(), 0);
}

TEST(nmkUniqueId, stays_unique_while_the_clock_steps_back) {
    const ScopedStamp stamp(1000);
    std::set<std::string> texts;
    for (int step = 0; step < 100; ++step) {
        ScopedStamp::stamp() = 1000 - step;
        texts.insert(made()->hex_string().c_str());
    }
    EXPECT_EQ(texts.size(), 100U);
}

TEST(nmkUniqueId, the_serial_wraps_at_the_largest_int) {
    const int before = last_serial();
    last_serial() = std::numeric_limits<int>::max() - 1;
    const Owned largest = made();
    const Owned smallest = made();
    last_serial() = before;
    EXPECT_EQ(words_of(*largest)[2], 0x7FFFFFFFU);
    EXPECT_EQ(words_of(*smallest)[2], 0x80000000U);
}

TEST(nmkUniqueId, eight_threads_never_make_the_same_serial) {
    constexpr int per_thread = 5000;
    std::vector<std::vector<std::uint32_t>> serials(8);
    std::vector<std::thread> threads;
    for (auto& of_thread : serials) {
        threads.emplace_back([&of_thread] {
            for (int i = 0; i < per_thread; ++i) of_thread.push_back(words_of(*made())[2]);
        });
    }
    for (std::thread& thread : threads) thread.join();
    std::set<std::uint32_t> all;
    for (const auto& of_thread : serials) all.insert(of_thread.begin(), of_thread.end());
    EXPECT_EQ(all.size(), 8U * per_thread);
}

TEST(nmkUniqueId, may_be_made_on_one_thread_and_dropped_on_another) {
    std::vector<Owned> all;
    std::set<const nmkUniqueId*> addresses;
    for (int round = 0; round < 20; ++round) {
        std::thread([&] {
            for (int i = 0; i < 200; ++i) all.push_back(made());
        }).join();
        addresses.clear();
        for (const Owned& one : all) addresses.insert(one.get());
        EXPECT_EQ(addresses.size(), 200U);
        std::thread([&] { all.resize(100); }).join();
        all.clear();
    }
}

TEST(nmkUniqueId, a_forked_process_makes_equal_ones_until_the_host_sets_its_stamp) {
    const ScopedStamp stamp(500);
    int to_parent[2] = {};
    ASSERT_EQ(::pipe(to_parent), 0);
    alignas(nmkUniqueId) unsigned char place[sizeof(nmkUniqueId)];
    auto* const identifier = new (place) nmkUniqueId(*made());
    const pid_t child = ::fork();
    if (child == 0) {
        char texts[2][33];
        identifier->update();
        identifier->hex_string(texts[0]);
        ScopedStamp::stamp() = 501;
        identifier->update();
        identifier->hex_string(texts[1]);
        ::_exit(::write(to_parent[1], texts, sizeof texts) == sizeof texts ? 0 : 1);
    }
    char of_child[2][33] = {};
    EXPECT_EQ(::read(to_parent[0], of_child, sizeof of_child), static_cast<ssize_t>(66));
    int status = 0;
    ::waitpid(child, &status, 0);
    ::close(to_parent[0]);
    ::close(to_parent[1]);
    identifier->update();
    EXPECT_STREQ(identifier->hex_string().c_str(), of_child[0]);
    identifier->update();
    EXPECT_STRNE(identifier->hex_string().c_str(), of_child[1]);
}

TEST(nmkUniqueId, the_stamps_offered_are_the_time_and_a_number_drawn_once_plus_the_time) {
    const Owned identifier = made();
    EXPECT_EQ(e_ptrm_uid_stamp, &nmkUniqueId::get_time);
    const auto now = static_cast<std::int32_t>(std::time(nullptr));
    EXPECT_LE(identifier->get_time() - now, 1);
    const int other = identifier->get_other();
    EXPECT_GE(other, 196992000);
    EXPECT_LT(other, 196992000 + 2 * 10000000);
    // The seed stays, so that only the seconds count.
    EXPECT_LE(identifier->get_other() - other, 1);
}

TEST(nmkUniqueId, an_alternative_stamp_serves_new_identifiers) {
    const auto before = e_ptrm_uid_stamp;
    e_ptrm_uid_stamp = &nmkUniqueId::get_other;
    const Owned identifier = made();
    e_ptrm_uid_stamp = before;
    EXPECT_GE(words_of(*identifier)[1], 196992000U);
    EXPECT_LT(words_of(*identifier)[1], 216992000U);
}

TEST(nmkUniqueId, copies_have_all_sixteen_bytes) {
    const Owned identifier = made_of({1, 2, 3, 4});
    const Owned copy(nmkUniqueId::create(identifier.get()));
    EXPECT_EQ(words_of(*copy), (Words{1, 2, 3, 4}));
    EXPECT_NE(copy->is_equal(identifier.get()), 0);
    Owned target = made();
    target->become(identifier.get());
    EXPECT_EQ(words_of(*target), (Words{1, 2, 3, 4}));
}

TEST(nmkUniqueId, becoming_null_makes_it_invalid) {
    Owned identifier = made();
    identifier->become(static_cast<const nmkUniqueId*>(nullptr));
    EXPECT_EQ(identifier->is_valid(), 0);
    identifier->update();
    identifier->become(static_cast<const char*>(nullptr));
    EXPECT_EQ(identifier->is_valid(), 0);
    const Owned copy(nmkUniqueId::create(static_cast<const nmkUniqueId*>(nullptr)));
    EXPECT_EQ(copy->is_valid(), 0);
}

TEST(nmkUniqueId, two_invalid_ones_are_equal_and_yet_ordered) {
    const Owned first = made_invalid();
    const Owned second = made_invalid();
    EXPECT_EQ(first->is_equal(second.get()), 1);
    EXPECT_EQ((*first < *second) + (*second < *first), 1);
}

TEST(nmkUniqueId, a_valid_one_never_equals_an_invalid_one_or_null) {
    const Owned valid = made_of({1, 2, 3, 4});
    const Owned invalid = made_of({1, 1, 3, 4});
    EXPECT_EQ(valid->is_equal(invalid.get()), 0);
    EXPECT_EQ(invalid->is_equal(valid.get()), 0);
    EXPECT_EQ(valid->is_equal(nullptr), 0);
}

namespace {

struct PairCase {
    const char* name;
    Words a;
    Words b;
    bool is_equal;
    bool is_less;
};

std::ostream& operator<<(std::ostream& stream, const PairCase& one) { return stream << one.name; }

class nmkUniqueId_pair : public testing::TestWithParam<PairCase> {};

}  // namespace

TEST_P(nmkUniqueId_pair, is_compared) {
    const Owned a = made_of(GetParam().a);
    const Owned b = made_of(GetParam().b);
    EXPECT_EQ(a->is_equal(b.get()), GetParam().is_equal ? 1 : 0);
    EXPECT_EQ(*a < *b, GetParam().is_less ? 1 : 0);
    EXPECT_EQ(*a < *a, 0);
}

INSTANTIATE_TEST_SUITE_P(
    cases, nmkUniqueId_pair,
    testing::Values(
        PairCase{"equal_words_are_equal_and_not_less", {5, 6, 7, 8}, {5, 6, 7, 8}, true, false},
        PairCase{"word_0_decides_first", {4, 9, 9, 9}, {5, 0, 0, 0}, false, true},
        PairCase{"word_1_decides_then", {5, 6, 9, 9}, {5, 7, 0, 0}, false, true},
        PairCase{"word_2_decides_then", {5, 6, 8, 9}, {5, 6, 7, 0}, false, false},
        PairCase{"word_3_decides_last", {5, 6, 7, 8}, {5, 6, 7, 9}, false, true},
        PairCase{"word_0_is_compared_as_signed",
                 {0x80000000, 6, 7, 8},
                 {0x7FFFFFFF, 6, 7, 8},
                 false,
                 true},
        PairCase{"word_3_is_compared_as_signed", {5, 6, 7, 0xFFFFFFFF}, {5, 6, 7, 0}, false, true},
        PairCase{
            "an_invalid_one_is_ordered_by_its_words", {5, 1, 7, 8}, {5, 6, 7, 8}, false, true}),
    [](const auto& one) { return std::string(one.param.name); });

TEST(nmkUniqueId, its_text_has_32_lower_case_digits) {
    const Owned identifier = made_of({0x0A, 0xBCDEF012, 0xFFFFFFFF, 0});
    EXPECT_EQ(identifier->hex_string(), utString("0000000abcdef012ffffffff00000000"));
    utString text;
    identifier->hex_string(text);
    EXPECT_EQ(text, identifier->hex_string());
    std::vector<char> exact(33, 'x');
    identifier->hex_string(exact.data());
    EXPECT_STREQ(exact.data(), text.c_str());
}

TEST(nmkUniqueId, a_text_with_stamp_1_is_read_and_gives_an_invalid_identifier) {
    const char* const text = "0123456700000001000000ff00000010";
    const Owned identifier = made();
    EXPECT_EQ(serials_spent([&] { identifier->become(text); }), 0);
    EXPECT_EQ(identifier->is_valid(), 0);
    EXPECT_EQ(identifier->hex_string(), utString(text));
}

namespace {

struct TextCase {
    const char* name;
    std::string text;
};

std::ostream& operator<<(std::ostream& stream, const TextCase& one) { return stream << one.name; }

class nmkUniqueId_bad_text : public testing::TestWithParam<TextCase> {};

}  // namespace

TEST_P(nmkUniqueId_bad_text, gives_an_invalid_identifier_with_a_fresh_serial) {
    const Owned identifier = made();
    const int before = last_serial();
    identifier->become(GetParam().text.c_str());
    EXPECT_EQ(identifier->is_valid(), 0);
    EXPECT_EQ(words_of(*identifier)[2], static_cast<std::uint32_t>(before + 1));
}

INSTANTIATE_TEST_SUITE_P(
    cases, nmkUniqueId_bad_text,
    testing::Values(TextCase{"the_empty_text", ""},
                    TextCase{"31_digits", "0123456789abcdef0123456789abcde"},
                    TextCase{"33_digits", "0123456789abcdef0123456789abcdef0"},
                    TextCase{"a_very_long_text", std::string(100000, '0')},
                    TextCase{"capital_digits", "0123456789ABCDEF0123456789ABCDEF"},
                    TextCase{"one_capital_digit", "0123456789abcdeF0123456789abcdef"},
                    TextCase{"a_letter_that_is_not_a_digit", "g123456789abcdef0123456789abcdef"},
                    TextCase{"a_blank", "0123456789abcdef 123456789abcdef"},
                    TextCase{"bytes_above_127", std::string(32, '\xFF')},
                    TextCase{"control_characters", std::string(32, '\x01')}),
    [](const auto& one) { return std::string(one.param.name); });

TEST(nmkUniqueId, every_text_of_digits_survives_and_no_other) {
    std::string text = hex_of({0x89ABCDEF, 0x01234567, 0xFEDCBA98, 0x76543210});
    const Owned identifier = made();
    for (std::size_t place = 0; place < text.size(); ++place) {
        const char before = text[place];
        for (int code = 1; code < 256; ++code) {
            text[place] = static_cast<char>(code);
            identifier->become(text.c_str());
            const bool is_digit = std::strchr("0123456789abcdef", code) != nullptr;
            ASSERT_EQ(identifier->is_valid() != 0, is_digit) << text;
            if (is_digit) {
                ASSERT_EQ(identifier->hex_string().view(), text);
            }
        }
        text[place] = before;
    }
}

TEST(nmkUniqueId, its_record_has_18_bytes_with_format_2) {
    const Owned identifier = made_of({0x04030201, 0x08070605, 0x0C0B0A09, 0x100F0E0D});
    EXPECT_EQ(record_of(*identifier),
              (Bytes{1, 2, 3, 4, 5, 6, 7, 8, 2, 0, 9, 10, 11, 12, 13, 14, 15, 16}));
}

TEST(nmkUniqueId, a_loaded_one_keeps_the_word_0_of_the_session_that_made_it) {
    const Owned identifier = made();
    EXPECT_EQ(load_record(*identifier, record_with({0xAAAAAAAA, 2, 3, 4})), 0U);
    EXPECT_EQ(words_of(*identifier), (Words{0xAAAAAAAA, 2, 3, 4}));
}

namespace {

struct FormatCase {
    const char* name;
    std::uint16_t format;
    bool has_serial;
};

std::ostream& operator<<(std::ostream& stream, const FormatCase& one) { return stream << one.name; }

class nmkUniqueId_format : public testing::TestWithParam<FormatCase> {};

}  // namespace

TEST_P(nmkUniqueId_format, decides_where_a_record_ends) {
    Bytes bytes = record_with({5, 6, 7, 8});
    bytes[8] = static_cast<unsigned char>(GetParam().format & 0xFF);
    bytes[9] = static_cast<unsigned char>(GetParam().format >> 8);
    const Owned identifier = made();
    const std::size_t left = load_record(*identifier, bytes);
    EXPECT_EQ(left, GetParam().has_serial ? 0U : 8U);
    EXPECT_EQ(words_of(*identifier), GetParam().has_serial ? (Words{5, 6, 7, 8}) : (Words{5, 6}));
}

INSTANTIATE_TEST_SUITE_P(
    cases, nmkUniqueId_format,
    testing::Values(FormatCase{"format_0_ends_after_10_bytes", 0, false},
                    FormatCase{"format_1_ends_after_10_bytes_with_words_2_and_3_zero", 1, false},
                    FormatCase{"format_2_has_18_bytes", 2, true},
                    FormatCase{"format_3_is_read_as_2", 3, true},
                    FormatCase{"format_ffff_is_unsigned_and_read_as_2", 0xFFFF, true}),
    [](const auto& one) { return std::string(one.param.name); });

TEST(nmkUniqueId, every_prefix_of_a_record_throws_endOfFile_and_leaves_it_as_it_was) {
    for (const std::uint16_t format : {std::uint16_t{1}, std::uint16_t{2}}) {
        const Bytes whole = record_with({5, 6, 7, 8}, format);
        for (std::size_t size = 0; size < whole.size(); ++size) {
            const Bytes prefix(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            const Owned identifier = made_of({1, 2, 3, 4});
            EXPECT_EQ(cause_of([&] { load_record(*identifier, prefix); }),
                      CArchiveException::endOfFile);
            EXPECT_EQ(words_of(*identifier), (Words{1, 2, 3, 4}));
        }
    }
}

TEST(nmkUniqueId, is_created_from_an_archive) {
    const Bytes bytes = record_with({5, 6, 7, 8});
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load);
    const Owned identifier(nmkUniqueId::create(archive));
    EXPECT_EQ(words_of(*identifier), (Words{5, 6, 7, 8}));
    EXPECT_EQ(cause_of([&] { nmkUniqueId::create(archive); }), CArchiveException::endOfFile);
}

TEST(nmkUniqueId, creating_from_an_archive_that_stores_throws_writeOnly) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    EXPECT_EQ(cause_of([&] { nmkUniqueId::create(archive); }), CArchiveException::writeOnly);
}

// identifier_stream: compared with what the library's own archive stores and loads.
#include "commands/id/identifier_stream.h"

#include <gtest/gtest.h>
#include <mfc/CArchive.h>
#include <mfc/CMemFile.h>
#include <nmktoolbox/uniqueid.h>

#include <memory>
#include <random>
#include <vector>

namespace nmk_id {
namespace {

using Bytes = std::vector<unsigned char>;

struct ReadStream {
    std::vector<StoredObject> objects;
    std::optional<StreamStop> stop;
};

ReadStream read(std::span<const unsigned char> bytes) {
    ReadStream stream;
    stream.stop = read_identifier_stream(
        bytes, [&](const StoredObject& object) { stream.objects.push_back(object); });
    return stream;
}

Bytes archived(const std::vector<const CObject*>& objects) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    for (const CObject* object : objects) archive << object;
    archive.Close();
    return {file.bytes().begin(), file.bytes().end()};
}

// The text form of an object's identifier.
std::string text_of(const nmkUniqueId* identifier) {
    return std::string(identifier->hex_string().view());
}

Bytes bytes_of(std::initializer_list<int> values) {
    Bytes bytes;
    for (const int value : values) bytes.push_back(static_cast<unsigned char>(value));
    return bytes;
}

// A new object of a class with that name, with its record.
Bytes object_of_class(const std::string& name) {
    Bytes bytes = bytes_of({0xFF, 0xFF, 1, 0, static_cast<int>(name.size()), 0});
    bytes.insert(bytes.end(), name.begin(), name.end());
    const Bytes record = bytes_of({1, 0, 0, 0, 2, 0, 0, 0, 2, 0, 3, 0, 0, 0, 4, 0, 0, 0});
    bytes.insert(bytes.end(), record.begin(), record.end());
    return bytes;
}

Bytes joined(Bytes first, const Bytes& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

struct BadStream {
    const char* name;
    Bytes bytes;
    std::size_t offset;
    const char* message;
};

std::ostream& operator<<(std::ostream& out, const BadStream& stream) { return out << stream.name; }

class identifier_stream_stops : public testing::TestWithParam<BadStream> {};

const std::size_t after_one = object_of_class("nmkObjectId").size();

}  // namespace

TEST(identifier_stream, lists_identifiers_owners_and_references_as_they_are_stored) {
    nmkObjectId owner;
    const nmkRefToObjectId reference = owner.create_reference();
    const nmkUniqueIdPtr identifier;
    const ReadStream stream = read(archived({&owner, &reference, &identifier}));
    ASSERT_EQ(stream.objects.size(), 3U);
    EXPECT_FALSE(stream.stop);
    EXPECT_EQ(stream.objects[0].object_class, ObjectClass::owner);
    EXPECT_EQ(stream.objects[1].object_class, ObjectClass::reference);
    EXPECT_EQ(stream.objects[2].object_class, ObjectClass::identifier);
    EXPECT_EQ(text_of_words(stream.objects[0].words), text_of(owner.get_uid()));
    EXPECT_EQ(text_of_words(stream.objects[1].words), text_of(owner.get_uid()));
    EXPECT_EQ(text_of_words(stream.objects[2].words), text_of(identifier.get_uid()));
    EXPECT_TRUE(is_valid(stream.objects[0].words));
    EXPECT_FALSE(is_valid(stream.objects[2].words));
}

TEST(identifier_stream, shows_an_owner_that_was_stored_as_invalid_as_such) {
    struct Accessor : nmkObjectIdAccessor {
        using nmkObjectIdAccessor::invalidate;
    };
    nmkObjectId owner;
    Accessor().invalidate(owner);
    const ReadStream stream = read(archived({&owner}));
    ASSERT_EQ(stream.objects.size(), 1U);
    EXPECT_EQ(text_of_words(stream.objects[0].words), text_of(owner.get_uid()));
    EXPECT_FALSE(is_valid(stream.objects[0].words));
}

TEST(identifier_stream, spends_no_serial_and_enters_nothing_in_the_session) {
    nmkObjectId owner;
    const Bytes bytes = archived({&owner});
    const std::unique_ptr<nmkUniqueId> before(nmkUniqueId::create());
    const int size_before = nmkUniqueIdTable::session_entities()->size();
    read(bytes);
    const std::unique_ptr<nmkUniqueId> after(nmkUniqueId::create());
    EXPECT_EQ(words_of_text(text_of(after.get()))->serial,
              words_of_text(text_of(before.get()))->serial + 1);
    EXPECT_EQ(nmkUniqueIdTable::session_entities()->size(), size_before);
    nmkUniqueIdTable::delete_session_entities();
}

TEST(identifier_stream, has_the_offsets_of_objects_and_of_their_records) {
    nmkObjectId first, second;
    const ReadStream stream = read(archived({&first, nullptr, &second, &first}));
    ASSERT_EQ(stream.objects.size(), 4U);
    EXPECT_EQ(stream.objects[0].offset, 0U);
    EXPECT_EQ(stream.objects[0].record_offset, 17U);  // behind the class
    EXPECT_EQ(stream.objects[1].offset, 35U);
    EXPECT_EQ(stream.objects[1].object_class, ObjectClass::null);
    EXPECT_EQ(stream.objects[2].offset, 37U);
    EXPECT_EQ(stream.objects[2].record_offset, 39U);
    EXPECT_EQ(stream.objects[2].number, 2U);
    EXPECT_EQ(stream.objects[3].offset, 57U);
    EXPECT_TRUE(stream.objects[3].is_repeated);
    EXPECT_EQ(stream.objects[3].number, 1U);
}

TEST(identifier_stream, refuses_a_class_without_a_schema_as_the_archive_does) {
    Bytes bytes = object_of_class("nmkObjectId");
    bytes[2] = bytes[3] = 0xFF;
    const ReadStream stream = read(bytes);
    ASSERT_TRUE(stream.stop);
    EXPECT_EQ(stream.stop->message, "class nmkObjectId without a schema");
}

TEST(identifier_stream, reads_old_records_without_their_last_words) {
    Bytes bytes = object_of_class("nmkUniqueIdPtr");
    bytes.resize(bytes.size() - 8);
    bytes[bytes.size() - 2] = 1;
    const ReadStream stream = read(joined(bytes, {0, 0}));
    ASSERT_EQ(stream.objects.size(), 2U);
    EXPECT_EQ(stream.objects[0].words, (IdentifierWords{1, 2, 0, 0}));
    EXPECT_FALSE(stream.stop);
}

TEST(identifier_stream, reads_format_numbers_above_2_as_2) {
    Bytes bytes = object_of_class("nmkUniqueIdPtr");
    bytes[bytes.size() - 10] = 0xFF;
    bytes[bytes.size() - 9] = 0xFF;
    const ReadStream stream = read(bytes);
    ASSERT_EQ(stream.objects.size(), 1U);
    EXPECT_EQ(stream.objects[0].words, (IdentifierWords{1, 2, 3, 4}));
}

TEST(identifier_stream, reads_what_an_archive_stores_of_any_objects) {
    std::mt19937 random(20261122);
    for (int round = 0; round < 50; ++round) {
        std::vector<std::unique_ptr<CObject>> objects;
        std::vector<const CObject*> pointers;
        std::vector<std::string> texts;
        for (int i = 0; i < 60; ++i) {
            const nmkUniqueId* identifier = nullptr;
            if (random() % 3 == 0) {
                objects.push_back(std::make_unique<nmkObjectId>());
                identifier = static_cast<nmkObjectId&>(*objects.back()).get_uid();
            } else if (random() % 2 == 0) {
                objects.push_back(std::make_unique<nmkRefToObjectId>());
                identifier = static_cast<nmkRefToObjectId&>(*objects.back()).get_uid();
            } else {
                objects.push_back(std::make_unique<nmkUniqueIdPtr>());
                identifier = static_cast<nmkUniqueIdPtr&>(*objects.back()).get_uid();
            }
            pointers.push_back(objects.back().get());
            texts.push_back(text_of(identifier));
            if (random() % 5 == 0) pointers.push_back(nullptr);
            if (random() % 3 == 0) pointers.push_back(objects[random() % objects.size()].get());
        }
        const ReadStream stream = read(archived(pointers));
        EXPECT_FALSE(stream.stop);
        ASSERT_EQ(stream.objects.size(), pointers.size()) << "round " << round;
        for (std::size_t i = 0; i < pointers.size(); ++i) {
            const StoredObject& object = stream.objects[i];
            ASSERT_EQ(object.object_class == ObjectClass::null, pointers[i] == nullptr);
            if (pointers[i] == nullptr) continue;
            EXPECT_STREQ(name_of(object.object_class),
                         pointers[i]->GetRuntimeClass()->m_lpszClassName);
            ASSERT_EQ(objects[object.number - 1].get(), pointers[i]);
            if (!object.is_repeated) {
                EXPECT_EQ(text_of_words(object.words), texts[object.number - 1]);
            }
        }
    }
}

TEST(identifier_stream, reads_references_to_more_objects_than_a_short_tag_can_name) {
    std::vector<nmkUniqueIdPtr> handles(0x7FFE);
    nmkObjectId late;
    std::vector<const CObject*> pointers;
    for (const nmkUniqueIdPtr& handle : handles) pointers.push_back(&handle);
    pointers.insert(pointers.end(), {&late, &late, &handles.back(), &handles.front()});
    nmkObjectId later;
    pointers.push_back(&later);
    const ReadStream stream = read(archived(pointers));
    EXPECT_FALSE(stream.stop);
    ASSERT_EQ(stream.objects.size(), pointers.size());
    const StoredObject* const last = &stream.objects[0x7FFE];
    EXPECT_EQ(last[0].number, 0x7FFFU);
    EXPECT_TRUE(last[1].is_repeated);
    EXPECT_EQ(last[1].number, 0x7FFFU);
    EXPECT_EQ(last[2].number, 0x7FFEU);
    EXPECT_EQ(last[3].number, 1U);
    EXPECT_EQ(last[4].object_class, ObjectClass::owner);
    EXPECT_EQ(text_of_words(last[4].words), text_of(later.get_uid()));
}

TEST(identifier_stream, reads_every_prefix_up_to_the_object_that_is_cut) {
    nmkObjectId owner;
    const nmkRefToObjectId reference = owner.create_reference();
    const Bytes whole = archived({&owner, nullptr, &reference, &owner, &reference});
    const std::vector<StoredObject> all = read(whole).objects;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Bytes prefix(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        const ReadStream stream = read(prefix);
        const bool is_between =
            stream.objects.size() == all.size() || all[stream.objects.size()].offset == size;
        EXPECT_EQ(!stream.stop, is_between) << size;
        if (stream.stop) {
            EXPECT_EQ(stream.stop->offset, all[stream.objects.size()].offset) << size;
            EXPECT_EQ(stream.stop->message, "the data end within an object");
        }
    }
}

TEST_P(identifier_stream_stops, at_the_object_with_its_offset) {
    const ReadStream stream = read(GetParam().bytes);
    ASSERT_TRUE(stream.stop);
    EXPECT_EQ(stream.stop->offset, GetParam().offset);
    EXPECT_EQ(stream.stop->message, GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    of, identifier_stream_stops,
    testing::Values(
        BadStream{"another_class",
                  joined(object_of_class("nmkObjectId"), object_of_class("nmkWorkPlane")),
                  after_one,
                  "class \"nmkWorkPlane\"; expected nmkUniqueIdPtr, nmkObjectId or "
                  "nmkRefToObjectId"},
        BadStream{"a_class_name_with_other_bytes", object_of_class("nmk\n\xFFId"), 0,
                  "class \"nmk\\x0a\\xffId\"; expected nmkUniqueIdPtr, nmkObjectId or "
                  "nmkRefToObjectId"},
        BadStream{"no_class_name", bytes_of({0xFF, 0xFF, 1, 0, 0, 0}), 0,
                  "a class name of 0 characters; expected 1 to 255"},
        BadStream{"a_long_class_name", bytes_of({0xFF, 0xFF, 1, 0, 0, 1}), 0,
                  "a class name of 256 characters; expected 1 to 255"},
        BadStream{"an_object_that_was_not_stored", bytes_of({5, 0}), 0,
                  "a reference to number 5; the stream has 0 so far"},
        BadStream{"the_object_after_the_last", joined(object_of_class("nmkObjectId"), {3, 0}),
                  after_one, "a reference to number 3; the stream has 2 so far"},
        BadStream{"the_class_after_the_last", joined(object_of_class("nmkObjectId"), {3, 0x80}),
                  after_one, "a reference to number 3; the stream has 2 so far"},
        BadStream{"class_0", bytes_of({0, 0x80}), 0,
                  "a reference to number 0; the stream has 0 so far"},
        BadStream{"a_class_where_an_object_is_expected",
                  joined(object_of_class("nmkObjectId"), {1, 0}), after_one,
                  "number 1 is a class; expected an object"},
        BadStream{"an_object_where_a_class_is_expected",
                  joined(object_of_class("nmkObjectId"), {2, 0x80}), after_one,
                  "number 2 is an object; expected a class"},
        BadStream{"a_large_number", bytes_of({0xFF, 0x7F, 0xFF, 0xFF, 0xFF, 0x7F}), 0,
                  "a reference to number 2147483647; the stream has 0 so far"},
        BadStream{"a_large_class", bytes_of({0xFF, 0x7F, 0xFF, 0xFF, 0xFF, 0xFF}), 0,
                  "a reference to number 2147483647; the stream has 0 so far"}),
    [](const auto& stream) { return std::string(stream.param.name); });

}  // namespace nmk_id

// Objects and classes in an archive.
#include <gtest/gtest.h>
#include <mfc/CArchive.h>

#include <deque>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "archive_failure.h"
#include "stream_objects.h"

namespace {

using Bytes = std::vector<unsigned char>;

class CArchive_objects : public testing::Test {
  protected:
    ~CArchive_objects() override { StreamNode::delete_all(); }

    static CObject* load_one(const Bytes& bytes, const CRuntimeClass* requested = nullptr) {
        CObject* object = nullptr;
        load_bytes(bytes, [&](CArchive& archive) { object = archive.ReadObject(requested); });
        return object;
    }

    static StreamNode* load_node(const Bytes& bytes) {
        return dynamic_cast<StreamNode*>(load_one(bytes));
    }

    StreamClasses classes;
};

// The class of the example in the documentation of the format: 4 bytes of data.
class CItem : public CObject {
  public:
    CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    static CRuntimeClass* GetThisClass() {
        static CRuntimeClass of_this = {"CItem", sizeof(CItem), CObject::GetThisClass(), 2,
                                        CreateObject};
        return &of_this;
    }
    static CObject* CreateObject() {
        ++made;
        return new CItem;
    }
    void Serialize(CArchive& archive) override {
        if (archive.IsStoring()) {
            archive << value;
        } else {
            archive >> value;
        }
    }

    static inline int made = 0;
    std::uint32_t value = 0;
};

// Asks for its schema after the object within it was loaded.
class LateAsker : public CObject {
  public:
    CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    static CRuntimeClass* GetThisClass() {
        static CRuntimeClass of_this = {"LateAsker", sizeof(LateAsker), CObject::GetThisClass(),
                                        CRuntimeClass::versionable | 1, CreateObject};
        return &of_this;
    }
    static CObject* CreateObject() { return new LateAsker; }
    void Serialize(CArchive& archive) override {
        within.reset(archive.ReadObject(nullptr));
        schema = archive.GetObjectSchema();
    }

    std::unique_ptr<CObject> within;
    unsigned int schema = 0;
};

// A chain of `levels` nodes, each the only link of the one before.
Bytes chain_of_nodes(int levels) {
    const Bytes record = {0xFF, 0xFF, 3,   0,   10,  0,   'S', 't',
                          'r',  'e',  'a', 'm', 'N', 'o', 'd', 'e'};
    const Bytes data = {7, 0, 0, 0, 0, 0xFF, 0xFE, 0xFF, 0, 1, 0};
    Bytes bytes = record;
    for (int level = 0; level < levels; ++level) {
        if (level > 0) bytes.insert(bytes.end(), {0x01, 0x80});
        bytes.insert(bytes.end(), data.begin(), data.end());
    }
    bytes.insert(bytes.end(), {0, 0});
    return bytes;
}

StreamNode* make_chain(int levels) {
    StreamNode* first = new StreamNode(7);
    for (int level = 1; level < levels; ++level) {
        StreamNode* const above = new StreamNode(7);
        above->links.push_back(first);
        first = above;
    }
    return first;
}

int levels_of(const CObject* object) {
    int levels = 0;
    while (object != nullptr) {
        ++levels;
        const auto& links = dynamic_cast<const StreamNode&>(*object).links;
        object = links.empty() ? nullptr : links.front();
    }
    return levels;
}

}  // namespace

TEST_F(CArchive_objects, are_stored_as_documented) {
    CItem a;
    CItem b;
    a.value = 0xAAAAAAAA;
    b.value = 0xBBBBBBBB;
    const Bytes bytes = stored_bytes([&](CArchive& archive) {
        archive << &a << &b << &a << static_cast<const CObject*>(nullptr);
    });
    EXPECT_EQ(bytes,
              (Bytes{0xFF, 0xFF, 0x02, 0x00, 0x05, 0x00, 0x43, 0x49, 0x74, 0x65, 0x6D, 0xAA, 0xAA,
                     0xAA, 0xAA, 0x01, 0x80, 0xBB, 0xBB, 0xBB, 0xBB, 0x02, 0x00, 0x00, 0x00}));
    load_bytes(bytes, [](CArchive& archive) {
        const std::unique_ptr<CObject> first(archive.ReadObject(CItem::GetThisClass()));
        const std::unique_ptr<CObject> second(archive.ReadObject(CItem::GetThisClass()));
        EXPECT_EQ(static_cast<CItem&>(*first).value, 0xAAAAAAAA);
        EXPECT_EQ(static_cast<CItem&>(*second).value, 0xBBBBBBBB);
        EXPECT_EQ(archive.ReadObject(CItem::GetThisClass()), first.get());
        EXPECT_EQ(archive.ReadObject(CItem::GetThisClass()), nullptr);
    });
}

TEST_F(CArchive_objects, that_hold_themselves_and_each_other_come_back_so) {
    StreamNode first(1);
    StreamSpecialNode second;
    first.links = {&first, &second, nullptr, &second};
    second.links = {&first, &second};
    const Bytes bytes = stored_bytes([&](CArchive& archive) { archive << &first; });
    const StreamNode* const loaded = load_node(bytes);
    ASSERT_NE(loaded, nullptr);
    ASSERT_EQ(loaded->links.size(), 4U);
    const auto* const other = dynamic_cast<StreamSpecialNode*>(loaded->links[1]);
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(loaded->links[0], loaded);
    EXPECT_EQ(loaded->links[2], nullptr);
    EXPECT_EQ(loaded->links[3], other);
    EXPECT_EQ(other->links[0], loaded);
    EXPECT_EQ(other->links[1], other);
}

TEST_F(CArchive_objects, stored_again_after_loading_give_the_same_bytes) {
    StreamNode root(1);
    StreamSpecialNode special;
    StreamNode leaf(3);
    root.name = "root";
    root.wide_name = L"r\xF6\xF6t";
    root.links = {&special, &leaf, &root};
    special.links = {&leaf, nullptr};
    for (const int buffer_size : {1, 7, 4096}) {
        const Bytes bytes =
            stored_bytes([&](CArchive& archive) { archive << &root << &leaf; }, buffer_size);
        Bytes again;
        load_bytes(
            bytes,
            [&](CArchive& archive) {
                const CObject* const first = archive.ReadObject(nullptr);
                const CObject* const second = archive.ReadObject(nullptr);
                again = stored_bytes([&](CArchive& copy) { copy << first << second; });
            },
            buffer_size);
        EXPECT_EQ(again, bytes);
    }
}

TEST_F(CArchive_objects, of_a_derived_class_are_read_as_their_base_but_not_the_reverse) {
    StreamNode node;
    StreamSpecialNode special;
    const auto bytes_of = [](const CObject& object) {
        return stored_bytes([&](CArchive& archive) { archive << &object; });
    };
    EXPECT_NE(load_one(bytes_of(special), StreamNode::GetThisClass()), nullptr);
    EXPECT_EQ(cause_of([&] { load_one(bytes_of(node), StreamSpecialNode::GetThisClass()); }),
              CArchiveException::badClass);
}

TEST_F(CArchive_objects, of_another_class_than_asked_for_are_never_made) {
    const CRuntimeClassRegistration registration(CItem::GetThisClass());
    CItem item;
    const Bytes bytes = stored_bytes([&](CArchive& archive) { archive << &item; });
    CItem::made = 0;
    EXPECT_EQ(cause_of([&] { load_one(bytes, StreamNode::GetThisClass()); }),
              CArchiveException::badClass);
    EXPECT_EQ(CItem::made, 0);
}

TEST_F(CArchive_objects, that_came_before_are_checked_for_their_class_as_well) {
    StreamNode node;
    const Bytes bytes = stored_bytes([&](CArchive& archive) { archive << &node << &node; });
    load_bytes(bytes, [](CArchive& archive) {
        archive.ReadObject(nullptr);
        EXPECT_EQ(cause_of([&] { archive.ReadObject(StreamSpecialNode::GetThisClass()); }),
                  CArchiveException::badClass);
    });
}

TEST_F(CArchive_objects, of_the_class_asked_for_need_no_registration) {
    const CItem item;
    const Bytes bytes = stored_bytes([&](CArchive& archive) { archive << &item; });
    EXPECT_EQ(cause_of([&] { load_one(bytes); }), CArchiveException::badClass);
    const std::unique_ptr<CObject> loaded(load_one(bytes, CItem::GetThisClass()));
    EXPECT_NE(loaded, nullptr);
}

TEST_F(CArchive_objects, have_identifiers_of_2_bytes_up_to_7FFE_and_else_of_6) {
    std::deque<CItem> items(0x8001);
    const std::vector<std::pair<std::size_t, Bytes>> references = {
        {0x7FFD, {0xFD, 0x7F}},
        {0x7FFE, {0xFE, 0x7F}},
        {0x7FFF, {0xFF, 0x7F, 0xFF, 0x7F, 0, 0}},
        {0x8000, {0xFF, 0x7F, 0x00, 0x80, 0, 0}}};
    const auto write = [&](CArchive& archive) {
        for (const CItem& item : items) archive.MapObject(&item);
        for (const auto& [identifier, bytes] : references) archive << &items[identifier - 1];
    };
    Bytes expected;
    for (const auto& [identifier, bytes] : references) {
        expected.insert(expected.end(), bytes.begin(), bytes.end());
    }
    EXPECT_EQ(stored_bytes(write), expected);
    load_bytes(expected, [&](CArchive& archive) {
        for (const CItem& item : items) archive.MapObject(&item);
        for (const auto& [identifier, bytes] : references) {
            EXPECT_EQ(archive.ReadObject(nullptr), &items[identifier - 1]) << identifier;
        }
    });
}

TEST_F(CArchive_objects, of_a_class_above_7FFE_have_a_tag_of_6_bytes) {
    std::deque<CItem> entered(0x7FFE);
    CItem first;
    CItem second;
    first.value = 1;
    second.value = 2;
    const Bytes bytes = stored_bytes([&](CArchive& archive) {
        for (const CItem& item : entered) archive.MapObject(&item);
        archive << &first << &second;
    });
    EXPECT_EQ(bytes, (Bytes{0xFF, 0xFF, 2,    0,    5,    0,    'C', 'I',  't', 'e', 'm', 1, 0,
                            0,    0,    0xFF, 0x7F, 0xFF, 0x7F, 0,   0x80, 2,   0,   0,   0}));
    load_bytes(bytes, [&](CArchive& archive) {
        for (const CItem& item : entered) archive.MapObject(&item);
        const std::unique_ptr<CObject> one(archive.ReadObject(CItem::GetThisClass()));
        const std::unique_ptr<CObject> two(archive.ReadObject(CItem::GetThisClass()));
        EXPECT_EQ(static_cast<CItem&>(*two).value, 2U);
    });
}

TEST_F(CArchive_objects, classes_alone_use_up_an_identifier_only_when_they_are_new) {
    const Bytes bytes = stored_bytes([](CArchive& archive) {
        archive.WriteClass(StreamNode::GetThisClass());
        archive.WriteClass(CItem::GetThisClass());
        archive.WriteClass(StreamNode::GetThisClass());
        archive.SerializeClass(CItem::GetThisClass());
    });
    EXPECT_EQ(Bytes(bytes.end() - 4, bytes.end()), (Bytes{1, 0x80, 2, 0x80}));
    load_bytes(bytes, [](CArchive& archive) {
        unsigned int schema = 0;
        EXPECT_EQ(archive.ReadClass(nullptr, &schema), StreamNode::GetThisClass());
        EXPECT_EQ(schema, 3U);
        EXPECT_EQ(archive.ReadClass(CItem::GetThisClass(), &schema), CItem::GetThisClass());
        EXPECT_EQ(schema, 2U);
        EXPECT_EQ(archive.ReadClass(), StreamNode::GetThisClass());
        archive.SerializeClass(CItem::GetThisClass());
    });
}

TEST_F(CArchive_objects, classes_have_identifiers_of_2_bytes_up_to_7FFE_and_else_of_6) {
    std::deque<std::string> names;
    std::deque<CRuntimeClass> many;
    for (int i = 0; i < 0x8000; ++i) {
        names.push_back("class " + std::to_string(i));
        many.push_back({names.back().c_str(), 0, CObject::GetThisClass(), 1});
    }
    Bytes bytes = stored_bytes([&](CArchive& archive) {
        for (const CRuntimeClass& one : many) archive.WriteClass(&one);
        archive.WriteClass(&many[0x7FFD]);
        archive.WriteClass(&many[0x7FFE]);
    });
    EXPECT_EQ(Bytes(bytes.end() - 8, bytes.end()),
              (Bytes{0xFE, 0xFF, 0xFF, 0x7F, 0xFF, 0x7F, 0x00, 0x80}));
    load_bytes(bytes, [&](CArchive& archive) {
        for (const CRuntimeClass& one : many) ASSERT_EQ(archive.ReadClass(&one), &one);
        EXPECT_EQ(archive.ReadClass(), &many[0x7FFD]);
        EXPECT_EQ(archive.ReadClass(), &many[0x7FFE]);
    });
}

TEST_F(CArchive_objects, an_object_where_a_class_is_expected_throws_badIndex) {
    StreamNode node;
    const Bytes bytes = stored_bytes([&](CArchive& archive) { archive << &node << &node; });
    load_bytes(bytes, [](CArchive& archive) {
        archive.ReadObject(nullptr);
        EXPECT_EQ(cause_of([&] { archive.ReadClass(); }), CArchiveException::badIndex);
    });
}

TEST_F(CArchive_objects, entering_null_uses_up_no_identifier) {
    CItem item;
    const Bytes bytes = stored_bytes([&](CArchive& archive) {
        archive.MapObject(nullptr);
        archive.MapObject(&item);
        archive << &item;
    });
    EXPECT_EQ(bytes, (Bytes{1, 0}));
}

TEST_F(CArchive_objects, ask_for_their_schema_once_and_first) {
    StreamNode node;
    Bytes bytes = stored_bytes([&](CArchive& archive) { archive << &node << &node; });
    bytes[2] = 0x39;
    bytes[3] = 0x05;
    const StreamNode* const loaded = load_node(bytes);
    EXPECT_EQ(loaded->schema, 0x0539U);
    EXPECT_EQ(loaded->schema_at_the_end, 0xFFFFFFFFU);
}

TEST_F(CArchive_objects, of_a_class_that_came_before_have_the_schema_stored_with_it) {
    StreamNode first(1);
    StreamNode second(2);
    Bytes bytes = stored_bytes([&](CArchive& archive) { archive << &first << &second; });
    bytes[2] = 9;
    load_bytes(bytes, [](CArchive& archive) {
        archive.ReadObject(nullptr);
        EXPECT_EQ(dynamic_cast<StreamNode&>(*archive.ReadObject(nullptr)).schema, 9U);
    });
}

TEST_F(CArchive_objects, keep_their_schema_while_others_within_them_are_loaded) {
    const CRuntimeClassRegistration registration(LateAsker::GetThisClass());
    Bytes bytes = {0xFF, 0xFF, 8, 0, 9, 0, 'L', 'a', 't', 'e', 'A', 's', 'k', 'e', 'r'};
    const StreamNode within;
    const Bytes node = stored_bytes([&](CArchive& archive) { archive << &within; });
    bytes.insert(bytes.end(), node.begin(), node.end());
    const std::unique_ptr<CObject> loaded(load_one(bytes));
    EXPECT_EQ(dynamic_cast<LateAsker&>(*loaded).schema, 8U);
}

TEST_F(CArchive_objects, serialized_directly_have_no_schema_and_no_record) {
    StreamNode node(7);
    const Bytes bytes = stored_bytes([&](CArchive& archive) { node.Serialize(archive); });
    EXPECT_EQ(bytes, (Bytes{7, 0, 0, 0, 0, 0xFF, 0xFE, 0xFF, 0, 0, 0}));
    StreamNode loaded;
    load_bytes(bytes, [&](CArchive& archive) { loaded.Serialize(archive); });
    EXPECT_EQ(loaded.schema, 0xFFFFFFFFU);
    EXPECT_EQ(loaded.number, 7);
}

TEST_F(CArchive_objects, of_a_class_without_a_schema_cannot_be_stored) {
    const CMemFile file;
    Bytes bytes;
    EXPECT_EQ(cause_of([&] { bytes = stored_bytes([&](CArchive& archive) { archive << &file; }); }),
              CArchiveException::badSchema);
    EXPECT_TRUE(bytes.empty());
}

TEST_F(CArchive_objects, of_a_class_whose_name_no_reader_takes_cannot_be_stored) {
    const std::string names[] = {"", std::string(256, 'x'), "tab\t"};
    for (const std::string& name : names) {
        const CRuntimeClass unnameable = {name.c_str(), 0, CObject::GetThisClass(), 1};
        EXPECT_EQ(cause_of([&] {
                      stored_bytes([&](CArchive& archive) { archive.WriteClass(&unnameable); });
                  }),
                  CArchiveException::badClass);
    }
}

TEST_F(CArchive_objects, nested_200_deep_are_stored_and_loaded) {
    const StreamNode* const first = make_chain(200);
    const Bytes bytes = stored_bytes([&](CArchive& archive) { archive << first; });
    EXPECT_EQ(levels_of(load_one(bytes)), 200);
    EXPECT_EQ(levels_of(load_one(chain_of_nodes(200))), 200);
}

TEST_F(CArchive_objects, nested_as_deep_as_allowed_are_loaded_and_one_deeper_throws_badIndex) {
    EXPECT_EQ(levels_of(load_one(chain_of_nodes(CArchive::max_nesting))), CArchive::max_nesting);
    EXPECT_EQ(cause_of([] { load_one(chain_of_nodes(CArchive::max_nesting + 1)); }),
              CArchiveException::badIndex);
}

TEST_F(CArchive_objects, nested_400000_deep_throw_badIndex_when_loaded) {
    EXPECT_EQ(cause_of([] { load_one(chain_of_nodes(400000)); }), CArchiveException::badIndex);
    EXPECT_TRUE(StreamNode::living().empty());
}

TEST_F(CArchive_objects, nested_400000_deep_throw_generic_when_stored) {
    const StreamNode* const first = make_chain(400000);
    EXPECT_EQ(cause_of([&] { stored_bytes([&](CArchive& archive) { archive << first; }); }),
              CArchiveException::generic);
}

TEST_F(CArchive_objects, side_by_side_do_not_count_as_nested) {
    StreamNode root;
    for (int i = 0; i < 3 * CArchive::max_nesting; ++i) root.links.push_back(new StreamNode(i));
    const Bytes bytes = stored_bytes([&](CArchive& archive) { archive << &root; });
    EXPECT_EQ(load_node(bytes)->links.size(), root.links.size());
}

TEST_F(CArchive_objects, every_prefix_of_a_stream_throws_endOfFile_and_deletes_what_was_cut) {
    Bytes whole;
    {
        StreamNode root(1);
        StreamSpecialNode special;
        root.name = "root";
        root.links = {&special, &root, nullptr, &special};
        special.wide_name = L"w\x20AC";
        whole = stored_bytes([&](CArchive& archive) { archive << &root; });
    }
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Bytes prefix(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(cause_of([&] { load_one(prefix); }), CArchiveException::endOfFile) << size;
        // Only the special node can have been complete; the root was cut.
        EXPECT_LE(StreamNode::living().size(), 1U) << size;
        StreamNode::delete_all();
    }
    EXPECT_NE(load_one(whole), nullptr);
}

TEST_F(CArchive_objects, that_failed_to_load_cannot_be_referred_to) {
    Bytes bytes = chain_of_nodes(2);  // identifiers 1 for the class, 2 and 3 for the nodes
    bytes[bytes.size() - 2] = 9;      // the second node ends in a bad link
    bytes.insert(bytes.end(), {3, 0, 2, 0});
    load_bytes(bytes, [](CArchive& archive) {
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(cause_of([&] { archive.ReadObject(nullptr); }), CArchiveException::badIndex);
        }
    });
    EXPECT_TRUE(StreamNode::living().empty());
}

namespace {

struct ForgedCase {
    const char* name;
    Bytes
        behind_a_node;  // what follows a stored node, whose class has identifier 1 and which has 2
    CArchiveException::Cause cause;
};

std::ostream& operator<<(std::ostream& stream, const ForgedCase& one) { return stream << one.name; }

class CArchive_forged_object : public CArchive_objects,
                               public testing::WithParamInterface<ForgedCase> {};

Bytes class_record(std::uint16_t schema, const std::string& name) {
    Bytes bytes = {0xFF,
                   0xFF,
                   static_cast<unsigned char>(schema & 0xFF),
                   static_cast<unsigned char>(schema >> 8),
                   static_cast<unsigned char>(name.size() & 0xFF),
                   static_cast<unsigned char>(name.size() >> 8)};
    bytes.insert(bytes.end(), name.begin(), name.end());
    return bytes;
}

}  // namespace

TEST_P(CArchive_forged_object, throws_its_cause) {
    const CRuntimeClassRegistration without_schema(CMemFile::GetThisClass());
    StreamNode node;
    Bytes bytes = stored_bytes([&](CArchive& archive) { archive << &node; });
    bytes.insert(bytes.end(), GetParam().behind_a_node.begin(), GetParam().behind_a_node.end());
    load_bytes(bytes, [](CArchive& archive) {
        archive.ReadObject(nullptr);
        EXPECT_EQ(cause_of([&] { archive.ReadObject(nullptr); }), GetParam().cause);
    });
    EXPECT_EQ(StreamNode::living().size(), 2U);  // `node` and the one that was loaded
}

INSTANTIATE_TEST_SUITE_P(
    cases, CArchive_forged_object,
    testing::Values(
        ForgedCase{"an_object_above_the_highest", {3, 0}, CArchiveException::badIndex},
        ForgedCase{"a_class_above_the_highest", {3, 0x80}, CArchiveException::badIndex},
        ForgedCase{"class_0", {0, 0x80}, CArchiveException::badIndex},
        ForgedCase{"class_0_in_4_bytes", {0xFF, 0x7F, 0, 0, 0, 0x80}, CArchiveException::badIndex},
        ForgedCase{"a_class_for_an_object", {1, 0}, CArchiveException::badIndex},
        ForgedCase{"an_object_for_a_class", {2, 0x80}, CArchiveException::badIndex},
        ForgedCase{"the_highest_object_of_4_bytes",
                   {0xFF, 0x7F, 0xFF, 0xFF, 0xFF, 0x7F},
                   CArchiveException::badIndex},
        ForgedCase{"the_highest_class_of_4_bytes",
                   {0xFF, 0x7F, 0xFF, 0xFF, 0xFF, 0xFF},
                   CArchiveException::badIndex},
        ForgedCase{"an_unknown_class", class_record(1, "Unknown"), CArchiveException::badClass},
        ForgedCase{"a_class_without_a_name", class_record(1, ""), CArchiveException::badClass},
        ForgedCase{"a_name_of_256", class_record(1, std::string(256, 'x')),
                   CArchiveException::badClass},
        ForgedCase{"a_name_of_65535", {0xFF, 0xFF, 1, 0, 0xFF, 0xFF}, CArchiveException::badClass},
        ForgedCase{"a_name_that_is_not_printable", class_record(1, "Stream\nNode"),
                   CArchiveException::badClass},
        ForgedCase{"a_name_with_a_nul_behind", class_record(3, std::string("StreamNode\0", 11)),
                   CArchiveException::badClass},
        ForgedCase{"a_class_that_has_no_schema", class_record(0xFFFF, "CMemFile"),
                   CArchiveException::badClass},
        ForgedCase{"another_schema_of_a_class_that_is_not_versionable",
                   class_record(3, "StreamSpecialNode"), CArchiveException::badSchema},
        ForgedCase{"no_schema_for_a_versionable_class", class_record(0xFFFF, "StreamNode"),
                   CArchiveException::badSchema}),
    [](const auto& one) { return std::string(one.param.name); });

TEST_F(CArchive_objects, an_identifier_in_more_bytes_than_it_needs_is_accepted) {
    StreamNode node;
    Bytes bytes = stored_bytes([&](CArchive& archive) { archive << &node; });
    bytes.insert(bytes.end(), {0xFF, 0x7F, 2, 0, 0, 0});
    load_bytes(bytes, [](CArchive& archive) {
        const CObject* const loaded = archive.ReadObject(nullptr);
        EXPECT_EQ(archive.ReadObject(nullptr), loaded);
    });
}

TEST_F(CArchive_objects, of_a_class_that_makes_no_objects_throw_badClass) {
    const CRuntimeClass abstract = {"Abstract", 0, CObject::GetThisClass(), 1};
    const CRuntimeClassRegistration registration(&abstract);
    EXPECT_EQ(cause_of([] { load_one(class_record(1, "Abstract")); }), CArchiveException::badClass);
    load_bytes(class_record(1, "Abstract"),
               [&](CArchive& archive) { EXPECT_EQ(archive.ReadClass(), &abstract); });
}

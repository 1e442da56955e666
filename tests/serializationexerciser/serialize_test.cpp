// An object through an archive and back: what is reported, what passes, and that no file is left.
#include <gtest/gtest.h>
#include <mfc/CArchive.h>
#include <nmktoolbox/serializationexerciser.h>
#include <utils/utAssert.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "archive_failure.h"
#include "platform/stream_objects.h"
#include "scratch_directory.h"

namespace {

std::vector<std::string> failed_assertions;

void collect(const char* message, const char*, int, const char* function) {
    failed_assertions.push_back(std::string(function) + ": " + message);
}

// Writes two numbers and reads one.
class HastyReader : public CObject {
  public:
    CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    static CRuntimeClass* GetThisClass() {
        static CRuntimeClass of_this = {"HastyReader", sizeof(HastyReader), CObject::GetThisClass(),
                                        1, CreateObject};
        return &of_this;
    }
    static CObject* CreateObject() { return new HastyReader; }
    void Serialize(CArchive& archive) override {
        if (archive.IsStoring()) {
            archive << number << 99;
        } else {
            archive >> number;
        }
    }
    int number = 0;
};

// Its class makes objects of another class.
class Changeling : public CObject {
  public:
    CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    static CRuntimeClass* GetThisClass() {
        static CRuntimeClass of_this = {"Changeling", sizeof(Changeling), CObject::GetThisClass(),
                                        1, HastyReader::CreateObject};
        return &of_this;
    }
    void Serialize(CArchive& archive) override { archive << 7; }
};

// Removes the directory of the temporary file while it is written.
class Vandal : public StreamNode {
  public:
    void Serialize(CArchive& archive) override {
        StreamNode::Serialize(archive);
        std::filesystem::remove_all(std::getenv("TMPDIR"));
    }
};

class serializeTest : public testing::Test {
  protected:
    serializeTest() : m_before(ut_set_assert_handler(collect)) {
        failed_assertions.clear();
        const char* const directory = std::getenv("TMPDIR");
        if (directory != nullptr) m_directory = directory;
        m_has_directory = directory != nullptr;
        setenv("TMPDIR", scratch.path().c_str(), 1);
    }
    ~serializeTest() override {
        if (m_has_directory) {
            setenv("TMPDIR", m_directory.c_str(), 1);
        } else {
            unsetenv("TMPDIR");
        }
        ut_set_assert_handler(m_before);
        StreamNode::delete_all();
    }

    ScratchDirectory scratch;
    StreamClasses classes;
    CRuntimeClassRegistration hasty_reader{HastyReader::GetThisClass()};
    CRuntimeClassRegistration changeling{Changeling::GetThisClass()};
    CObject* read = nullptr;

  private:
    utAssertHandler m_before;
    std::string m_directory;
    bool m_has_directory = false;
};

// Nodes that hold each other, `levels` of them.
StreamNode* nested(int levels) {
    auto* outermost = new StreamNode(levels);
    StreamNode* node = outermost;
    for (int i = 1; i < levels; ++i) {
        auto* const inner = new StreamNode(levels - i);
        node->links.push_back(inner);
        node = inner;
    }
    return outermost;
}

}  // namespace

TEST_F(serializeTest, reads_an_object_of_the_same_class_back_and_leaves_no_file) {
    StreamNode out(42);
    out.name = "forty-two";
    serialize(out, &read);
    const auto* const node = dynamic_cast<StreamNode*>(read);
    ASSERT_NE(node, nullptr);
    EXPECT_NE(node, &out);
    EXPECT_EQ(node->number, 42);
    EXPECT_EQ(node->name, "forty-two");
    EXPECT_TRUE(failed_assertions.empty());
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST_F(serializeTest, passes_a_class_that_reads_less_than_it_wrote) {
    HastyReader out;
    out.number = 5;
    serialize(out, &read);
    const std::unique_ptr<CObject> owner(read);
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(dynamic_cast<HastyReader&>(*read).number, 5);
    EXPECT_TRUE(failed_assertions.empty());
}

TEST_F(serializeTest, reports_an_object_of_another_class_and_hands_it_over) {
    Changeling out;
    serialize(out, &read);
    const std::unique_ptr<CObject> owner(read);
    EXPECT_NE(dynamic_cast<HastyReader*>(read), nullptr);
    EXPECT_EQ(failed_assertions,
              std::vector<std::string>{"serialize: Types Differ: out.GetRuntimeClass() == "
                                       "(*in)->GetRuntimeClass()"});
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST_F(serializeTest, reports_a_null_object_alone_where_the_file_cannot_be_made) {
    Vandal out;
    read = &out;
    serialize(out, &read);
    EXPECT_EQ(read, nullptr);
    EXPECT_EQ(failed_assertions, std::vector<std::string>{"serialize: NULL object read"});
}

TEST_F(serializeTest, lets_the_exception_of_an_archive_pass_and_leaves_no_file) {
    Changeling out;
    CRuntimeClass* const of_this = Changeling::GetThisClass();
    const unsigned int schema = of_this->m_wSchema;
    of_this->m_wSchema = 0xFFFF;
    read = &out;
    EXPECT_EQ(cause_of([&] { serialize(out, &read); }), CArchiveException::badSchema);
    of_this->m_wSchema = schema;
    EXPECT_EQ(read, nullptr);
    EXPECT_EQ(scratch.file_count(), 0U);
    EXPECT_TRUE(failed_assertions.empty());
}

TEST_F(serializeTest, passes_objects_that_are_nested_200_deep) {
    serialize(*nested(200), &read);
    const auto* node = dynamic_cast<StreamNode*>(read);
    for (int levels = 200; levels > 1; --levels) {
        ASSERT_NE(node, nullptr);
        EXPECT_EQ(node->number, levels);
        ASSERT_EQ(node->links.size(), 1U);
        node = dynamic_cast<StreamNode*>(node->links[0]);
    }
    EXPECT_TRUE(failed_assertions.empty());
}

TEST_F(serializeTest, ends_objects_that_are_nested_400000_deep_in_an_exception) {
    StreamNode* const outermost = nested(400'000);
    EXPECT_EQ(cause_of([&] { serialize(*outermost, &read); }), CArchiveException::generic);
    EXPECT_EQ(read, nullptr);
    EXPECT_EQ(scratch.file_count(), 0U);
}

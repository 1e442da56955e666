#include <utils/utAssert.h>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "file_contents.h"
#include "xml/conf_documents.h"

namespace {

std::vector<std::string> failed_assertions;

void collect(const char* message, const char*, int, const char*) {
    failed_assertions.emplace_back(message);
}

class nmkConfXMLWriter_documents : public ConfTest {};

/// Collects the failed assertions; the checks are switched off before and after.
class nmkConfXMLWriter_save : public ConfTest {
  protected:
    nmkConfXMLWriter_save() : m_before(ut_set_assert_handler(collect)) {
        failed_assertions.clear();
        unsetenv("NMK_CHECK_XML_WRITING");
    }
    ~nmkConfXMLWriter_save() override {
        unsetenv("NMK_CHECK_XML_WRITING");
        ut_set_assert_handler(m_before);
    }

    static void switch_checks_on(const char* value = "1") {
        setenv("NMK_CHECK_XML_WRITING", value, 1);
    }

  private:
    utAssertHandler m_before;
};

// Says that it has saved, and writes a text of the test's choice, or nothing for null.
class LyingFactory : public axmDocumentFactory {
  public:
    bool save(const axmDocument&, const apPath& path) const override {
        if (text != nullptr) std::ofstream(path.narrow().c_str()) << text;
        return true;
    }
    const char* text = nullptr;
};

struct LyingWriter : PublicWriter {
    using PublicWriter::PublicWriter;
    std::shared_ptr<axmDocumentFactory> xml_factory() const override { return factory; }
    std::shared_ptr<LyingFactory> factory = std::make_shared<LyingFactory>();
};

}  // namespace

TEST_F(nmkConfXMLWriter_documents, have_a_root_with_the_version) {
    const PublicWriter writer(12);
    document = writer.create("conf");
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(document->root_element()->tag(), apString(L"conf"));
    EXPECT_EQ(document->root_element()->attribute(L"version"), apString(L"12"));
}

TEST_F(nmkConfXMLWriter_documents, are_null_for_a_bad_name_and_without_the_service) {
    EXPECT_EQ(PublicWriter(1).create(""), nullptr);
    EXPECT_EQ(PublicWriter(1).create("a b"), nullptr);
    EXPECT_EQ(PublicWriter(1).create("a\xFF"), nullptr);
    remove_service();
    EXPECT_EQ(PublicWriter(1).create("conf"), nullptr);
}

TEST_F(nmkConfXMLWriter_documents, come_back_with_their_elements_and_texts) {
    const PublicWriter writer(2);
    document = writer.create("conf");
    const auto axis = writer.add_element(document->root_element(), "axis");
    ASSERT_NE(writer.add_content(axis, "  <A> & \xC3\xA9\n"), nullptr);
    ASSERT_TRUE(writer.save(document, writer.conf_file_path("tool", 2)).ok());
    const PublicReader reader(1, 3);
    ASSERT_TRUE(reader.load_from_default("tool", document).ok());
    const auto children = document->root_element()->child_elements();
    ASSERT_EQ(children.size(), 1U);
    EXPECT_TRUE(reader.tag_name_matches(children[0], "axis"));
    EXPECT_EQ(nmkConfXMLBase::ut_str(children[0]->text()), "  <A> & \xC3\xA9\n");
}

TEST_F(nmkConfXMLWriter_documents, gain_nothing_that_cannot_be_written) {
    const PublicWriter writer(2);
    document = writer.create("conf");
    const auto root = document->root_element();
    EXPECT_EQ(writer.add_element(nullptr, "axis"), nullptr);
    EXPECT_EQ(writer.add_content(nullptr, "A"), nullptr);
    EXPECT_EQ(writer.add_element(root, "1"), nullptr);
    EXPECT_EQ(writer.add_element(root, ""), nullptr);
    EXPECT_EQ(writer.add_content(root, "\x01"), nullptr);
    EXPECT_EQ(writer.add_content(root, "\xFF"), nullptr);
    const auto text = writer.add_content(root, "");
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(writer.add_element(text, "axis"), nullptr);
    EXPECT_TRUE(root->child_elements().empty());
}

TEST_F(nmkConfXMLWriter_save, fails_where_the_file_cannot_be_written) {
    const PublicWriter writer(1);
    document = writer.create("conf");
    EXPECT_EQ(text_of(writer.save(document, path_of("none/tool.xml"))), "1 Failed to write file");
    std::shared_ptr<axmDocument> none;
    EXPECT_EQ(text_of(writer.save(none, path_of("tool.xml"))), "1 Failed to write file");
    remove_service();
    EXPECT_EQ(text_of(writer.save(document, path_of("tool.xml"))), "1 Failed to write file");
    EXPECT_TRUE(failed_assertions.empty());
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST_F(nmkConfXMLWriter_save, raises_an_assertion_for_a_failure_while_checks_are_on) {
    const PublicWriter writer(1);
    document = writer.create("conf");
    for (const char* value : {"1", "0", ""}) {
        failed_assertions.clear();
        switch_checks_on(value);
        EXPECT_EQ(text_of(writer.save(document, path_of("none/tool.xml"))),
                  "1 Failed to write file");
        EXPECT_EQ(failed_assertions,
                  std::vector<std::string>{"Should not fail to write an XML file."});
    }
}

TEST_F(nmkConfXMLWriter_save, asks_for_the_checks_at_each_save) {
    const LyingWriter writer(1);
    document = writer.create("conf");
    EXPECT_TRUE(writer.save(document, path_of("tool.xml")).ok());
    EXPECT_TRUE(failed_assertions.empty());
    switch_checks_on();
    EXPECT_TRUE(writer.save(document, path_of("tool.xml")).ok());
    EXPECT_EQ(failed_assertions.size(), 1U);
    unsetenv("NMK_CHECK_XML_WRITING");
    EXPECT_TRUE(writer.save(document, path_of("tool.xml")).ok());
    EXPECT_EQ(failed_assertions.size(), 1U);
}

TEST_F(nmkConfXMLWriter_save, reports_a_file_that_is_not_there_with_its_name) {
    const LyingWriter writer(1);
    document = writer.create("conf");
    switch_checks_on();
    EXPECT_TRUE(writer.save(document, path_of("%s%n.xml")).ok());
    EXPECT_EQ(
        failed_assertions,
        std::vector<std::string>{"Should have written the file: " + scratch.path() + "/%s%n.xml"});
}

TEST_F(nmkConfXMLWriter_save, reports_a_file_that_is_not_a_document_with_the_place) {
    const LyingWriter writer(1);
    document = writer.create("conf");
    writer.factory->text = "<a>\n  <b></a>";
    switch_checks_on();
    EXPECT_TRUE(writer.save(document, path_of("%s.xml")).ok());
    EXPECT_EQ(failed_assertions,
              std::vector<std::string>{"Wrote invalid xml file: Filename: " + scratch.path() +
                                       "/%s.xml\nError: the end tag of \"a\"; expected </b>\n"
                                       "Line: 2\nColumn: 6"});
}

TEST_F(nmkConfXMLWriter_save, reports_nothing_while_all_is_well) {
    const PublicWriter writer(1);
    document = writer.create("conf");
    switch_checks_on();
    EXPECT_TRUE(writer.save(document, path_of("tool.xml")).ok());
    EXPECT_TRUE(failed_assertions.empty());
    EXPECT_EQ(contents_of(scratch.path() + "/tool.xml"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<conf version=\"1\" />\n");
}

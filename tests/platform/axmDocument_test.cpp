// Documents that are created, changed, saved and read again.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <ostream>
#include <string>

#include "file_contents.h"
#include "platform/xml_documents.h"
#include "scratch_directory.h"

namespace {

using namespace nmk_xml_tests;

std::shared_ptr<axmDocument> created(const char* root = "a") {
    return axmDocumentFactory().create(wide(root));
}

// The text of the document as it is saved.
std::string saved(const axmDocument& document) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/a.xml";
    EXPECT_TRUE(axmDocumentFactory().save(document, path_of(name)));
    return contents_of(name);
}

const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

struct TextCase {
    const char* name;
    std::string text;
};

std::ostream& operator<<(std::ostream& stream, const TextCase& each) { return stream << each.name; }

class axmDocument_text : public testing::TestWithParam<TextCase> {};

TEST_P(axmDocument_text, of_an_element_comes_back_exactly) {
    const auto document = created();
    const auto root = document->root_element();
    const auto child = document->create_element(L"b");
    ASSERT_TRUE(root->append_child(child));
    ASSERT_TRUE(child->append_child(document->create_text_node(wide(GetParam().text))));
    ASSERT_TRUE(child->set_attribute(L"c", wide(GetParam().text)));
    const auto again = parsed(saved(*document));
    ASSERT_NE(again, nullptr);
    const auto elements = again->root_element()->child_elements();
    ASSERT_EQ(elements.size(), 1U);
    EXPECT_EQ(narrow(elements[0]->text()), GetParam().text);
    EXPECT_EQ(narrow(elements[0]->attribute(L"c")), GetParam().text);
}

const TextCase texts[] = {
    {"nothing", ""},
    {"a_word", "word"},
    {"a_blank", " "},
    {"white_space", " \t\n\r\r\n "},
    {"blanks_around_a_word", "  word\n"},
    {"markup", "<a b='c' d=\"e\">&amp;</a>"},
    {"the_end_of_a_section", "a]]>b]]"},
    {"the_marks_of_a_comment", "<!-- -- -->"},
    {"all_that_utf8_has", "\x7F\xC2\x85\xE2\x80\xA8\xEF\xBF\xBD\xF0\x9F\x98\x80\xF4\x8F\xBF\xBD"},
};

INSTANTIATE_TEST_SUITE_P(all, axmDocument_text, testing::ValuesIn(texts),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace

TEST(axmDocument, is_saved_with_two_spaces_for_each_level) {
    const auto document = created();
    const auto root = document->root_element();
    const auto child = document->create_element(L"b");
    ASSERT_TRUE(root->set_attribute(L"version", 12));
    ASSERT_TRUE(root->append_child(child));
    ASSERT_TRUE(child->append_child(document->create_element(L"c")));
    ASSERT_TRUE(child->append_child(document->create_element(L"d")));
    ASSERT_TRUE(child->child_elements()[1]->append_child(document->create_text_node(L"x")));
    EXPECT_EQ(saved(*document),
              head + "<a version=\"12\">\n  <b>\n    <c />\n    <d>x</d>\n  </b>\n</a>\n");
}

TEST(axmDocument, leaves_out_what_was_created_and_never_appended) {
    const auto document = created();
    ASSERT_NE(document->create_element(L"b"), nullptr);
    ASSERT_NE(document->create_text_node(L"x"), nullptr);
    EXPECT_EQ(saved(*document), head + "<a />\n");
}

TEST(axmDocument, keeps_comments_and_instructions) {
    const auto document = parsed("<?p q?><!-- c --><a><!-- d --><b/></a><!-- e -->");
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(saved(*document), head +
                                    "<?p q?>\n<!-- c -->\n<a>\n  <!-- d -->\n  <b />\n</a>\n"
                                    "<!-- e -->\n");
}

TEST(axmDocument, keeps_its_layout_where_white_space_is_part_of_a_text) {
    const std::string text = "<a>\n\t<b> <![CDATA[x]]></b>\n</a>\n";
    const auto document = parsed(text);
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(saved(*document), head + text);
}

TEST(axmDocument, creates_nothing_that_xml_cannot_hold) {
    EXPECT_EQ(created(""), nullptr);
    EXPECT_EQ(created("1a"), nullptr);
    EXPECT_EQ(created("a b"), nullptr);
    const auto document = created();
    EXPECT_EQ(document->create_element(apString()), nullptr);
    EXPECT_EQ(document->create_element(apString(std::wstring(L"a\0b", 3))), nullptr);
    EXPECT_EQ(document->create_text_node(apString()), nullptr);
    EXPECT_EQ(document->create_text_node(L"\x01"), nullptr);
    EXPECT_EQ(document->create_text_node(apString(std::wstring(1, L'\0'))), nullptr);
    EXPECT_EQ(document->create_text_node(apString(std::wstring(1, wchar_t{0xD800}))), nullptr);
    EXPECT_FALSE(document->root_element()->set_attribute(L"a b", L""));
    EXPECT_FALSE(document->root_element()->set_attribute(L"b", L"\x0B"));
    EXPECT_FALSE(document->root_element()->set_attribute(L"b", apString()));
    EXPECT_EQ(saved(*document), head + "<a />\n");
}

TEST(axmDocument, finds_an_attribute_by_its_whole_name) {
    const auto root = parsed("<a b='' c='1'/>")->root_element();
    EXPECT_EQ(root->attribute(L"b"), apString(L""));
    EXPECT_EQ(root->attribute(L"c"), apString(L"1"));
    EXPECT_EQ(root->attribute(L"d"), apString());
    EXPECT_EQ(root->attribute(apString()), apString());
    EXPECT_EQ(root->attribute(apString(std::wstring(L"c\0d", 3))), apString());
}

TEST(axmNode, is_appended_once_and_only_in_its_document) {
    const auto document = created();
    const auto root = document->root_element();
    const auto child = document->create_element(L"b");
    const auto text = document->create_text_node(L"x");
    EXPECT_FALSE(root->append_child(nullptr));
    EXPECT_FALSE(root->append_child(created()->create_element(L"b")));
    EXPECT_FALSE(root->append_child(root));
    EXPECT_FALSE(child->append_child(child));
    EXPECT_FALSE(text->append_child(child));
    EXPECT_TRUE(root->append_child(child));
    EXPECT_FALSE(root->append_child(child));
    EXPECT_FALSE(child->append_child(root));
    EXPECT_FALSE(text->set_attribute(L"a", L"b"));
    EXPECT_EQ(text->attribute(L"a"), apString());
}

TEST(axmNode, keeps_its_document_alive) {
    auto document = parsed("<a><b>x</b></a>");
    const auto child = document->root_element()->child_elements()[0];
    document = nullptr;
    EXPECT_EQ(child->text(), apString(L"x"));
    EXPECT_EQ(child->owner_document()->root_element()->tag(), apString(L"a"));
}

TEST(axmDocumentFactory_save, keeps_the_mode_of_the_file_and_a_symlink_to_it) {
    const ScratchDirectory scratch;
    const std::string name = scratch.file("a.xml", "before");
    const std::string link = scratch.path() + "/link.xml";
    std::filesystem::permissions(name, std::filesystem::perms(0640));
    std::filesystem::create_symlink("a.xml", link);
    ASSERT_TRUE(axmDocumentFactory().save(*created(), path_of(link)));
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(contents_of(name), head + "<a />\n");
    EXPECT_EQ(std::filesystem::status(name).permissions(), std::filesystem::perms(0640));
}

TEST(axmDocumentFactory_save, fails_for_directories_and_devices_and_leaves_nothing) {
    const ScratchDirectory scratch;
    const axmDocumentFactory factory;
    EXPECT_FALSE(factory.save(*created(), path_of(scratch.path())));
    EXPECT_FALSE(factory.save(*created(), path_of(scratch.path() + "/none/a.xml")));
    EXPECT_FALSE(factory.save(*created(), path_of("/dev/null")));
    EXPECT_FALSE(factory.save(*created(), apPath()));
    EXPECT_EQ(scratch.file_count(), 0U);
}

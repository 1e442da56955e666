#include <filesystem>
#include <limits>
#include <ostream>
#include <string>

#include "scoped_code_page.h"
#include "xml/conf_documents.h"

namespace {

class nmkConfXMLReader_load : public ConfTest {};
class nmkConfXMLReader_load_from_default : public ConfTest {
  protected:
    // The version of the document that is loaded, or the text of the failure.
    std::string chosen(int min_version, int max_version) {
        const PublicReader reader(min_version, max_version);
        const auto status = reader.load_from_default("tool", document);
        if (!status.ok()) return text_of(status);
        return std::string(reader.get_attr(document->root_element(), "version").view());
    }
};
class nmkConfXMLReader_load_xml : public ConfTest {};
class nmkConfXMLReader_nodes : public ConfTest {};

struct VersionCase {
    const char* name;
    const char* text;  // of the attribute; null where there is none
    int min_version, max_version;
    const char* status;
    int version;
};

std::ostream& operator<<(std::ostream& stream, const VersionCase& each) {
    return stream << each.name;
}

class nmkConfXMLReader_validate_version : public ConfTest,
                                          public testing::WithParamInterface<VersionCase> {};

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();
constexpr const char* incompatible = "1 Incompatible version.";
constexpr const char* missing = "1 Version attribute missing";

TEST_P(nmkConfXMLReader_validate_version, compares_with_the_closed_range) {
    const VersionCase& each = GetParam();
    const PublicReader reader(each.min_version, each.max_version);
    document = axmDocumentFactory().create(L"conf");
    if (each.text != nullptr) {
        document->root_element()->set_attribute(L"version", nmkConfXMLBase::ap_str(each.text));
        if (*each.text == '\0') document->root_element()->set_attribute(L"version", L"");
    }
    int version = 77;
    EXPECT_EQ(text_of(reader.validate_version(document->root_element(), version)), each.status);
    EXPECT_EQ(version, each.version);
}

const VersionCase versions[] = {
    {"the_least", "1", 1, 3, "ok", 1},
    {"the_greatest", "3", 1, 3, "ok", 3},
    {"one_below_is_handed_over", "0", 1, 3, incompatible, 0},
    {"one_above_is_handed_over", "4", 1, 3, incompatible, 4},
    {"a_word_leaves_one_below_the_least", "abc", 1, 3, incompatible, 0},
    {"a_word_leaves_one_below_another_least", "abc", 5, 7, incompatible, 4},
    {"an_empty_one_is_missing", "", 1, 3, missing, 0},
    {"none_is_missing", nullptr, 1, 3, missing, 0},
    {"too_large_leaves_one_below_the_least", "99999999999", 1, 3, incompatible, 0},
    {"text_behind_the_number", "2x", 1, 3, incompatible, 0},
    {"a_fraction", "2.0", 1, 3, incompatible, 0},
    {"blanks_around_the_number", " 2\n", 1, 3, "ok", 2},
    {"zeros_before_the_number", "002", 1, 3, "ok", 2},
    {"a_negative_one", "-2", -3, 3, "ok", -2},
    {"the_whole_range_of_integers", "-2147483648", lowest, highest, "ok", lowest},
    {"a_word_in_the_whole_range", "abc", lowest, highest, incompatible, highest},
    {"none_in_the_whole_range", nullptr, lowest, highest, missing, highest},
};

INSTANTIATE_TEST_SUITE_P(all, nmkConfXMLReader_validate_version, testing::ValuesIn(versions),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace

TEST_F(nmkConfXMLReader_load, reports_a_missing_file_and_leaves_the_document) {
    document = axmDocumentFactory().create(L"before");
    const auto before = document;
    EXPECT_EQ(text_of(PublicReader(1, 3).load(path_of("none.xml"), document)), "0 File not found.");
    EXPECT_EQ(document, before);
    EXPECT_EQ(text_of(PublicReader(1, 3).load(apPath(), document)), "0 File not found.");
}

TEST_F(nmkConfXMLReader_load, refuses_what_is_not_a_document_and_clears_it) {
    scratch.file("bad.xml", "<a><b></a>");
    for (const char* name : {"bad.xml", "."}) {
        document = axmDocumentFactory().create(L"before");
        EXPECT_EQ(text_of(PublicReader(1, 3).load(path_of(name), document)),
                  "1 Not a valid XML file.");
        EXPECT_EQ(document, nullptr);
    }
}

TEST_F(nmkConfXMLReader_load, fails_without_the_service) {
    make("tool.xml", "1");
    remove_service();
    EXPECT_EQ(text_of(PublicReader(1, 3).load(path_of("tool.xml"), document)),
              "1 Not a valid XML file.");
}

TEST_F(nmkConfXMLReader_load_from_default, takes_the_newest_version_in_the_range) {
    make("tool.01.xml", "1");
    make("tool.02.xml", "2");
    make("tool.xml", "9");
    EXPECT_EQ(chosen(1, 3), "2");
    EXPECT_EQ(chosen(1, 1), "1");
}

TEST_F(nmkConfXMLReader_load_from_default, does_not_see_a_later_version) {
    make("tool.02.xml", "2");
    make("tool.10.xml", "10");
    EXPECT_EQ(chosen(1, 9), "2");
    EXPECT_EQ(chosen(1, 10), "10");
    EXPECT_EQ(chosen(3, 9), "0 File not found.");
}

TEST_F(nmkConfXMLReader_load_from_default, falls_back_on_the_name_without_a_version) {
    EXPECT_EQ(chosen(1, 3), "0 File not found.");
    make("tool.xml", "7");
    EXPECT_EQ(chosen(1, 3), "7");
    int version = 0;
    EXPECT_EQ(text_of(PublicReader(1, 3).validate_version(document->root_element(), version)),
              "1 Incompatible version.");
    EXPECT_EQ(version, 7);
}

TEST_F(nmkConfXMLReader_load_from_default, takes_a_broken_newest_file_and_not_an_older_one) {
    make("tool.01.xml", "1");
    scratch.file("tool.02.xml", "<a>");
    EXPECT_EQ(chosen(1, 3), "1 Not a valid XML file.");
    std::filesystem::remove(scratch.path() + "/tool.02.xml");
    std::filesystem::create_directory(scratch.path() + "/tool.02.xml");
    EXPECT_EQ(chosen(1, 3), "1 Not a valid XML file.");
}

TEST_F(nmkConfXMLReader_load_from_default, does_not_walk_the_versions_that_share_a_name) {
    make("tool.xml", "0");
    EXPECT_EQ(chosen(lowest, 3), "0");
    EXPECT_EQ(chosen(lowest, 0), "0");
    EXPECT_EQ(chosen(lowest, lowest), "0");
}

TEST_F(nmkConfXMLReader_load_from_default, finds_nothing_under_a_name_that_cannot_be_decoded) {
    EXPECT_EQ(text_of(PublicReader(1, 3).load_from_default("t\xFF", document)),
              "0 File not found.");
}

TEST_F(nmkConfXMLReader_load_xml, reads_a_text_in_the_code_page_of_the_thread) {
    const PublicReader reader(1, 3);
    EXPECT_EQ(text_of(reader.load_xml("<a b='\xC3\xA9'/>", document)), "ok");
    EXPECT_EQ(reader.get_attr(document->root_element(), "b"), "\xC3\xA9");
    const ScopedCodePage western(ap_code_page_western);
    EXPECT_EQ(text_of(reader.load_xml("<a b='\xE9'/>", document)), "ok");
    EXPECT_EQ(reader.get_attr(document->root_element(), "b"), "\xE9");
}

TEST_F(nmkConfXMLReader_load_xml, refuses_an_empty_text_and_leaves_the_document) {
    document = axmDocumentFactory().create(L"before");
    EXPECT_EQ(text_of(PublicReader(1, 3).load_xml("", document)), "1 Invalid xml content");
    EXPECT_EQ(text_of(PublicReader(1, 3).load_xml(utString(), document)), "1 Invalid xml content");
    EXPECT_NE(document, nullptr);
}

TEST_F(nmkConfXMLReader_load_xml, refuses_what_is_not_a_document_and_clears_it) {
    const char* const unable = "1 Unable to load content into document";
    for (const char* text : {"x", "<a/><b/>", "<a b='\xFF'/>"}) {
        document = axmDocumentFactory().create(L"before");
        EXPECT_EQ(text_of(PublicReader(1, 3).load_xml(text, document)), unable);
        EXPECT_EQ(document, nullptr);
    }
    remove_service();
    EXPECT_EQ(text_of(PublicReader(1, 3).load_xml("<a/>", document)), unable);
}

TEST_F(nmkConfXMLReader_nodes, get_attr_is_empty_without_an_attribute_a_text_or_a_node) {
    const PublicReader reader(1, 3);
    ASSERT_TRUE(reader.load_xml("<a b='' c='d'/>", document).ok());
    const auto root = document->root_element();
    EXPECT_EQ(reader.get_attr(root, "c"), "d");
    EXPECT_TRUE(reader.get_attr(root, "b").is_empty());
    EXPECT_TRUE(reader.get_attr(root, "x").is_empty());
    EXPECT_TRUE(reader.get_attr(root, "").is_empty());
    EXPECT_TRUE(reader.get_attr(nullptr, "c").is_empty());
}

TEST_F(nmkConfXMLReader_nodes, tag_name_matches_is_case_sensitive) {
    const PublicReader reader(1, 3);
    ASSERT_TRUE(reader.load_xml("<Tool/>", document).ok());
    const auto root = document->root_element();
    EXPECT_TRUE(reader.tag_name_matches(root, "Tool"));
    EXPECT_FALSE(reader.tag_name_matches(root, "tool"));
    EXPECT_FALSE(reader.tag_name_matches(root, ""));
    EXPECT_FALSE(reader.tag_name_matches(nullptr, "Tool"));
}

TEST_F(nmkConfXMLReader_nodes, validate_version_of_no_node_is_a_missing_attribute) {
    int version = 77;
    EXPECT_EQ(text_of(PublicReader(4, 5).validate_version(nullptr, version)), missing);
    EXPECT_EQ(version, 3);
}

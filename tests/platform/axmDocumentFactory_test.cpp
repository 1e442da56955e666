// What is read as a document and what is refused, with the place of the problem.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "file_contents.h"
#include "platform/xml_documents.h"
#include "scratch_directory.h"

namespace {

using namespace nmk_xml_tests;
using namespace std::string_literals;

struct RefusedCase {
    const char* name;
    std::string text;
    std::string problem;
};

std::ostream& operator<<(std::ostream& stream, const RefusedCase& each) {
    return stream << each.name;
}

class axmDocumentFactory_refused : public testing::TestWithParam<RefusedCase> {};

TEST_P(axmDocumentFactory_refused, is_reported_with_line_and_column) {
    EXPECT_EQ(problem_of(GetParam().text), GetParam().problem);
}

/// ASCII as UTF-16, the lower byte first, with its mark.
std::string utf16(const std::string& ascii) {
    std::string text = "\xFF\xFE";
    for (const char letter : ascii) text += {letter, '\0'};
    return text;
}

const std::string forbidden = "a character that no document may hold, such as a control character";
const std::string not_utf8 = "bytes that are not UTF-8";
const std::string bad_number = "expected the number of a character and ; behind &#";
const std::string bad_reference = "a reference to a character that no document may hold";
const std::string late_declaration =
    "a declaration that is not the first of the document; expected another name behind <?";
const std::string in_tag = "expected a space, > or /> in the start tag";

const RefusedCase refused[] = {
    {"an_empty_text", "", "1:1 the document has no root element; expected <"},
    {"white_space_alone", " \n ", "2:2 the document has no root element; expected <"},
    {"a_comment_alone", "<!-- a -->", "1:11 the document has no root element; expected <"},
    {"two_roots", "<a/>\n<b/>", "2:1 a second root element; expected the end of the document"},
    {"an_end_tag_behind_the_root", "<a/></a>",
     "1:5 a second root element; expected the end of the document"},
    {"text_before_the_root", "x<a/>", "1:1 text outside the root element; expected <"},
    {"text_behind_the_root", "<a/>\r\n\r\n  x", "3:3 text outside the root element; expected <"},
    {"a_section_behind_the_root", "<a/><![CDATA[x]]>",
     "1:5 a second root element; expected the end of the document"},
    {"a_nul_behind_the_root", "<a/>\0"s, "1:5 text outside the root element; expected <"},
    {"an_end_tag_first", "</a>", "1:2 expected a name behind <"},
    {"an_open_element", "<a><b>", "1:7 the document ends inside an element; expected </b>"},
    {"another_end_tag", "<a>\n<b>\n</a>", "3:1 the end tag of \"a\"; expected </b>"},
    {"a_longer_end_tag", "<a></ab>", "1:4 the end tag of \"ab\"; expected </a>"},
    {"an_end_tag_with_attribute", "<a></a b='c'>", "1:8 expected > in the end tag"},
    {"a_blank_before_the_name", "< a/>", "1:2 expected a name behind <"},
    {"a_name_that_begins_with_a_digit", "<1/>", "1:2 expected a name behind <"},
    {"a_name_that_begins_with_a_hyphen", "<-a/>", "1:2 expected a name behind <"},
    {"a_name_that_begins_with_a_full_stop", "<.a/>", "1:2 expected a name behind <"},
    {"a_name_that_begins_with_a_dot", "<a .b=''/>",
     "1:4 expected the name of an attribute, > or />"},
    {"a_name_with_a_sign", "<a+b/>", "1:3 " + in_tag},
    {"a_name_with_a_multiplication_sign", "<a\xC3\x97/>", "1:3 " + in_tag},
    {"a_start_tag_without_end", "<a", "1:3 " + in_tag},
    {"a_slash_apart", "<a/ >", "1:3 " + in_tag},
    {"an_attribute_twice", "<a b='1'\n  c='2' b='3'/>", "2:9 the attribute \"b\" is given twice"},
    {"an_attribute_without_value", "<a b/>", "1:5 expected = behind the name of the attribute"},
    {"an_attribute_without_quotes", "<a b=c/>",
     "1:6 expected the value of the attribute in quotes"},
    {"a_value_without_end", "<a b='c/>", "1:6 the value has no end; expected a closing quote"},
    {"attributes_side_by_side", "<a b='c'd='e'/>", "1:9 " + in_tag},
    {"a_less_than_in_a_value", "<a b='<'/>",
     "1:7 \"<\" in the value of an attribute; expected &lt;"},
    {"an_ampersand_in_a_value", "<a b='&'/>", "1:7 \"&\" alone; expected &amp;"},
    {"an_ampersand_in_a_text", "<a>b & c</a>", "1:6 \"&\" alone; expected &amp;"},
    {"a_reference_without_end", "<a>&lt</a>",
     "1:4 a reference without its end; expected ; or &amp;"},
    {"an_unknown_entity", "<a>\xC3\xA9&nbsp;</a>",
     "1:5 the entity \"nbsp\" is unknown; expected lt, gt, amp, apos or quot"},
    {"an_entity_in_capitals", "<a>&LT;</a>",
     "1:4 the entity \"LT\" is unknown; expected lt, gt, amp, apos or quot"},
    {"a_number_without_digits", "<a>&#;</a>", "1:4 " + bad_number},
    {"a_hexadecimal_number_without_digits", "<a>&#x;</a>", "1:4 " + bad_number},
    {"a_number_with_a_capital_x", "<a>&#X41;</a>", "1:4 " + bad_number},
    {"hexadecimal_digits_without_the_x", "<a>&#4a;</a>", "1:4 " + bad_number},
    {"the_number_of_a_nul", "<a>&#0;</a>", "1:4 " + bad_reference},
    {"the_number_of_a_control_character", "<a b='&#x1F;'/>", "1:7 " + bad_reference},
    {"the_number_of_a_surrogate", "<a>&#xD800;</a>", "1:4 " + bad_reference},
    {"the_number_of_a_non_character", "<a>&#xFFFE;</a>", "1:4 " + bad_reference},
    {"a_number_beyond_unicode", "<a>&#x110000;</a>", "1:4 " + bad_reference},
    {"a_number_that_would_wrap", "<a>&#x100000041;</a>", "1:4 " + bad_reference},
    {"a_control_character_in_a_text", "<a>\x01</a>", "1:4 " + forbidden},
    {"a_control_character_in_a_value", "<a b='\x1F'/>", "1:7 " + forbidden},
    {"a_control_character_in_a_comment", "<a><!--\x02--></a>", "1:8 " + forbidden},
    {"a_control_character_in_a_section", "<a><![CDATA[\x02]]></a>", "1:13 " + forbidden},
    {"a_control_character_in_an_instruction", "<?a \x02?><a/>", "1:5 " + forbidden},
    {"a_nul_in_a_text", "<a>\0</a>"s, "1:4 " + forbidden},
    {"a_nul_in_a_tag", "<a\0/>"s, "1:3 " + in_tag},
    {"a_non_character", "<a>\xEF\xBF\xBF</a>", "1:4 " + forbidden},
    {"a_surrogate_in_utf8", "<a>\xED\xA0\x80</a>", "1:4 " + not_utf8},
    {"an_overlong_character", "<a>\xC0\xAF</a>", "1:4 " + not_utf8},
    {"a_trail_byte_alone", "<a>\x80</a>", "1:4 " + not_utf8},
    {"a_character_that_is_cut", "<a>\xE2\x82</a>", "1:4 " + not_utf8},
    {"ill_formed_utf8_in_a_value", "<a b='\xFF'/>", "1:7 " + not_utf8},
    {"ill_formed_utf8_in_a_comment", "<!--\xFF--><a/>", "1:5 " + not_utf8},
    {"the_end_of_a_section_in_a_text", "<a>]]></a>", "1:4 \"]]>\" in a text; expected ]]&gt;"},
    {"the_same_behind_a_bracket", "<a>]]]></a>", "1:5 \"]]>\" in a text; expected ]]&gt;"},
    {"a_section_without_end", "<a><![CDATA[b]]</a>",
     "1:4 the CDATA section has no end; expected ]]>"},
    {"hyphens_in_a_comment", "<!-- a -- b --><a/>", "1:8 \"--\" in a comment; expected -->"},
    {"three_hyphens_at_the_end_of_a_comment", "<!-- a ---><a/>",
     "1:8 \"--\" in a comment; expected -->"},
    {"a_comment_without_end", "<a><!-- b </a>", "1:4 the comment has no end; expected --"},
    {"a_short_comment", "<!---><a/>", "1:1 the comment has no end; expected --"},
    {"other_markup", "<a><!ELEMENT b></a>", "1:4 expected <!-- or <![CDATA["},
    {"a_document_type", "<!DOCTYPE a [<!ENTITY b 'c'>]><a/>",
     "1:1 a document type is not supported; expected the root element"},
    {"a_document_type_with_a_file", "<!DOCTYPE a SYSTEM 'file:///etc/passwd'><a/>",
     "1:1 a document type is not supported; expected the root element"},
    {"a_document_type_in_the_root", "<a><!DOCTYPE a></a>", "1:4 expected <!-- or <![CDATA["},
    {"an_instruction_without_name", "<? a?><a/>",
     "1:1 expected the name of a processing instruction behind <?"},
    {"an_instruction_with_a_slash", "<?a/b?><a/>",
     "1:4 expected a space or ?> behind the name of a processing instruction"},
    {"an_instruction_without_end", "<?a b><a/>",
     "1:1 the processing instruction has no end; expected ?>"},
    {"a_late_declaration", "<a><?xml version='1.0'?></a>", "1:4 " + late_declaration},
    {"a_declaration_behind_a_line", "\n<?xml version='1.0'?><a/>", "2:1 " + late_declaration},
    {"a_declaration_in_capitals", "<?XML version='1.0'?><a/>", "1:1 " + late_declaration},
    {"an_empty_declaration", "<?xml ?><a/>", "1:6 expected version=\"1.0\" in the declaration"},
    {"a_declaration_without_version", "<?xml encoding='UTF-8'?><a/>",
     "1:6 expected version=\"1.0\" in the declaration"},
    {"version_2", "<?xml version='2.0'?><a/>", "1:16 the version is \"2.0\"; expected 1.0"},
    {"a_version_without_digits", "<?xml version='1.'?><a/>",
     "1:16 the version is \"1.\"; expected 1.0"},
    {"another_order_in_the_declaration",
     "<?xml version='1.0' standalone='yes' encoding='UTF-8'?><a/>",
     "1:38 expected ?> at the end of the declaration"},
    {"a_third_way_to_be_alone", "<?xml version='1.0' standalone='maybe'?><a/>",
     "1:33 standalone is \"maybe\"; expected yes or no"},
    {"items_side_by_side", "<?xml version='1.0'encoding='UTF-8'?><a/>",
     "1:20 expected a space before encoding"},
    {"a_declaration_without_quotes", "<?xml version=1.0?><a/>", "1:15 expected a value in quotes"},
    {"a_declaration_without_end", "<?xml version='1.0'><a/>",
     "1:20 expected ?> at the end of the declaration"},
    {"an_empty_encoding", "<?xml version='1.0' encoding=''?><a/>",
     "1:31 expected the name of an encoding"},
    {"an_unknown_encoding", "<?xml version='1.0' encoding='EBCDIC'?><a/>",
     "1:31 the declared encoding is \"EBCDIC\"; expected UTF-8, UTF-16, ISO-8859-1 or US-ASCII"},
    {"utf16_that_is_not", "<?xml version='1.0' encoding='UTF-16'?><a/>",
     "1:31 the declared encoding is \"UTF-16\"; expected UTF-8, in which the document begins"},
    {"another_encoding_than_the_mark_says",
     "\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?><a/>",
     "1:31 the declared encoding is \"ISO-8859-1\"; expected UTF-8, whose mark comes first"},
    {"a_byte_that_ascii_lacks", "<?xml version='1.0' encoding='US-ASCII'?><a>\xE9</a>",
     "1:45 a byte above 127; the declared encoding is US-ASCII"},
    {"half_a_pair_in_utf16", "\xFF\xFE<\0a\0>\0\x00\xD8<\0"s,
     "1:4 half a surrogate pair; expected a character in UTF-16"},
    {"half_a_unit_in_utf16", "\xFF\xFE<\0a\0/\0>\0\n"s,
     "1:5 half a code unit at the end; expected two bytes of UTF-16"},
    {"windows_1252", "<?xml version='1.0' encoding='windows-1252'?><a/>",
     "1:31 the declared encoding is \"windows-1252\"; expected UTF-8, UTF-16, ISO-8859-1 or "
     "US-ASCII"},
    {"utf32", "\xFF\xFE\0\0<\0\0\0a\0\0\0/\0\0\0>\0\0\0"s,
     "1:1 text outside the root element; expected <"},
    {"utf16_that_declares_utf8", utf16("<?xml version='1.0' encoding='UTF-8'?><a/>"),
     "1:31 the declared encoding is \"UTF-8\"; expected UTF-16"},
    {"a_document_type_behind_a_mark", "\xEF\xBB\xBF<!DOCTYPE a><a/>",
     "1:1 a document type is not supported; expected the root element"},
    {"an_entity_of_html_in_a_value", "<a b='&nbsp;'/>",
     "1:7 the entity \"nbsp\" is unknown; expected lt, gt, amp, apos or quot"},
    {"two_marks", "\xEF\xBB\xBF\xEF\xBB\xBF<a/>", "1:1 text outside the root element; expected <"},
};

INSTANTIATE_TEST_SUITE_P(all, axmDocumentFactory_refused, testing::ValuesIn(refused),
                         [](const auto& each) { return std::string(each.param.name); });

struct ReadCase {
    const char* name;
    std::string text;
    std::string content;  // of the root
};

std::ostream& operator<<(std::ostream& stream, const ReadCase& each) { return stream << each.name; }

class axmDocumentFactory_read : public testing::TestWithParam<ReadCase> {};

TEST_P(axmDocumentFactory_read, gives_the_text_of_the_root) {
    ASSERT_EQ(problem_of(GetParam().text), "");
    EXPECT_EQ(narrow(parsed(GetParam().text)->root_element()->text()), GetParam().content);
}

const ReadCase read_cases[] = {
    {"an_empty_element", "<a/>", ""},
    {"white_space_alone", "<a> \n\t </a>", " \n\t "},
    {"white_space_beside_a_section", "<a> <![CDATA[b]]> </a>", " b "},
    {"white_space_beside_a_comment", "<a>b<!-- c --> </a>", "b "},
    {"white_space_before_a_comment", "<a> <!-- c --></a>", " "},
    {"no_white_space_beside_elements", "<a> <b/> <!-- c --> <b/> </a>", ""},
    {"the_same_where_another_element_keeps_its_own", "<a> <b> <!-- c --></b> </a>", ""},
    {"the_five_entities", "<a>&lt;&gt;&amp;&apos;&quot;</a>", "<>&'\""},
    {"characters_by_number", "<a>&#65;&#x42;&#x0000000043;&#13;&#x1F600;</a>",
     "ABC\r\xF0\x9F\x98\x80"},
    {"line_ends_of_all_kinds", "<a>1\r\n2\r3\n4</a>", "1\n2\n3\n4"},
    {"line_ends_in_a_section", "<a><![CDATA[1\r\n2\r3]]></a>", "1\n2\n3"},
    {"line_ends_of_unicode_as_they_are", "<a>\xC2\x85\xE2\x80\xA8</a>", "\xC2\x85\xE2\x80\xA8"},
    {"namespaces", "<p:a xmlns:p='urn:x' xmlns='y' p:b='1'>b</p:a>", "b"},
    {"a_prefix_without_a_namespace", "<p:a>b</p:a>", "b"},
    {"a_style_sheet_and_a_licence", "<?xml-stylesheet href='a.xsl'?><!-- (c) --><a>b</a>", "b"},
    {"an_instruction_and_a_comment_in_the_text", "<a>b<?p q?>c<!-- & < -->d</a>", "bcd"},
    {"a_mark_and_the_declaration", "\xEF\xBB\xBF<?xml version='1.0' encoding='utf-8'?><a>b</a>",
     "b"},
    {"a_section_with_markup", "<a><![CDATA[<b>&amp;]]]]><![CDATA[>]]></a>", "<b>&amp;]]>"},
    {"brackets", "<a>]] ]</a>", "]] ]"},
    {"a_mark_of_utf8", "\xEF\xBB\xBF<a>b</a>", "b"},
    {"utf16_little", "\xFF\xFE<\0a\0>\0\x3D\xD8\x00\xDE<\0/\0a\0>\0"s, "\xF0\x9F\x98\x80"},
    {"utf16_big", "\xFE\xFF\0<\0a\0>\0\xE9\0<\0/\0a\0>"s, "\xC3\xA9"},
    {"utf16_that_declares_itself", utf16("<?xml version='1.0' encoding='utf-16'?><a>b</a>"), "b"},
    {"utf16_without_a_mark", "<\0a\0>\0b\0<\0/\0a\0>\0"s, "b"},
    {"latin_1", "<?xml version='1.0' encoding='iso-8859-1'?><a>\xE9\x80</a>", "\xC3\xA9\xC2\x80"},
    {"ascii", "<?xml version='1.0' encoding='US-ASCII'?><a>b</a>", "b"},
    {"version_1_1", "<?xml version=\"1.1\" standalone='no' ?><a>b</a>", "b"},
    {"names_of_all_scripts", "<\xE4\xB8\xAD \xC3\xA9-\xC2\xB7.1='x'>b</\xE4\xB8\xAD\n>", "b"},
    {"a_name_of_ascii_and_other_letters", "<na\xC3\xAFve-1>b</na\xC3\xAFve-1>", "b"},
    {"instructions_and_comments", "<?a?><!----><?b c?d?><a>b</a><!-- c --><?xml-e?>\n", "b"},
};

INSTANTIATE_TEST_SUITE_P(all, axmDocumentFactory_read, testing::ValuesIn(read_cases),
                         [](const auto& each) { return std::string(each.param.name); });

constexpr const char* good_document =
    "<?xml version='1.0' encoding='UTF-8'?>\n<!-- c --><a b='1&#10;' "
    "d=\"&lt;\">t\xC3\xA9<![CDATA[x]]>"
    "<?p q?><b/>&amp;</a>";

}  // namespace

TEST(axmDocumentFactory, refuses_every_beginning_of_a_document) {
    const std::string whole = good_document;
    ASSERT_EQ(problem_of(whole), "");
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const std::vector<char> exact(whole.begin(), whole.begin() + static_cast<long>(size));
        EXPECT_NE(problem_of({exact.data(), size}), "") << size;
    }
}

TEST(axmDocumentFactory, refuses_more_than_eight_attributes_with_one_twice) {
    std::string text = "<a";
    for (int i = 0; i < 20; ++i) text += " b" + std::to_string(i) + "=''";
    EXPECT_EQ(problem_of(text + "/>"), "");
    EXPECT_NE(problem_of(text + " b3=''/>"), "");
    EXPECT_NE(problem_of(text + " b19=''/>"), "");
}

TEST(axmDocumentFactory, reads_a_hundred_thousand_attributes_in_linear_time) {
    std::string text = "<a";
    for (int i = 0; i < 100'000; ++i) text += " b" + std::to_string(i) + "=''";
    EXPECT_EQ(problem_of(text + "/>"), "");
}

TEST(axmDocumentFactory, reads_and_saves_a_million_levels) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/deep.xml";
    std::string text;
    for (int i = 0; i < 1'000'000; ++i) text += "<a>";
    for (int i = 0; i < 1'000'000; ++i) text += "</a>";
    const auto document = parsed(text);
    ASSERT_NE(document, nullptr);
    ASSERT_TRUE(axmDocumentFactory().save(*document, path_of(name)));
    EXPECT_LT(std::filesystem::file_size(name), text.size() + 100);
}

// The root is at level 1.
TEST(axmDocumentFactory, indents_a_document_of_up_to_64_levels_that_was_read_or_made) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/a.xml";
    const axmDocumentFactory factory;
    for (const int levels : {63, 64, 65}) {
        std::string text;
        for (int i = 0; i < levels; ++i) text += "<a>";
        for (int i = 0; i < levels; ++i) text += "</a>";
        const auto read = parsed(text);
        const auto made = factory.create(apString(L"a"));
        ASSERT_TRUE(read != nullptr && made != nullptr);
        std::shared_ptr<axmNode> deepest = made->root_element();
        for (int i = 1; i < levels; ++i) {
            const auto child = made->create_element(apString(L"a"));
            ASSERT_TRUE(deepest->append_child(child));
            deepest = child;
        }
        for (const auto& document : {read, made}) {
            ASSERT_TRUE(factory.save(*document, path_of(name)));
            const bool is_indented = contents_of(name).find("\n  <a>") != std::string::npos;
            EXPECT_EQ(is_indented, levels <= 64) << levels;
        }
    }
}

TEST(axmDocumentFactory, counts_a_text_as_a_level_of_its_own) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/a.xml";
    for (const int levels : {63, 64}) {
        std::string text;
        for (int i = 0; i < levels; ++i) text += "<a>";
        text += "x";
        for (int i = 0; i < levels; ++i) text += "</a>";
        const auto document = parsed(text);
        ASSERT_NE(document, nullptr);
        ASSERT_TRUE(axmDocumentFactory().save(*document, path_of(name)));
        const bool is_indented = contents_of(name).find("\n  <a>") != std::string::npos;
        EXPECT_EQ(is_indented, levels == 63) << levels;
    }
}

TEST(axmDocumentFactory, makes_blanks_of_white_space_in_values_but_not_of_references) {
    const auto document = parsed("<a b='1\t2\n3\r\n4&#9;5&#10;6'/>");
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(narrow(document->root_element()->attribute(L"b")), "1 2 3 4\t5\n6");
}

TEST(axmDocumentFactory, reads_a_million_elements_beside_each_other) {
    std::string text = "<a>";
    for (int i = 0; i < 1'000'000; ++i) text += "<b/>";
    const auto document = parsed(text + "</a>");
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(document->root_element()->child_elements().size(), 1'000'000U);
}

TEST(axmDocumentFactory, cuts_a_long_name_in_its_message) {
    const std::string name(100'000, 'n');
    EXPECT_EQ(problem_of("<a></" + name + ">"),
              "1:4 the end tag of \"" + std::string(40, 'n') + "...\"; expected </a>");
}

TEST(axmDocumentFactory, reports_the_place_of_the_root) {
    const auto document = parsed("<?xml version='1.0'?>\n<!-- \xC3\xA9 --> <a/>");
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(document->root_line_number(), 2);
    EXPECT_EQ(document->root_column_number(), 12);
}

TEST(axmDocumentFactory, clears_the_error_of_an_earlier_document) {
    axmParseError error;
    const axmDocumentFactory factory;
    EXPECT_EQ(factory.parse(apByteArray("<a>"), axmLoadOptions(), error), nullptr);
    EXPECT_NE(error.line_number(), 0);
    EXPECT_NE(factory.parse(apByteArray("<a/>"), axmLoadOptions(), error), nullptr);
    EXPECT_EQ(error.line_number(), 0);
    EXPECT_EQ(error.message(), apString(L""));
}

TEST(axmDocumentFactory, loads_a_file_as_it_parses_bytes) {
    const ScratchDirectory scratch;
    const std::string name = scratch.file("a.xml", good_document);
    axmParseError error;
    const auto document = axmDocumentFactory().load(path_of(name), axmLoadOptions(), error);
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(narrow(document->root_element()->attribute(L"b")), "1\n");
}

TEST(axmDocumentFactory, reports_a_file_that_cannot_be_read_without_a_line) {
    const ScratchDirectory scratch;
    axmParseError error;
    const axmDocumentFactory factory;
    EXPECT_EQ(factory.load(path_of(scratch.path() + "/none"), axmLoadOptions(), error), nullptr);
    EXPECT_EQ(narrow(error.message()), "the file cannot be opened: No such file or directory");
    EXPECT_EQ(error.line_number(), 0);
    EXPECT_EQ(factory.load(path_of(scratch.path()), axmLoadOptions(), error), nullptr);
    EXPECT_EQ(narrow(error.message()), "the file is not a regular file");
    EXPECT_EQ(factory.load(apPath(), axmLoadOptions(), error), nullptr);
    EXPECT_EQ(narrow(error.message()), "the name of the file is not valid");
}

TEST(axmDocumentFactory, does_not_wait_for_the_writer_of_a_pipe) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/pipe";
    ASSERT_EQ(::mkfifo(name.c_str(), 0600), 0);
    axmParseError error;
    EXPECT_EQ(axmDocumentFactory().load(path_of(name), axmLoadOptions(), error), nullptr);
    EXPECT_EQ(narrow(error.message()), "the file is not a regular file");
}

TEST(axmDocumentFactory, refuses_a_huge_file_before_it_is_read) {
    const ScratchDirectory scratch;
    const std::string name = scratch.file("huge.xml", "");
    std::filesystem::resize_file(name, axmDocumentFactory::max_document_size + 1);
    axmParseError error;
    EXPECT_EQ(axmDocumentFactory().load(path_of(name), axmLoadOptions(), error), nullptr);
    EXPECT_EQ(narrow(error.message()), "the file is too large; expected at most 1073741824 bytes");
}

TEST(axmDocumentFactory, is_the_service_xml_once_it_is_registered) {
    axmDocumentFactory::register_service();
    const auto* const factory = utService::get_instance().locate_service<axmDocumentFactory>(
        utServiceName("xml"), utServiceName());
    EXPECT_NE(factory, nullptr);
    utService::get_instance().register_service(utServiceName("xml"), nullptr);
}

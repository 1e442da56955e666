#include <apsl/apStringEncodings.h>

#include <ostream>
#include <string>
#include <type_traits>

#include "scoped_code_page.h"
#include "xml/conf_documents.h"

namespace {

std::string name_of(const apPath& path) {
    return std::string(nmkConfXMLBase::ut_str(path.path_name().text()).view());
}

struct NameCase {
    const char* name;
    int version;
    const char* file;
};

std::ostream& operator<<(std::ostream& stream, const NameCase& each) { return stream << each.name; }

class nmkConfXMLBase_conf_file_path : public testing::TestWithParam<NameCase> {};

TEST_P(nmkConfXMLBase_conf_file_path, has_the_version_in_its_name) {
    const nmkConfXMLBase base;
    EXPECT_EQ(name_of(base.conf_file_path("tool", GetParam().version)), GetParam().file);
}

const NameCase names[] = {
    {"version_9_is_09", 9, "./tool.09.xml"},
    {"version_10_is_10", 10, "./tool.10.xml"},
    {"version_1_is_01", 1, "./tool.01.xml"},
    {"version_100_is_100", 100, "./tool.100.xml"},
    {"the_highest_version", 2147483647, "./tool.2147483647.xml"},
    {"version_0_has_no_part", 0, "./tool.xml"},
    {"a_negative_version_has_no_part", -1, "./tool.xml"},
    {"the_lowest_version_has_no_part", -2147483647 - 1, "./tool.xml"},
};

INSTANTIATE_TEST_SUITE_P(all, nmkConfXMLBase_conf_file_path, testing::ValuesIn(names),
                         [](const auto& each) { return std::string(each.param.name); });

struct DirectoryCase {
    const char* name;
    utString directory;
    const char* file;
};

std::ostream& operator<<(std::ostream& stream, const DirectoryCase& each) {
    return stream << each.name;
}

class nmkConfXMLBase_set_conf_file_dir : public testing::TestWithParam<DirectoryCase> {};

TEST_P(nmkConfXMLBase_set_conf_file_dir, is_the_beginning_of_every_name) {
    const nmkConfXMLBase base;
    nmkConfXMLBase::set_conf_file_dir(GetParam().directory);
    EXPECT_EQ(name_of(base.conf_file_path("tool", 2)), GetParam().file);
    nmkConfXMLBase::set_conf_file_dir(utString());
}

const DirectoryCase directories[] = {
    {"without_one_files_are_in_the_current_directory", utString(), "./tool.02.xml"},
    {"an_empty_one_is_none", "", "./tool.02.xml"},
    {"a_missing_slash_is_supplied", "/etc/conf", "/etc/conf/tool.02.xml"},
    {"a_slash_stays", "/etc/conf/", "/etc/conf/tool.02.xml"},
    {"a_percent_sign_is_a_percent_sign", "/etc/%s%n", "/etc/%s%n/tool.02.xml"},
};

INSTANTIATE_TEST_SUITE_P(all, nmkConfXMLBase_set_conf_file_dir, testing::ValuesIn(directories),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace

TEST(nmkConfXMLBase, has_no_valid_path_for_a_name_that_cannot_be_decoded) {
    EXPECT_FALSE(nmkConfXMLBase().conf_file_path("t\xFF", 1).is_valid());
}

TEST(nmkConfXMLBase, has_its_virtual_operations_in_the_order_of_a_host) {
    static_assert(std::has_virtual_destructor_v<nmkConfXMLBase>);
    static_assert(sizeof(nmkConfXMLBase) == sizeof(void*));
    const nmkConfXMLBase base;
    EXPECT_EQ(base.xml_factory(), nullptr);
}

TEST(nmkConfXMLBase, converts_the_empty_strings) {
    EXPECT_FALSE(nmkConfXMLBase::ap_str("").is_valid());
    EXPECT_FALSE(nmkConfXMLBase::ap_str(utString()).is_valid());
    EXPECT_EQ(nmkConfXMLBase::ut_str(apString()), "");
    EXPECT_EQ(nmkConfXMLBase::ut_str(apString(L"")), "");
}

TEST(nmkConfXMLBase, converts_by_the_code_page_of_the_thread) {
    EXPECT_EQ(nmkConfXMLBase::ap_str("\xC3\xA9"), apString(L"\u00E9"));
    EXPECT_EQ(nmkConfXMLBase::ut_str(L"\u00E9"), "\xC3\xA9");
    const ScopedCodePage western(ap_code_page_western);
    EXPECT_EQ(nmkConfXMLBase::ap_str("\xE9"), apString(L"\u00E9"));
    EXPECT_EQ(nmkConfXMLBase::ut_str(L"\u00E9"), "\xE9");
}

TEST(nmkConfXMLBase_byte_array, is_utf8_without_a_nul_at_its_end) {
    EXPECT_EQ(nmkConfXMLBase::byte_array("a\xC3\xA9").view(), "a\xC3\xA9");
    EXPECT_TRUE(nmkConfXMLBase::byte_array("").is_empty());
    EXPECT_TRUE(nmkConfXMLBase::byte_array(utString()).is_empty());
    const ScopedCodePage western(ap_code_page_western);
    EXPECT_EQ(nmkConfXMLBase::byte_array("a\xE9").view(), "a\xC3\xA9");
}

TEST(nmkConfXMLBase_byte_array, hands_on_ill_formed_utf8_to_be_refused) {
    EXPECT_EQ(nmkConfXMLBase::byte_array("a\xFF").view(), "a\xFF");
}

TEST(nmkConfXMLBase_ap_case_compare, ignores_the_case_of_letters_of_any_script) {
    EXPECT_EQ(nmkConfXMLBase::ap_case_compare(L"Tool", L"tOOL"), 0);
    EXPECT_EQ(nmkConfXMLBase::ap_case_compare(L"\u00C9\u0416", L"\u00E9\u0436"), 0);
    EXPECT_LT(nmkConfXMLBase::ap_case_compare(L"tool", L"Tools"), 0);
    EXPECT_GT(nmkConfXMLBase::ap_case_compare(L"tool", L"Axis"), 0);
    EXPECT_EQ(nmkConfXMLBase::ap_case_compare(apString(), apString()), 0);
    EXPECT_LT(nmkConfXMLBase::ap_case_compare(apString(), L""), 0);
    EXPECT_GT(nmkConfXMLBase::ap_case_compare(L"", apString()), 0);
}

TEST(nmkConfXMLIOStatus, is_a_success_or_a_failure_with_its_kind_and_message) {
    const nmkConfXMLBase base;
    EXPECT_TRUE(base.success().ok());
    EXPECT_TRUE(base.success().message().is_empty());
    EXPECT_EQ(text_of(base.failure("why")), "1 why");
    EXPECT_EQ(text_of(base.failure(nmkConfXMLFileNotFound, "where")), "0 where");
    nmkConfXMLIOStatus copy = nmkConfXMLIOStatusSuccessTag;
    EXPECT_TRUE(copy.ok());
    copy = base.failure("why");
    EXPECT_EQ(text_of(copy), "1 why");
}

TEST_F(ConfTest, xml_factory_is_the_service_of_the_host) {
    const nmkConfXMLBase base;
    EXPECT_NE(base.xml_factory(), nullptr);
    utService other;
    utService::get_instance().register_service(utServiceName("xml"), &other);
    EXPECT_EQ(base.xml_factory(), nullptr);
}

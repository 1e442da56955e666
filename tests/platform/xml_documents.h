// xml_documents.h: shorthands of the tests of documents.
#pragma once

#include <absxml/axmDocumentFactory.h>
#include <apsl/apCodePage.h>

#include <memory>
#include <string>
#include <string_view>

namespace nmk_xml_tests {

inline std::string narrow(const apString& text) {
    int is_exact = 0;
    return ap_encode(ap_code_page_utf8, text.view(), is_exact);
}

inline apString wide(std::string_view utf8) {
    int is_exact = 0;
    return apString(ap_decode(ap_code_page_utf8, utf8, is_exact));
}

inline apPath path_of(const std::string& name) { return apPath(wide(name)); }

inline std::shared_ptr<axmDocument> parsed(std::string_view text) {
    axmParseError error;
    return axmDocumentFactory().parse(apByteArray(text), axmLoadOptions(), error);
}

/// "3:14 message"; empty where the text is read.
inline std::string problem_of(std::string_view text) {
    axmParseError error;
    const auto document = axmDocumentFactory().parse(apByteArray(text), axmLoadOptions(), error);
    if (document != nullptr) return {};
    return std::to_string(error.line_number()) + ":" + std::to_string(error.column_number()) + " " +
           narrow(error.message());
}

}  // namespace nmk_xml_tests

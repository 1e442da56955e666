#include <apsl/apStringEncodings.h>
#include <nmktoolbox/xml/nmkConfXMLWriter.h>
#include <utils/utAssert.h>

#include <cstdlib>
#include <string>

namespace {

// Wide text of the whole text; invalid where something would be substituted. The null string gives
// the empty text.
apString exact_text(const utString& text) {
    if (text.is_empty()) return L"";
    int is_exact = 0;
    apString wide = apStringCRTEncoding().decode(text, is_exact);
    return is_exact != 0 ? wide : apString();
}

// The lines of a developer's report: which file, what is wrong, and where.
apString report_of(const apPath& path, const axmParseError& error) {
    std::wstring text = L"Filename: ";
    text += path.path_name().text().view();
    text += L"\nError: ";
    text += error.message().view();
    text += L"\nLine: " + std::to_wstring(error.line_number());
    text += L"\nColumn: " + std::to_wstring(error.column_number());
    return apString(std::move(text));
}

// Reports `text` in front of a text from outside, which is never taken for a format.
void assert_with(const char* text, const utString& outside, int line, const char* function) {
    const std::string message = text + std::string(outside.view());
    ut_assert_failed(message.c_str(), __FILE__, line, function);
}

}  // namespace

nmkConfXMLWriter::nmkConfXMLWriter(int version) : m_doc_version(version) {}

nmkConfXMLWriter::~nmkConfXMLWriter() = default;

std::shared_ptr<axmDocument> nmkConfXMLWriter::create(const utString& root_name) const {
    const auto factory = xml_factory();
    if (factory == nullptr) return nullptr;
    auto document = factory->create(exact_text(root_name));
    if (document != nullptr) document->root_element()->set_attribute(L"version", m_doc_version);
    return document;
}

std::shared_ptr<axmNode> nmkConfXMLWriter::add_element(std::shared_ptr<axmNode> parent,
                                                       const utString& tag) const {
    if (parent == nullptr) return nullptr;
    const std::shared_ptr<axmNode> element =
        parent->owner_document()->create_element(exact_text(tag));
    return parent->append_child(element) ? element : nullptr;
}

std::shared_ptr<axmNode> nmkConfXMLWriter::add_content(std::shared_ptr<axmNode> parent,
                                                       const utString& text) const {
    if (parent == nullptr) return nullptr;
    const std::shared_ptr<axmNode> node =
        parent->owner_document()->create_text_node(exact_text(text));
    return parent->append_child(node) ? node : nullptr;
}

nmkConfXMLIOStatus nmkConfXMLWriter::save(std::shared_ptr<axmDocument>& document,
                                          const apPath& path) const {
    // Deliberate: any value counts, "" and "0" too, so that a developer need not remember one. It
    // is asked for at each save, so that a debugger can switch it on.
    const bool do_check = std::getenv("NMK_CHECK_XML_WRITING") != nullptr;
    const auto factory = xml_factory();
    const bool is_written =
        factory != nullptr && document != nullptr && factory->save(*document, path);
    if (!is_written) {
        UT_ASSERT(!do_check, "Should not fail to write an XML file.");
        return failure("Failed to write file");
    }
    if (do_check) debug_check(path);
    return success();
}

void nmkConfXMLWriter::debug_check(const apPath& path) const {
    if (!path.exists()) {
        assert_with("Should have written the file: ", ut_str(path.path_name().text()), __LINE__,
                    __func__);
        return;
    }
    axmParseError error;
    if (xml_factory()->load(path, axmLoadOptions(axm_validate_none), error) != nullptr) return;
    int is_exact = 0;
    const utString report = apStringCRTEncoding().encode(report_of(path, error), is_exact);
    UT_ASSERT(is_exact != 0, "Should not fail to convert string");
    assert_with("Wrote invalid xml file: ", report, __LINE__, __func__);
}

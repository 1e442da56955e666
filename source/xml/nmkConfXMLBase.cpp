#include <apsl/apCaseComparer.h>
#include <apsl/apCodePage.h>
#include <apsl/apStringEncodings.h>
#include <nmktoolbox/xml/nmkConfXMLBase.h>

std::shared_ptr<axmDocumentFactory> nmkConfXMLBase::xml_factory() const {
    auto* const factory = utService::get_instance().locate_service<axmDocumentFactory>(
        utServiceName("xml"), utServiceName());
    if (factory == nullptr) return nullptr;
    // Borrowed: the host that registered the service deletes it.
    return {factory, [](axmDocumentFactory*) {}};
}

nmkConfXMLBase::~nmkConfXMLBase() = default;

void nmkConfXMLBase::set_conf_file_dir(const utString& directory) { conf_file_dir() = directory; }

apString nmkConfXMLBase::ap_str(const utString& text) {
    if (text.is_empty()) return {};
    int status = 0;
    return apStringCRTEncoding().decode(text, status);
}

utString nmkConfXMLBase::ut_str(const apString& text) {
    if (!text.is_valid()) return "";
    int status = 0;
    return apStringCRTEncoding().encode(text, status);
}

apByteArray nmkConfXMLBase::byte_array(const utString& text) {
    if (ap_thread_code_page() == ap_code_page_utf8) return apByteArray(text.view());
    int status = 0;
    return apByteArray(apStringUTF8Encoding().encode(ap_str(text), status).view());
}

int nmkConfXMLBase::ap_case_compare(const apString& left, const apString& right) {
    return apCaseComparer(apStringCRTEncoding()).compare(left, right);
}

apPath nmkConfXMLBase::conf_file_path(const utString& base_name, int version) const {
    const utString& directory = conf_file_dir();
    utString name(directory.is_empty() ? std::string_view("./") : directory.view());
    if (name[name.length() - 1] != '/') name << '/';
    name << base_name;
    if (version > 0) name << (version < 10 ? ".0" : ".") << version;
    name << ".xml";
    int is_exact = 0;
    const apString wide = apStringCRTEncoding().decode(name, is_exact);
    return is_exact != 0 ? apPath(wide) : apPath();
}

nmkConfXMLIOStatus nmkConfXMLBase::success() const { return nmkConfXMLIOStatusSuccessTag; }

nmkConfXMLIOStatus nmkConfXMLBase::failure(const utString& message) const {
    return failure(nmkConfXMLBadDocument, message);
}

nmkConfXMLIOStatus nmkConfXMLBase::failure(nmkConfXMLIOStatusFailure kind,
                                           const utString& message) const {
    return {kind, message};
}

utString& nmkConfXMLBase::conf_file_dir() {
    // Never deleted: documents may be saved while the process ends.
    // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): without memory there are no documents
    static auto* const directory = new utString;
    return *directory;
}

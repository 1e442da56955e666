// document_fuzzer: any bytes as a document.
//
// What is read has a root, and is saved to a text that is read to the same text again. What is
// refused has a place, and a reason of one line.

#include <absxml/axmDocumentFactory.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "file_contents.h"
#include "platform/xml_documents.h"
#include "run_directory.h"

namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

std::string saved(const axmDocument& document) {
    const std::string name = nmk_fuzz::run_directory() + "/document.xml";
    require(axmDocumentFactory().save(document, nmk_xml_tests::path_of(name)));
    return contents_of(name);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    axmParseError error;
    const apByteArray bytes(std::string_view(reinterpret_cast<const char*>(data), size));
    const auto document = axmDocumentFactory().parse(bytes, axmLoadOptions(), error);
    if (document == nullptr) {
        require(error.line_number() > 0 && error.column_number() > 0);
        require(!error.message().is_empty());
        return 0;
    }
    require(document->root_element()->tag().length() > 0);
    const std::string text = saved(*document);
    const auto again = nmk_xml_tests::parsed(text);
    require(again != nullptr && saved(*again) == text);
    require(again->root_element()->text() == document->root_element()->text());
    return 0;
}

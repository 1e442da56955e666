// document_fuzzer: any bytes as a document.
//
// What is read has a root, and is saved to a text that is read to the same text again. What is
// refused has a place, and a reason of one line. The reader of configurations takes the same texts.

#include <absxml/axmDocumentFactory.h>
#include <nmktoolbox/xml/nmkConfXMLReader.h>

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

struct Reader : nmkConfXMLReader {
    using nmkConfXMLReader::get_attr;
    using nmkConfXMLReader::load_xml;
    using nmkConfXMLReader::nmkConfXMLReader;
    using nmkConfXMLReader::tag_name_matches;
    using nmkConfXMLReader::validate_version;
};

void read_as_configuration(std::string_view bytes, bool is_document) {
    axmDocumentFactory::register_service();
    constexpr int least = 2;
    const Reader reader(least, 5);
    std::shared_ptr<axmDocument> document;
    require(reader.load_xml(utString(bytes), document).ok() == is_document);
    require((document != nullptr) == is_document);
    if (!is_document) return;
    const auto root = document->root_element();
    int version = 0;
    const bool is_valid = reader.validate_version(root, version).ok();
    require(!is_valid || (version >= least && version <= 5));
    require(!reader.get_attr(root, "version").is_empty() || version == least - 1);
    require(reader.tag_name_matches(root, nmkConfXMLBase::ut_str(root->tag())));
}

std::string saved(const axmDocument& document) {
    const std::string name = nmk_fuzz::run_directory() + "/document.xml";
    require(axmDocumentFactory().save(document, nmk_xml_tests::path_of(name)));
    return contents_of(name);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    axmParseError error;
    const std::string_view text_of_input(reinterpret_cast<const char*>(data), size);
    const apByteArray bytes(text_of_input);
    const auto document = axmDocumentFactory().parse(bytes, axmLoadOptions(), error);
    read_as_configuration(text_of_input, document != nullptr);
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

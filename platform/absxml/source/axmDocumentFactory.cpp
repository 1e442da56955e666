#include <absxml/axmDocumentFactory.h>

#include <exception>
#include <new>
#include <string>
#include <utility>

#include "document_check.h"
#include "document_file.h"
#include "document_text.h"
#include "document_writer.h"
#include "malformed.h"
#include "tree.h"

namespace {

using nmk_absxml::Malformed;
using nmk_absxml::Place;

std::unique_ptr<nmk_absxml::Tree> tree_of(std::string& text) {
    const std::size_t declaration_length = nmk_absxml::make_utf8(text);
    const auto facts = nmk_absxml::check_document(text, declaration_length);
    const Place root = nmk_absxml::place_of(text, facts.root_offset);
    return std::make_unique<nmk_absxml::Tree>(std::move(text), facts, root);
}

axmParseError error_of(const std::string& message, Place place) {
    return axmParseError(nmk_absxml::wide_of(message.c_str()), place.line, place.column);
}

// `read` fills the text; what it throws is about the file as a whole.
template <class Read>
std::shared_ptr<axmDocument> document_of(const Read& read, axmParseError& error) {
    error = axmParseError();
    std::string text;
    bool is_read = false;
    try {
        read(text);
        is_read = true;
        return std::make_shared<axmDocument>(tree_of(text));
    } catch (const Malformed& malformed) {
        error = error_of(malformed.message,
                         is_read ? nmk_absxml::place_of(text, malformed.offset) : Place());
    } catch (const std::bad_alloc&) {
        error = error_of("the document does not fit into memory", {});
    } catch (const std::exception& failure) {
        error = error_of(std::string("the document cannot be read: ") + failure.what(), {});
    }
    return nullptr;
}

}  // namespace

axmDocumentFactory::~axmDocumentFactory() = default;

void axmDocumentFactory::register_service() {
    // Never deleted: a document may be read while the process ends.
    // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): without memory nothing can be registered
    static auto* const factory = new axmDocumentFactory;
    utService::get_instance().register_service(utServiceName("xml"), factory);
}

std::shared_ptr<axmDocument> axmDocumentFactory::load(const apPath& path, const axmLoadOptions&,
                                                      axmParseError& error) const {
    return document_of(
        [&path](std::string& text) {
            const utString name = path.narrow();
            if (name.is_null()) throw Malformed{0, "the name of the file is not valid"};
            text = nmk_absxml::read_file(name.c_str(), max_document_size);
        },
        error);
}

std::shared_ptr<axmDocument> axmDocumentFactory::parse(const apByteArray& bytes,
                                                       const axmLoadOptions&,
                                                       axmParseError& error) const {
    return document_of(
        [&bytes](std::string& text) {
            if (bytes.view().size() > max_document_size)
                throw Malformed{0, "the document is too large"};
            text = bytes.view();
        },
        error);
}

std::shared_ptr<axmDocument> axmDocumentFactory::create(const apString& root_name) const {
    auto document = std::make_shared<axmDocument>(std::make_unique<nmk_absxml::Tree>());
    const auto root = document->create_element(root_name);
    if (root == nullptr) return nullptr;
    nmk_absxml::Tree& tree = document->tree();
    tree.document().prepend_move(tree.detached().first_child());
    return document;
}

bool axmDocumentFactory::save(const axmDocument& document, const apPath& path) const {
    const utString name = path.narrow();
    if (name.is_null()) return false;
    try {
        return nmk_absxml::write_document(document.tree(), name.c_str()) == 0;
    } catch (const std::exception&) {
        return false;
    }
}

// document_check.h: whether a text is a well-formed document by XML 1.0, fifth edition.
//
// pugixml, which builds the tree, is lenient on purpose: it takes several roots, an attribute that
// is given twice, unknown entities, "--" in comments and ill-formed UTF-8. So the text is checked
// before, in one pass that keeps the open elements in a list of its own and never recurses.
#pragma once

#include <cstddef>
#include <string>

namespace nmk_absxml {

struct DocumentFacts {
    std::size_t root_offset = 0;

    /// White space beside a comment or a CDATA section is part of the text of an element without
    /// child elements, so a reader that passes over white space between markup would lose some.
    bool has_space_beside_markup = false;

    /// No node is deeper; the root is at depth 1.
    std::size_t depth = 0;
};

/// Checks the text, which is in UTF-8 and has a declaration of so many bytes. Throws Malformed.
DocumentFacts check_document(const std::string& text, std::size_t declaration_length);

}  // namespace nmk_absxml

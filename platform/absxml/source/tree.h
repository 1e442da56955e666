// tree.h: the tree behind a document, and the text from which it was built.
#pragma once

#include <apsl/apString.h>

#include <optional>
#include <pugixml.hpp>
#include <string>

#include "document_check.h"
#include "malformed.h"

namespace nmk_absxml {

/// The tree of pugixml. Its nodes cannot be without a parent, so one that is not yet appended is a
/// child of `detached`, which is never written.
class Tree {
  public:
    Tree() = default;

    /// The tree of a text in UTF-8 that is well-formed; it is kept, and the tree refers to it.
    /// Throws Malformed where pugixml runs out of memory.
    Tree(std::string text, const DocumentFacts& facts, Place root_place);

    pugi::xml_document& document() noexcept { return m_document; }
    const pugi::xml_document& document() const noexcept { return m_document; }

    /// Null while nothing was created.
    pugi::xml_node detached() const noexcept { return m_detached; }
    /// For one node that is created.
    pugi::xml_node make_detached();

    pugi::xml_node root() const;

    bool keeps_space() const noexcept { return m_keeps_space; }

    /// No node is deeper; the root is at depth 1. Each node that is created makes it one more,
    /// since only such nodes can be appended anywhere.
    std::size_t max_depth() const noexcept { return m_max_depth; }

    Place root_place() const noexcept { return m_root_place; }

  private:
    std::string m_text;
    pugi::xml_document m_document;
    pugi::xml_node m_detached;
    bool m_keeps_space = false;
    std::size_t m_max_depth = 0;
    Place m_root_place;
};

/// The text in UTF-8; empty for the invalid string and for half a surrogate pair.
std::optional<std::string> utf8_of(const apString& text);
apString wide_of(const char* utf8);

}  // namespace nmk_absxml

// axmDocument: a tree of elements and texts with one root.
//
// Made by an axmDocumentFactory. For one thread at a time.
#pragma once

#include <absxml/axmElement.h>

#include <memory>

namespace nmk_absxml {
class Tree;
}

class UT_EXPORT axmDocument : public std::enable_shared_from_this<axmDocument> {
  public:
    /// For the library's own use: takes the tree, which has a root element.
    explicit axmDocument(std::unique_ptr<nmk_absxml::Tree> tree);
    axmDocument(const axmDocument&) = delete;
    axmDocument& operator=(const axmDocument&) = delete;
    ~axmDocument();

    std::shared_ptr<axmElement> root_element();

    /// Where the root element began in the text that was read, both from 1; 0 for a document that
    /// was created.
    int root_line_number() const noexcept;
    int root_column_number() const noexcept;

    /// A new element without a parent; null where `tag` is not a name of XML.
    std::shared_ptr<axmElement> create_element(const apString& tag);

    /// A new text without a parent; null for the invalid string, and where the text holds what XML
    /// cannot (a control character, half a surrogate pair). An empty text is a text.
    std::shared_ptr<axmNode> create_text_node(const apString& text);

    /// For the library's own use.
    nmk_absxml::Tree& tree() const noexcept { return *m_tree; }

  private:
    std::unique_ptr<nmk_absxml::Tree> m_tree;
};

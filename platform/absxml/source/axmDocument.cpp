#include <absxml/axmDocument.h>

#include <utility>

#include "tree.h"
#include "xml_characters.h"

axmDocument::axmDocument(std::unique_ptr<nmk_absxml::Tree> tree) : m_tree(std::move(tree)) {}

axmDocument::~axmDocument() = default;

std::shared_ptr<axmElement> axmDocument::root_element() {
    return std::make_shared<axmElement>(shared_from_this(), m_tree->root().internal_object());
}

int axmDocument::root_line_number() const noexcept { return m_tree->root_place().line; }

int axmDocument::root_column_number() const noexcept { return m_tree->root_place().column; }

std::shared_ptr<axmElement> axmDocument::create_element(const apString& tag) {
    const auto name = nmk_absxml::utf8_of(tag);
    if (!name || !nmk_absxml::is_name(*name)) return nullptr;
    pugi::xml_node element = m_tree->make_detached().append_child(name->c_str());
    if (!element) return nullptr;
    return std::make_shared<axmElement>(shared_from_this(), element.internal_object());
}

std::shared_ptr<axmNode> axmDocument::create_text_node(const apString& text) {
    const auto value = nmk_absxml::utf8_of(text);
    if (!value || !nmk_absxml::is_allowed_text(*value)) return nullptr;
    pugi::xml_node node = m_tree->make_detached().append_child(pugi::node_pcdata);
    if (!node.set_value(value->c_str())) return nullptr;
    return std::make_shared<axmNode>(shared_from_this(), node.internal_object());
}

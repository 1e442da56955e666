#include <absxml/axmDocument.h>
#include <absxml/axmNode.h>

#include <string>
#include <utility>

#include "tree.h"
#include "xml_characters.h"

namespace {

using nmk_absxml::utf8_of;

bool is_detached(const nmk_absxml::Tree& tree, pugi::xml_node node) {
    return tree.detached() && node.parent() == tree.detached();
}

}  // namespace

axmNode::axmNode(std::shared_ptr<axmDocument> document, pugi::xml_node_struct* part)
    : m_document(std::move(document)), m_part(part) {}

axmNode::~axmNode() = default;

bool axmNode::append_child(const std::shared_ptr<axmNode>& child) {
    if (child == nullptr || child->m_document != m_document) return false;
    pugi::xml_node parent(m_part);
    const pugi::xml_node node(child->m_part);
    if (parent.type() != pugi::node_element || !is_detached(m_document->tree(), node)) return false;
    return static_cast<bool>(parent.append_move(node));
}

apString axmNode::attribute(const apString& name) const {
    const auto utf8 = utf8_of(name);
    if (!utf8 || utf8->find('\0') != utf8->npos) return {};
    const pugi::xml_attribute found = pugi::xml_node(m_part).attribute(utf8->c_str());
    return found ? nmk_absxml::wide_of(found.value()) : apString();
}

bool axmNode::set_attribute(const apString& name, const apString& value) {
    const auto name_in_utf8 = utf8_of(name);
    const auto value_in_utf8 = utf8_of(value);
    pugi::xml_node node(m_part);
    const bool is_possible = node.type() == pugi::node_element && name_in_utf8 && value_in_utf8 &&
                             nmk_absxml::is_name(*name_in_utf8) &&
                             nmk_absxml::is_allowed_text(*value_in_utf8);
    if (!is_possible) return false;
    pugi::xml_attribute attribute = node.attribute(name_in_utf8->c_str());
    if (!attribute) attribute = node.append_attribute(name_in_utf8->c_str());
    return attribute.set_value(value_in_utf8->c_str());
}

bool axmNode::set_attribute(const apString& name, int value) {
    return set_attribute(name, apString(std::to_wstring(value)));
}

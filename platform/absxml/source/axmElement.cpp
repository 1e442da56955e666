#include <absxml/axmElement.h>

#include <string>

#include "tree.h"
#include "xml_characters.h"

namespace {

bool has_child_elements(pugi::xml_node element) {
    return static_cast<bool>(element.find_child(
        [](pugi::xml_node child) { return child.type() == pugi::node_element; }));
}

bool is_space_alone(pugi::xml_node text) {
    return text.type() == pugi::node_pcdata && *nmk_absxml::skip_spaces(text.value()) == '\0';
}

}  // namespace

axmElement::~axmElement() = default;

apString axmElement::tag() const { return nmk_absxml::wide_of(pugi::xml_node(part()).name()); }

std::vector<std::shared_ptr<axmElement>> axmElement::child_elements() const {
    std::vector<std::shared_ptr<axmElement>> elements;
    for (const pugi::xml_node child : pugi::xml_node(part()).children()) {
        if (child.type() != pugi::node_element) continue;
        elements.push_back(std::make_shared<axmElement>(owner_document(), child.internal_object()));
    }
    return elements;
}

apString axmElement::text() const {
    const bool is_leaf = !has_child_elements(pugi::xml_node(part()));
    std::string text;
    for (const pugi::xml_node child : pugi::xml_node(part()).children()) {
        const bool is_text = child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata;
        if (is_text && (is_leaf || !is_space_alone(child))) text += child.value();
    }
    return nmk_absxml::wide_of(text.c_str());
}

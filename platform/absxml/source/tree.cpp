#include "tree.h"

#include <apsl/apCodePage.h>

#include <utility>

namespace nmk_absxml {

namespace {

constexpr unsigned parse_flags = pugi::parse_default | pugi::parse_comments | pugi::parse_pi;

}  // namespace

Tree::Tree(std::string text, const DocumentFacts& facts, Place root_place)
    : m_text(std::move(text)),
      m_keeps_space(facts.has_space_beside_markup),
      m_max_depth(facts.depth),
      m_root_place(root_place) {
    const unsigned flags =
        parse_flags | (m_keeps_space ? pugi::parse_ws_pcdata : pugi::parse_ws_pcdata_single);
    const pugi::xml_parse_result result =
        m_document.load_buffer_inplace(m_text.data(), m_text.size(), flags, pugi::encoding_utf8);
    if (!result || !root()) throw Malformed{0, "the document does not fit into memory"};
}

pugi::xml_node Tree::make_detached() {
    ++m_max_depth;
    if (!m_detached) m_detached = m_document.append_child("detached");
    return m_detached;
}

pugi::xml_node Tree::root() const {
    for (const pugi::xml_node node : m_document.children()) {
        if (node.type() == pugi::node_element) return node;
    }
    return {};
}

std::optional<std::string> utf8_of(const apString& text) {
    if (!text.is_valid()) return std::nullopt;
    int is_exact = 0;
    std::string utf8 = ap_encode(ap_code_page_utf8, text.view(), is_exact);
    if (is_exact == 0) return std::nullopt;
    return utf8;
}

apString wide_of(const char* utf8) {
    int is_exact = 0;
    return apString(ap_decode(ap_code_page_utf8, utf8, is_exact));
}

}  // namespace nmk_absxml

// axmElement: an element of a document.
#pragma once

#include <absxml/axmNode.h>

#include <vector>

class UT_EXPORT axmElement : public axmNode {
  public:
    using axmNode::axmNode;
    ~axmElement() override;

    /// The element's name.
    apString tag() const;

    /// The elements directly below, in their order; texts and comments are left out.
    std::vector<std::shared_ptr<axmElement>> child_elements() const;

    /// The texts directly below, joined. That of an element without child elements is exactly what
    /// was written, white space included; beside child elements, texts of white space alone are
    /// left out.
    apString text() const;
};

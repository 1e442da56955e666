// axmNode: a part of a document: an element or a text.
//
// A node is a handle: it keeps its document alive, and two handles of one part see the same. For
// one thread at a time, as its document is.
#pragma once

#include <apsl/apString.h>
#include <utils/utExport.h>

#include <memory>

class axmDocument;

namespace pugi {
struct xml_node_struct;
}

class UT_EXPORT axmNode {
  public:
    /// For the library's own use: a part of `document`, neither of them null.
    axmNode(std::shared_ptr<axmDocument> document, pugi::xml_node_struct* part);
    axmNode(const axmNode&) = delete;
    axmNode& operator=(const axmNode&) = delete;
    virtual ~axmNode();

    /// The document of which this is a part; never null.
    const std::shared_ptr<axmDocument>& owner_document() const noexcept { return m_document; }

    /// Appends a node that its document has created and that has no parent yet. Returns false, and
    /// nothing changes, for null, a node of another document, one that has a parent, one that holds
    /// this element, and where this is a text.
    bool append_child(const std::shared_ptr<axmNode>& child);

    /// The value of the attribute; invalid where there is none of that name, as for a text.
    apString attribute(const apString& name) const;

    /// Sets the attribute in its place among the others, or adds it behind them. Returns false, and
    /// nothing changes, where this is a text, the name is not a name of XML, or the value holds
    /// what XML cannot (a control character, half a surrogate pair).
    bool set_attribute(const apString& name, const apString& value);

    /// The same with the decimal digits of a number.
    bool set_attribute(const apString& name, int value);

  protected:
    pugi::xml_node_struct* part() const noexcept { return m_part; }

  private:
    std::shared_ptr<axmDocument> m_document;
    pugi::xml_node_struct* m_part;
};

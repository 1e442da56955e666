// nmkConfXMLWriter: creates and saves the configuration document of one version.
//
// A derived class adds the content:
//
//     std::shared_ptr<axmDocument> document = create("machine");
//     const std::shared_ptr<axmNode> axis = add_element(document->root_element(), "axis");
//     add_content(axis, "A");
//     return save(document, conf_file_path("machine", 2));
#pragma once

#include <nmktoolbox/xml/nmkConfXMLBase.h>

class NMKTOOLBOX_EXPORT nmkConfXMLWriter : public nmkConfXMLBase {
  public:
    /// Writes documents of this version.
    explicit nmkConfXMLWriter(int version);
    ~nmkConfXMLWriter() override;

  protected:
    /// A document whose root element has this name and the attribute "version"; null where the name
    /// is not a name of XML, and without a service "xml".
    std::shared_ptr<axmDocument> create(const utString& root_name) const;

    /// Appends an element or a text, and returns it; null, and nothing is appended, where the
    /// parent is null or a text, or the tag or the text cannot be written in XML (a control
    /// character, bytes that the thread's code page cannot decode).
    std::shared_ptr<axmNode> add_element(std::shared_ptr<axmNode> parent,
                                         const utString& tag) const;
    std::shared_ptr<axmNode> add_content(std::shared_ptr<axmNode> parent,
                                         const utString& text) const;

    /// Writes the document to the file, or leaves it as it was and returns "Failed to write file",
    /// as for a null document and without a service "xml".
    ///
    /// While the environment variable NMK_CHECK_XML_WRITING is set, even to nothing, a failure is
    /// also reported to the assertion service, and the file is read back and reported there where
    /// it is not a document.
    nmkConfXMLIOStatus save(std::shared_ptr<axmDocument>& document, const apPath& path) const;

  private:
    void debug_check(const apPath& path) const;

    int m_doc_version;
};

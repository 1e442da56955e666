// nmkConfXMLReader: reads the configuration documents of a range of versions.
//
// A derived class reads the content:
//
//     std::shared_ptr<axmDocument> document;
//     const nmkConfXMLIOStatus status = load_from_default("machine", document);
//     if (!status.ok()) return status;
//     const std::shared_ptr<axmElement> root = document->root_element();
//     int version = 0;
//     return validate_version(root, version);
#pragma once

#include <nmktoolbox/xml/nmkConfXMLBase.h>

class NMKTOOLBOX_EXPORT nmkConfXMLReader : public nmkConfXMLBase {
  public:
    /// Reads versions from `min_version` to `max_version`, both included.
    nmkConfXMLReader(int min_version, int max_version);
    ~nmkConfXMLReader() override;

  protected:
    /// Reads the document of a file. A file that does not exist is "File not found." and leaves
    /// `document` as it was; one that is not a document, or no service "xml", is "Not a valid XML
    /// file." and makes it null.
    nmkConfXMLIOStatus load(const apPath& path, std::shared_ptr<axmDocument>& document) const;

    /// Loads the file of the newest version in the range that exists, even if it turns out to be
    /// broken; else the file without a version in its name. Later versions are not looked for.
    nmkConfXMLIOStatus load_from_default(const utString& base_name,
                                         std::shared_ptr<axmDocument>& document) const;

    /// Reads a document from a text. An empty one is "Invalid xml content" and leaves `document` as
    /// it was; any other failure is "Unable to load content into document" and makes it null.
    nmkConfXMLIOStatus load_xml(const utString& text, std::shared_ptr<axmDocument>& document) const;

    /// Reads the attribute "version" and compares it with the range.
    ///
    ///   version  the version, also when it is out of range; min_version - 1 where there is none
    ///   returns  success; "Version attribute missing", also for an empty attribute and a null
    ///            node; "Incompatible version." for one out of range, or not a whole number
    ///
    /// White space around the number is allowed, any other text is not.
    nmkConfXMLIOStatus validate_version(std::shared_ptr<axmNode> node, int& version) const;

    /// The value of an attribute; empty where there is none, and for a null node.
    utString get_attr(std::shared_ptr<axmNode> node, const utString& name) const;

    /// True where the element's name is `name`, byte for byte; false for a null element.
    bool tag_name_matches(std::shared_ptr<axmElement> element, const utString& name) const;

  private:
    int m_min_version;
    int m_max_version;
};

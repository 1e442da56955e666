// nmkConfXMLBase: what readers and writers of configuration documents share.
//
// A document of a version lies in a file of its own, whose name has the version. The content of a
// document belongs to the derived class. Nothing throws: reading and writing report a
// nmkConfXMLIOStatus.
//
// The configuration directory is one for the process; set it at start-up, while no other thread
// uses it.
#pragma once

#include <absxml/axmDocumentFactory.h>
#include <apsl/apByteArray.h>
#include <apsl/apPath.h>
#include <apsl/apString.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/xml/nmkConfXMLIOStatus.h>
#include <utils/utString.h>

#include <memory>

class NMKTOOLBOX_EXPORT nmkConfXMLBase {
  public:
    /// The service "xml", which the host owns; null where there is none. All reading and writing
    /// asks this, so a derived class may return a factory of its own.
    virtual std::shared_ptr<axmDocumentFactory> xml_factory() const;

    virtual ~nmkConfXMLBase();

    /// The directory of all configuration documents; a missing "/" at its end is supplied. Null and
    /// the empty text mean "./".
    static void set_conf_file_dir(const utString& directory);

    /// Between narrow text, which is in the thread's code page, and wide text. The null string and
    /// the empty text give the invalid string; that gives the empty text.
    static apString ap_str(const utString& text);
    static utString ut_str(const apString& text);

    /// The text in UTF-8, without a nul at its end. Where narrow text is UTF-8 already its bytes
    /// are handed on as they are, so that a reader can refuse ill-formed ones.
    static apByteArray byte_array(const utString& text);

    /// Negative, 0 or positive as `left` sorts before, with or after `right` without regard to the
    /// case of letters; the invalid string sorts before all others.
    static int ap_case_compare(const apString& left, const apString& right);

    /// The directory, the name, the version as ".01" to ".09", ".10" and so on (none for 0 and
    /// below), and ".xml". Not valid where the name cannot be decoded exactly.
    apPath conf_file_path(const utString& base_name, int version) const;

    nmkConfXMLIOStatus success() const;

    /// A failure of the kind nmkConfXMLBadDocument.
    nmkConfXMLIOStatus failure(const utString& message) const;
    nmkConfXMLIOStatus failure(nmkConfXMLIOStatusFailure kind, const utString& message) const;

  private:
    static utString& conf_file_dir();
};

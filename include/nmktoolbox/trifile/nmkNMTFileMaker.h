// nmkNMTFileMaker: decides where the data of a model come from, a named file or the clipboard.
//
// A name that is null, or has no base ("/models/.nmt"), means the clipboard: the extension has
// chosen the format already, and the name has no other purpose.
#pragma once

#include <nmknmt/nmkNMTFile.h>
#include <nmktoolbox/export.h>

#include <memory>

class NMKTOOLBOX_EXPORT nmkNMTFileMaker {
  public:
    /// The name is borrowed.
    explicit nmkNMTFileMaker(char const* filename) noexcept : m_filename(filename) {}
    nmkNMTFileMaker(const nmkNMTFileMaker&) = default;
    nmkNMTFileMaker& operator=(const nmkNMTFileMaker&) = default;
    virtual ~nmkNMTFileMaker();

    /// A file object: what create_basic_nmt_file makes, or one over the clipboard's data of the
    /// format "nmt". Null where it would be the clipboard and the host has none. A name without a
    /// base is set to null for good.
    std::unique_ptr<nmkNMTFile> create_nmt_file();

  protected:
    char const* filename() const noexcept { return m_filename; }

    /// Opens the named file for reading; a derived class may supply another object, or null.
    virtual std::unique_ptr<nmkNMTFile> create_basic_nmt_file();

  private:
    char const* m_filename;
};

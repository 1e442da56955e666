// nmkConfXMLIOStatus: how reading or writing a configuration document ended.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// Picks the constructor of a success. The value is not read.
enum nmkConfXMLIOStatusSuccess { nmkConfXMLIOStatusSuccessTag };

enum nmkConfXMLIOStatusFailure : int {
    nmkConfXMLFileNotFound = 0,  // "File not found."
    nmkConfXMLBadDocument = 1    // every other failure
};

class NMKTOOLBOX_EXPORT nmkConfXMLIOStatus {
  public:
    /// Succeeded, with an empty message.
    nmkConfXMLIOStatus(nmkConfXMLIOStatusSuccess);

    /// Failed.
    nmkConfXMLIOStatus(nmkConfXMLIOStatusFailure failure_kind, const utString& message);

    bool ok() const { return m_succeeded; }
    const utString& message() const { return m_status_message; }

    /// The kind of failure; of no meaning after a success.
    nmkConfXMLIOStatusFailure failure() const { return m_failure_kind; }

  private:
    bool m_succeeded;
    utString m_status_message;
    nmkConfXMLIOStatusFailure m_failure_kind;
};

#include <nmktoolbox/xml/nmkConfXMLIOStatus.h>

nmkConfXMLIOStatus::nmkConfXMLIOStatus(nmkConfXMLIOStatusSuccess)
    : m_succeeded(true), m_status_message(""), m_failure_kind(nmkConfXMLBadDocument) {}

nmkConfXMLIOStatus::nmkConfXMLIOStatus(nmkConfXMLIOStatusFailure failure_kind,
                                       const utString& message)
    : m_succeeded(false), m_status_message(message), m_failure_kind(failure_kind) {}

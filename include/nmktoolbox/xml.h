// xml.h: configuration documents.
#pragma once

#include <nmktoolbox/xml/nmkConfXMLBase.h>      // names, conversions, the service "xml"
#include <nmktoolbox/xml/nmkConfXMLIOStatus.h>  // how reading or writing ended
#include <nmktoolbox/xml/nmkConfXMLReader.h>    // the newest document of a range of versions
#include <nmktoolbox/xml/nmkConfXMLWriter.h>    // the document of one version

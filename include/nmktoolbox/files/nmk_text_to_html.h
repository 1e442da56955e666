// nmk_text_to_html: text as it is written inside an HTML element or attribute.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// The text with "&", both quote marks, "<" and ">" as entities, and each line feed as "<br/>".
/// The null string and the empty text come back as they are.
NMKTOOLBOX_EXPORT utString nmk_text_to_html(utString text);

// nmk_transcode: between the kernel's narrow text and the application's wide text.
//
// The current encoding is the one that was set, else the one that narrow text is in. It is set at
// start-up, before other threads convert.
#pragma once

#include <nmktoolbox/export.h>

#include <apsl/apIStringEncoding.h>
#include <apsl/apString.h>
#include <utils/utString.h>

/// The encoding that was set; null at start. Borrowed.
extern NMKTOOLBOX_EXPORT const apIStringEncoding* g_transcode_encoding;

/// Wide text by `encoding`; `status` becomes 1 when it is exact, 0 when something had to be
/// substituted. The null string gives the empty text and leaves `status` as it was.
NMKTOOLBOX_EXPORT apString nmk_transcode(const apIStringEncoding& encoding, utString text,
                                         int& status);
/// The same by the current encoding.
NMKTOOLBOX_EXPORT apString nmk_transcode(utString text, int& status);

/// Narrow text by `encoding`; `status` likewise. The invalid string gives the empty text and leaves
/// `status` as it was.
NMKTOOLBOX_EXPORT utString nmk_transcode(const apIStringEncoding& encoding, apString text,
                                         int& status);
/// The same by the current encoding.
NMKTOOLBOX_EXPORT utString nmk_transcode(apString text, int& status);

/// Sets the current encoding, null for none; returns the former one.
NMKTOOLBOX_EXPORT const apIStringEncoding* nmk_set_transcode_encoding(
    const apIStringEncoding* encoding);

/// The current encoding; never null.
NMKTOOLBOX_EXPORT const apIStringEncoding* nmk_transcode_encoding();

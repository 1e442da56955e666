// nmkNLS_message: the host's chance to translate messages.
//
// The callback is set at start-up, before other threads ask.
#pragma once

#include <nmktoolbox/export.h>

/// What the callback returns for `text`, or `text` itself where there is no callback or no data.
NMKTOOLBOX_EXPORT const char* nmkNLS_get_translated_message(const char* text);

/// Sets the callback and the pointer that it is given, both borrowed. A callback without data is
/// never called.
NMKTOOLBOX_EXPORT void nmkNLS_message_set_callback(const char* (*callback)(const char*, void*),
                                                   void* data);

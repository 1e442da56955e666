// utExport.h: the export macro of the platform libraries.
//
// The platform libraries are compiled with default visibility, but their headers are also compiled
// into libraries that hide what they do not export. Functions and classes that those libraries have
// to share (a run-time type, an instantiation that another library offers) are marked.
#pragma once

#if defined(_WIN32)
#define UT_EXPORT
#else
#define UT_EXPORT __attribute__((visibility("default")))
#endif

// utExport.h: marks what must exist once in a process, whatever library it is compiled into.
//
// The stand-ins are compiled with default visibility, but their headers are also compiled into
// libraries that hide what they do not export. Classes with statics (a container's nil element, a
// run-time type) carry this mark so that all libraries still share one object.
#pragma once

#if defined(_WIN32)
#define UT_EXPORT
#else
#define UT_EXPORT __attribute__((visibility("default")))
#endif

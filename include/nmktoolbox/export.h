// export.h: the one macro that marks what the shared library offers to its callers.
#pragma once

#if defined(_WIN32)
#if defined(NMKTOOLBOX_BUILDING)
#define NMKTOOLBOX_EXPORT __declspec(dllexport)
#else
#define NMKTOOLBOX_EXPORT __declspec(dllimport)
#endif
#else
#define NMKTOOLBOX_EXPORT __attribute__((visibility("default")))
#endif

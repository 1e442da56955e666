// serialize.h: proves that an object survives a trip through an archive.
#pragma once

#include <nmktoolbox/export.h>

class CObject;

/// Writes the object to a temporary file, reads it back and deletes the file.
///
///   out  an object of a registered class that can be stored
///   in   receives a new object, which the caller owns; null where nothing could be read
///
/// Reports to the assertion service "NULL object read" for a null object, and "Types Differ" for an
/// object of another class than `out`. Only the class is compared: what the objects hold is for the
/// caller to compare, and a class that reads less than it wrote passes.
///
/// Throws the exceptions of CArchive and CFile: for a class that cannot be stored or is not
/// registered, an object that holds itself more than CArchive::max_nesting deep, a full disk. The
/// file is deleted all the same, and `*in` is null.
NMKTOOLBOX_EXPORT void serialize(CObject& out, CObject** in);

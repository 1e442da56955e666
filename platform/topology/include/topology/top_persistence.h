// top_persistence.h: parts of a boundary in object streams.
//
//     archive << part;  // a topTopologyPtr
//     archive >> part;
//
// A handle is one byte: 0 where it is empty, 1 where something follows. That is the class as the
// archive records classes, by its name ("topFace") and version; the vertices and edges below it,
// each once; and what is made of them by their numbers, so that what was shared is shared again.
// Curves and surfaces are stored as ngk_persistence.h has them.
//
// Failures are exceptions of the archive (CArchiveException). No number in a stream is believed:
// memory is taken for what was read, and a handle that is loaded is empty or has a valid part.
#pragma once

#include <topology/topTopology.h>

#pragma GCC visibility push(default)

class CArchive;

/// Throws badSchema for what cannot be stored, which is an invalid part and a class that this
/// library does not have.
CArchive& operator<<(CArchive& archive, const topTopologyPtr& part);

/// Throws endOfFile for a stream that is cut, badClass and badSchema for another class or version,
/// and badIndex for numbers that make no valid part. The handle keeps what it had then.
CArchive& operator>>(CArchive& archive, topTopologyPtr& part);

#pragma GCC visibility pop

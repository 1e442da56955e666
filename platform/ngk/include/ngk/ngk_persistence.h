// ngk_persistence.h: curves and surfaces in object streams.
//
//     archive << curve;  // a ngkCurvePtr3, ngkCurvePtr2 or ngkSurfPtr
//     archive >> curve;
//
// A handle is one byte: 0 where it is empty, 1 where something follows. That is the class as the
// archive records classes, by its name ("ngkArc3") and version, and then its numbers, so that what
// is loaded evaluates to the same bits. Curves inside others follow as handles of their own. One
// that several handles share is stored with each of them, and loaded as several.
//
// Failures are exceptions of the archive (CArchiveException). No number in a stream is believed:
// memory is taken for what was read, and a handle that is loaded is empty or has a valid curve.
#pragma once

#include <ngk/ngkCurve.h>
#include <ngk/ngkSurf.h>

#pragma GCC visibility push(default)

class CArchive;

/// Curves may be within curves this deep: reversed, transformed, composite ones and those on
/// surfaces count one each, and so does what is innermost.
inline constexpr int ngk_max_nesting = 32;

/// Registers the classes of curves and surfaces by their names. Streaming does that too; call it
/// before a stream is read that may refer to them from elsewhere. Safe from any thread, and any
/// number of times.
void ngk_initialise_persistence();

/// Throws badSchema for what cannot be stored, which is an invalid curve or surface and a class
/// that this library does not have, and generic for curves nested deeper than ngk_max_nesting.
CArchive& operator<<(CArchive& archive, const ngkCurvePtr3& curve);
CArchive& operator<<(CArchive& archive, const ngkCurvePtr2& curve);
CArchive& operator<<(CArchive& archive, const ngkSurfPtr& surface);

/// Throws endOfFile for a stream that is cut, badClass and badSchema for another class or version,
/// and badIndex for numbers that make no valid curve and for curves nested too deep. The handle
/// keeps what it had then.
CArchive& operator>>(CArchive& archive, ngkCurvePtr3& curve);
CArchive& operator>>(CArchive& archive, ngkCurvePtr2& curve);
CArchive& operator>>(CArchive& archive, ngkSurfPtr& surface);

#pragma GCC visibility pop
